#include "overlays/mapping.h"

#include "chart/polynomial_projection.h"
#include "core/polygon.h"

#include <algorithm>
#include <cmath>

void CMapping::clear()
{
    image_points.clear();
    screen_points.clear();
    on_screen = false;
    kind = kNone;
    count = 0;
    drawn_around = -1.0;
    bounds = {2147483647.0, 2147483647.0, -2147483648.0, -2147483648.0};
}

void CMapping::set_bounds()
{
    if (image_points.empty()) {
        bounds = {};
        return;
    }
    bounds = {image_points[0].x, image_points[0].y, image_points[0].x, image_points[0].y};
    for (const DblPoint& point : image_points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
}

bool CMapping::map_to_screen(const CViewParams& params)
{
    const bool overlaps = bounds.overlaps(params.view_rect);
    if (!on_screen) {
        // The points of the frame before are written over where they stand.
        screen_points.resize(overlaps ? image_points.size() : 0);
        params.ImageToScreen(image_points, screen_points);
        on_screen = overlaps;
    }
    return overlaps || kind == kAlways;
}

bool CMapping::HitTest_mapped(float x, float y, double radius_squared) const
{
    if (kind == kAlways) return true;
    if (!on_screen) return false;
    if (kind == kPolyline) return pointIsNearerThan(screen_points, x, y, radius_squared);
    if (kind != kPoints || count <= 0) return false;
    const auto hittable = std::min(screen_points.size(), static_cast<std::size_t>(count));
    return std::any_of(screen_points.begin(), screen_points.begin() + static_cast<std::ptrdiff_t>(hittable),
                       [=](const DblPoint& point) {
                           const double dx = point.x - x;
                           const double dy = point.y - y;
                           return dx * dx + dy * dy < radius_squared;
                       });
}

void CMapping::AddPosition(const CPolynomialProjection& projection, double lat, double lon)
{
    DblPoint point;
    projection.latlong_to_xy(lat, lon, point.x, point.y);
    if (wrap_width > 0.0 && !image_points.empty()) {
        point.x += std::round((image_points.back().x - point.x) / wrap_width) * wrap_width;
    }
    image_points.push_back(point);
}
