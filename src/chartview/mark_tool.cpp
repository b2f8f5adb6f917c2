#include "chartview/mark_tool.h"

#include "chartview/rastelle_view.h"
#include "core/display_metrics.h"
#include "navdata/units.h"
#include "overlays/gps_position.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <QPainter>

namespace {

constexpr double kRing = 17.0; ///< logical pixels round the mark

} // namespace

CMarkTool::CMarkTool(CRastelleView& with_view, COverlayMark& with_mark)
    : COverlayTool(with_view, with_mark), mark(with_mark)
{
    FindOrigin();
    if (mark.route == nullptr) Listener<CDataGPSPosition>::Connect();
}

void CMarkTool::FindOrigin()
{
    grid = CSimpleGrid();
    if (mark.route == nullptr) {
        const COverlayGPSPosition& boat = COverlayGPSPosition::theLatestPosition;
        if (boat.status != CDataGPSPosition::kNoFix) grid.SetOrigin(boat.latitude, boat.longitude);
        return;
    }
    const COverlayMark* other = mark.route->getWaypointBefore(mark);
    is_first = other == nullptr;
    if (is_first) other = mark.route->getWaypointAfter(mark);
    if (other != nullptr) grid.SetOrigin(other->lat, other->lon);
}

void CMarkTool::OnUpdate(CDataGPSPosition&)
{
    FindOrigin();
    SetLabel();
}

void CMarkTool::OnUpdate(COverlayObject& changed)
{
    // The route may have been reversed, or may have another waypoint before this one.
    if (&changed == object && changed.action == COverlayObject::kChanged) FindOrigin();
    COverlayTool::OnUpdate(changed);
}

std::string CMarkTool::MakeLabel() const
{
    if (!grid.ready() || !mark.HasPosition()) return mark.name;
    double metres = 0.0;
    float bearing = 0.0F;
    // The way to the mark; for the first waypoint the way on from it.
    if (is_first) {
        grid.distance_and_bearing(mark.lat, mark.lon, grid.origin_lat, grid.origin_lon, metres, bearing);
    } else {
        grid.distance_and_bearing(grid.origin_lat, grid.origin_lon, mark.lat, mark.lon, metres, bearing);
    }
    std::string direction;
    CUnits::Default->FormatBearing(static_cast<double>(bearing), direction);
    return mark.name + "\n" + CUnits::Default->FormatDistance(metres) + "  " + direction;
}

void CMarkTool::Position(double& lat, double& lon) const
{
    lat = mark.lat;
    lon = mark.lon;
}

bool CMarkTool::IsLocked() const
{
    return mark.isLocked();
}

void CMarkTool::Move(CRastelleView& in, double dx, double dy)
{
    if (IsLocked()) return;
    double lat = 0.0;
    double lon = 0.0;
    if (!in.ScreenTolatlong(x + dx, y + dy, lat, lon)) return;
    const double wanted_x = x + dx;
    const double wanted_y = y + dy;
    mark.lat = lat;
    mark.lon = lon;
    if (mark.route != nullptr) {
        mark.route->SetModifiedNow();
        mark.route->Dispatch(COverlayObject::kChanged);
    } else {
        mark.SetModifiedNow();
        mark.Dispatch(COverlayObject::kChanged);
    }
    // What the way back from degrees rounds off must not add up under the finger.
    x = wanted_x;
    y = wanted_y;
}

void CMarkTool::DeleteObject(ZT_HWND parent)
{
    mark.onDelete(parent);
}

void CMarkTool::DrawMarker(QPainter* painter, double at_x, double at_y) const
{
    const double r = kRing * graphicsResolution;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(QColor(255, 255, 255, 200), 4.0 * graphicsResolution));
    painter->drawEllipse(QPointF(at_x, at_y), r, r);
    // A locked one has a broken ring: it cannot be dragged.
    painter->setPen(QPen(QColor(38, 50, 56), 2.0 * graphicsResolution, IsLocked() ? Qt::DotLine : Qt::SolidLine));
    painter->drawEllipse(QPointF(at_x, at_y), r, r);
    painter->restore();
}
