#pragma once

#include "core/geometry.h"

#include <array>

/// The ten coefficients of a full cubic in (a, b), in the order of Geo_ref_coeff_t.
using CCubic = std::array<double, 10>;

/// Moves and scales one coordinate into -1 to 1, where cubics are well conditioned.
struct CAxisScale {
    double middle = 0.0;
    double half = 1.0;

    double To(double value) const { return (value - middle) / half; }
    double From(double value) const { return middle + half * value; }
    /// The axis over `low` to `high`.
    static CAxisScale Over(double low, double high) { return {(low + high) / 2, high > low ? (high - low) / 2 : 1.0}; }
};

/// The ten products 1, a, b, aa, ab, bb, aaa, aab, abb, bbb.
CCubic CubicTerms(double a, double b);
double EvaluateCubic(const CCubic& cubic, double a, double b);
/// Partial derivatives by a (x) and by b (y).
DblPoint SlopesOfCubic(const CCubic& cubic, double a, double b);
/// The cubic of raw coordinates and a raw value that agrees with `scaled`, which takes and gives scaled ones.
CCubic UnscaleCubic(const CCubic& scaled, const CAxisScale& a, const CAxisScale& b, const CAxisScale& value);
