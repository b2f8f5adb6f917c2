#pragma once

#include "core/geometry.h"
#include "overlays/view_params.h"

#include <algorithm>
#include <vector>

class CPolynomialProjection;

/// A view's cache for one overlay object: where the object lies on the open chart, and where on the screen. The object
/// fills it in Map; the vectors keep their capacity from one filling to the next.
class CMapping {
public:
    enum Kind {
        kNone = 0,
        kPoints = 1,   ///< separate points, of which the first `count` can be hit
        kPolyline = 2, ///< one open line through all points
        kAlways = 4    ///< always hit and always drawn: a route being edited takes taps anywhere
    };

    FRect bounds;                        ///< chart pixels
    std::vector<DblPoint> image_points;  ///< chart pixels
    std::vector<DblPoint> screen_points; ///< device pixels; of use behind a map_to_screen that met the view
    int kind = kNone;
    int count = 0;
    /// Chart pixels for 360 degrees on a chart of the whole world, which repeats sideways; 0 on any other. Set by the
    /// view before Map.
    double wrap_width = 0.0;
    /// Device pixels around the bounds within which the object draws; below 0 it may draw anywhere. Set by Map.
    double drawn_around = -1.0;

    CMapping() { clear(); }
    /// No mapping; the bounds become the inverted extremes. Keeps wrap_width.
    void clear();
    /// The rectangle of the image points; without points a zero rectangle.
    void set_bounds();
    /// The screen points are out of date: all that a pan or zoom has to do.
    void move_screen() { on_screen = false; }
    /// Makes the screen points if they are out of date and the bounds overlap the view; otherwise there are none.
    /// Returns whether to draw.
    bool map_to_screen(const CViewParams& params);
    /// Whether the screen point (x, y) hits, at a squared distance below `radius_squared`. False while the screen
    /// points are out of date.
    bool HitTest_mapped(float x, float y, double radius_squared) const;
    /// Whether such a hit is possible at all in that view: false when the bounds lie farther away. Needs no screen
    /// points.
    bool MayBeHit(const CViewParams& params, float x, float y, double radius_squared) const
    {
        constexpr double kRounding = 1.0 + 1e-9; // of the distances to the points themselves
        const FRect box = params.ImageToScreen(bounds);
        const double dx = std::max(std::max(box.left - x, x - box.right), 0.0);
        const double dy = std::max(std::max(box.top - y, y - box.bottom), 0.0);
        return kind == kAlways || dx * dx + dy * dy <= radius_squared * kRounding;
    }

    /// Appends a position (degrees). On a chart of the world the point is placed on that repetition of the chart that
    /// is nearest to the point before it, so that a line across the chart's edge stays one short line.
    void AddPosition(const CPolynomialProjection& projection, double lat, double lon);

private:
    bool on_screen = false; ///< the screen points belong to the image points and to the view as it is
};
