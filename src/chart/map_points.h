#pragma once

#include "chart/polynomial_projection.h"

#include <span>

/// Maps positions to pixels of the projection, as CPolynomialProjection::latlong_to_xy does one by one and to the same
/// bits, several at a time where the processor can. `out` holds as many points.
void MapPoints(const CPolynomialProjection& projection, std::span<const GeoPoint> positions, DblPoint* out);
