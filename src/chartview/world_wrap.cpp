#include "chartview/world_wrap.h"

#include "chart/polynomial_projection.h"

#include <algorithm>
#include <cmath>

namespace {

/// The width is a multiple of this: of the image pixels under one screen pixel at the coarsest level of a view.
constexpr double kWidthUnit = 8.0;
/// A chart that lacks no more than this of 360 degrees repeats at its own width: the fit of a georeferencing is good
/// to about a pixel at each edge.
constexpr double kEdgeTolerance = 2.0;

} // namespace

void CWorldWrap::Init(const CPolynomialProjection& projection)
{
    Clear();
    if (!projection.valid || projection.width < kWidthUnit) return;

    const double middle = projection.height / 2.0;
    double lat = 0.0;
    double left = 0.0;
    double right = 0.0;
    projection.xy_to_latlong(0.0, middle, lat, left);
    projection.xy_to_latlong(projection.width, middle, lat, right);
    const double around = projection.width * 360.0 / (right - left);
    if (!(around > 0.0) || around > projection.width + kEdgeTolerance) return;

    width = std::round(around / kWidthUnit) * kWidthUnit;
    if (width > projection.width) width -= kWidthUnit; // no strip that the chart does not cover
}

double CWorldWrap::Normalise(double x) const
{
    return active() ? x - CopyOf(x) * width : x;
}

int CWorldWrap::CopyOf(double x) const
{
    return active() ? static_cast<int>(std::floor(x / width)) : 0;
}

void CWorldWrap::NormaliseOffset(CViewParams& params, double middle, bool same_squares)
{
    const int copies = CopyOf(middle);
    params.offset_x -= copies * width;
    if (!same_squares) copies_passed += copies;
}

CWorldWrap::Copies CWorldWrap::CopiesInView(const FRect& bounds, const FRect& view) const
{
    if (!active()) return {0, bounds.overlaps(view) ? 0 : -1};
    // Lines that cross the chart's edge reach a little beyond it: two repetitions more than those in view are enough.
    const double first = std::max(std::ceil((view.left - bounds.right) / width), CopyOf(view.left) - 2.0);
    const double last = std::min(std::floor((view.right - bounds.left) / width), CopyOf(view.right) + 2.0);
    const bool rows_meet = bounds.top <= view.bottom && view.top <= bounds.bottom;
    if (!rows_meet || !(first <= last)) return {0, -1};
    return {static_cast<int>(first), static_cast<int>(last)};
}

CViewParams CWorldWrap::ParamsOf(const CViewParams& params, int copy) const
{
    CViewParams shifted = params;
    const double shift = copy * width;
    shifted.offset_x -= shift;
    shifted.view_rect.left -= shift;
    shifted.view_rect.right -= shift;
    return shifted;
}
