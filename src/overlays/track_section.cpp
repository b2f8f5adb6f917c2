#include "overlays/track_section.h"

#include "chart/polynomial_projection.h"
#include "core/display_metrics.h"
#include "overlays/overlay_track.h"
#include "overlays/overlay_views.h"
#include "ui/action_sheet.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <QPainter>
#include <QPen>

static_assert(sizeof(DblPoint) == sizeof(QPointF) && alignof(DblPoint) == alignof(QPointF));

bool CTrackSection::addPoint(const CTrackPoint& point, bool dispatch)
{
    if (count >= kMostPoints) return false;
    points[count++] = point;
    length = -1.0;
    if (dispatch) Dispatch(kChanged);
    return true;
}

void CTrackSection::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    FPoint on_chart;
    if (count < 2 || !projection.latlong_to_xy(points[0].lat, points[0].lon, on_chart)) return;
    mapping.image_points.reserve(static_cast<std::size_t>(kMostPoints));
    for (const CTrackPoint& point : Points()) mapping.AddPosition(projection, point.lat, point.lon);
    mapping.kind = CMapping::kPolyline;
    mapping.count = count;
    mapping.set_bounds();
    // More than half of the under-stroke's width.
    if (track != nullptr)
        mapping.drawn_around = (static_cast<double>(track->line_width) + 1.0) * graphicsResolution + 1.0;
}

void CTrackSection::Draw(QPainter* painter, const CViewParams&, CMapping& mapping) const
{
    if (track == nullptr || mapping.screen_points.size() < 2) return;
    const auto* const line = reinterpret_cast<const QPointF*>(mapping.screen_points.data());
    const auto vertices = static_cast<int>(mapping.screen_points.size());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (TheOverlayViews().IsSelected(*track)) {
        painter->setPen(track->UnderPen());
        painter->drawPolyline(line, vertices);
    }
    painter->setPen(track->Pen());
    painter->drawPolyline(line, vertices);
    painter->restore();
}

bool CTrackSection::isVisible()
{
    return track != nullptr && track->visible;
}

int CTrackSection::onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (view == nullptr) return 0;
    TheOverlayViews().Select(*view, *this, screen, place);
    return 1;
}

int CTrackSection::onMouseDown(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (track == nullptr || !TheOverlayViews().IsSelected(*track)) return 0;
    return onTap(view, screen, place);
}

int CTrackSection::onRightClick(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (onTap(view, screen, place) == 0) return 0;
    onMenuDown(TheOverlayViews().HandleAt(*view, screen));
    return 1;
}

void CTrackSection::onMenuDown(ZT_HWND parent)
{
    if (track == nullptr) return;
    CMenuTree menu(track->name);
    track->addMenus(menu, parent, this);
    menu.ShowMenuTree(parent);
}

bool CTrackSection::Serialize(IOStream& stream)
{
    Section section(stream);
    int filed = count;
    if (!section.declare(filed) || filed < 0 || filed > kMostPoints) return false;
    count = filed;
    if (!section.declare_array(points, static_cast<int>(sizeof(CTrackPoint)), count)) return false;
    if (section.reading()) {
        length = -1.0;
        DropBadPoints();
    }
    return true;
}

void CTrackSection::DropBadPoints()
{
    auto* const end = std::remove_if(points, points + count,
                                     [](const CTrackPoint& point) { return !ValidLatLon(point.lat, point.lon); });
    count = static_cast<int>(end - points);
    for (CTrackPoint& point : std::span(points, end)) {
        if (!std::isfinite(point.time)) point.time = 0.0;
        if (!std::isfinite(point.altitude)) point.altitude = 0.0F;
    }
}
