#include "chart/polynomial_projection.h"
#include "core/display_metrics.h"
#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <algorithm>

#include <QPainter>

void COverlayMark::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    FPoint on_chart;
    if (!HasPosition() || !projection.latlong_to_xy(lat, lon, on_chart)) return;
    mapping.AddPosition(projection, lat, lon);
    mapping.kind = CMapping::kPoints;
    mapping.count = 1;
    mapping.set_bounds();
    LoadIcon();
    mapping.drawn_around = icon != nullptr ? std::max(icon->image.width(), icon->image.height()) : 0.0;
}

void COverlayMark::Draw(QPainter* painter, const CViewParams&, CMapping& mapping) const
{
    LoadIcon();
    if (mapping.screen_points.empty() || icon == nullptr) return;
    const DblPoint& at = mapping.screen_points.front();
    painter->drawImage(QPointF(at.x - icon->hot_x, at.y - icon->hot_y), icon->image);
}

void COverlayMark::LoadIcon() const
{
    if (icon != nullptr && icon->resolution == graphicsResolution) return;
    icon = TheIcons().GetIcon(icon_name, colour);
    if (icon != nullptr) return;
    const COverlayMark& stand_in =
        route != nullptr && !route->waypoints.empty() ? *route->waypoints.front() : g_mark_manager.DefaultMark();
    icon = TheIcons().GetIcon(stand_in.icon_name, colour);
}
