#pragma once

#include "chart/geo_ref_coeff.h"

#include <functional>
#include <optional>
#include <vector>

/// A pixel of a chart image (x to the right, y downwards) and the position that it shows, degrees.
struct CControlPoint {
    double x = 0.0;
    double y = 0.0;
    double lat = 0.0;
    double lon = 0.0;
};

/// A chart's georeferencing and how well it tells the control points, in pixels.
struct CGeoFit {
    Geo_ref_coeff_t coefficients{};
    double forward_px = 0.0; ///< greatest distance from a control point's pixel to the pixel of its position
    double inverse_px = 0.0; ///< the same from pixel to position, with the reader's one correction step
};

/// The position of a pixel; nothing where the picture has none.
using pixel_to_position = std::function<std::optional<CControlPoint>(double x, double y)>;

/// Control points over a chart of `width` x `height` pixels, edges included and denser towards them (extrema of the
/// Chebyshev polynomial of degree `steps`), which brings a least-squares fit close to the one of smallest maximum.
std::vector<CControlPoint> ControlGrid(double width, double height, const pixel_to_position& position, int steps = 24);

/// Fits both pairs of cubics: least squares, then the inverse pair once more (Gauss-Newton, points weighted by their
/// error) so that the reader's correction step lands closest. Longitudes must be continuous over the chart.
/// Nothing when the points are fewer than ten, not finite, or lie so that they do not settle the cubics.
std::optional<CGeoFit> FitGeoReference(const std::vector<CControlPoint>& points);
