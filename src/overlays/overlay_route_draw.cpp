#include "chart/polynomial_projection.h"
#include "core/display_metrics.h"
#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <QPainter>
#include <QPolygonF>

void COverlayRoute::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    for (const COverlayMark* waypoint : waypoints) {
        FPoint on_chart;
        if (waypoint->HasPosition() && projection.latlong_to_xy(waypoint->lat, waypoint->lon, on_chart)) {
            mapping.AddPosition(projection, waypoint->lat, waypoint->lon);
        }
    }
    // The waypoints are hit as marks of their own; the line is not.
    mapping.kind = g_mark_manager.route_being_edited == this ? CMapping::kAlways : CMapping::kNone;
    mapping.set_bounds();
    mapping.drawn_around = static_cast<double>(line_width) * graphicsResolution + 1.0;
}

void COverlayRoute::Draw(QPainter* painter, const CViewParams&, CMapping& mapping) const
{
    if (mapping.screen_points.size() < 2) return;
    QPolygonF line;
    line.reserve(static_cast<int>(mapping.screen_points.size()));
    for (const DblPoint& point : mapping.screen_points) line.append(QPointF(point.x, point.y));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Pen());
    painter->drawPolyline(line);
    painter->restore();
}
