#include "chartview/track_tool.h"

#include "chartview/rastelle_view.h"
#include "core/display_metrics.h"
#include "core/nautical_mile.h"
#include "navdata/units.h"
#include "overlays/overlay_track.h"

#include <algorithm>

#include <QPainter>

namespace {

constexpr double kMetresPerSecond = 3600.0 / kMetresPerNauticalMile; ///< knots
constexpr double kMarker = 7.0;                                      ///< logical pixels
constexpr double kFar = 1e100;                                       ///< squared metres

} // namespace

CTrackTool::CTrackTool(CRastelleView& with_view, CTrackSection& with_section, const DblPoint& place)
    : COverlayTool(with_view, with_section), track(*with_section.track)
{
    double lat = with_section.points[0].lat;
    double lon = with_section.points[0].lon;
    with_view.PositionOf(place, lat, lon);
    grid.SetOrigin(lat, lon);
    double nearest = kFar;
    index = std::max(0, with_section.FindClosestPoint(grid, lat, lon, nearest));
    double at_lat = 0.0;
    double at_lon = 0.0;
    Position(at_lat, at_lon);
    with_view.LatLongToScreen(at_lat, at_lon, finger_x, finger_y);
}

CTrackSection& CTrackTool::Section() const
{
    return *static_cast<CTrackSection*>(object);
}

CTrackSection* CTrackTool::GetSelectedTrackSection() const
{
    return object != nullptr ? &Section() : nullptr;
}

void CTrackTool::Position(double& lat, double& lon) const
{
    const CTrackSection& section = Section();
    const CTrackPoint& point = section.points[std::clamp(index, 0, std::max(0, section.count - 1))];
    lat = point.lat;
    lon = point.lon;
}

std::string CTrackTool::MakeLabel() const
{
    const CTrackSection& section = Section();
    const int at = std::clamp(index, 0, std::max(0, section.count - 1));
    double metres = 0.0;
    for (CTrackSection* before : track.sections) {
        if (before == &section) break;
        metres += before->getDistance(grid);
    }
    metres += section.getDistanceToPoint(grid, at);
    std::string label = track.name;
    if (section.points[at].time > 0.0) {
        std::string text;
        CUnits::FormatDate(section.points[at].time, text);
        label += "\n" + text;
        CUnits::Get24hTime(section.points[at].time, text);
        label += " " + text;
    }
    label += "\n" + CUnits::Default->FormatDistance(metres);
    const double speed = section.SpeedAtPoint(grid, at);
    if (speed > 0.0) {
        std::string text;
        CUnits::Default->FormatSpeed(speed * kMetresPerSecond, text);
        label += "  " + text;
    }
    return label;
}

bool CTrackTool::IsLocked() const
{
    return track.locked;
}

void CTrackTool::DeleteObject(ZT_HWND parent)
{
    track.onDelete(parent);
}

void CTrackTool::Move(CRastelleView& in, double dx, double dy)
{
    finger_x += dx;
    finger_y += dy;
    double lat = 0.0;
    double lon = 0.0;
    if (in.ScreenTolatlong(finger_x, finger_y, lat, lon)) SlideTo(lat, lon);
}

void CTrackTool::SlideTo(double lat, double lon)
{
    double nearest = kFar;
    CTrackSection* found = nullptr;
    int found_index = index;
    grid.SetOrigin(lat, lon);
    for (CTrackSection* section : track.sections) {
        const int closest = section->FindClosestPoint(grid, lat, lon, nearest);
        if (closest < 0) continue;
        found = section;
        found_index = closest;
    }
    if (found == nullptr || (found == object && found_index == index)) return;
    COverlayObject* const before = object;
    object = found;
    index = found_index;
    Place();
    SetLabel();
    if (before != found) before->Dispatch(COverlayObject::kLookChanged);
    found->Dispatch(COverlayObject::kLookChanged);
}

void CTrackTool::DrawMarker(QPainter* painter, double at_x, double at_y) const
{
    const double r = kMarker * graphicsResolution;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(Qt::white, 3.0 * graphicsResolution));
    painter->setBrush(QColor::fromRgba(track.colour.argb()));
    painter->drawEllipse(QPointF(at_x, at_y), r, r);
    painter->setPen(QPen(QColor(38, 50, 56), 1.2 * graphicsResolution));
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(QPointF(at_x, at_y), r + 1.5 * graphicsResolution, r + 1.5 * graphicsResolution);
    painter->restore();
}
