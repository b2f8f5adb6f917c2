#pragma once

#include <array>

/// Table-driven trigonometry to a whole degree, for what runs with every sentence and every drawn vector.

/// The sine of each whole degree from 0 to 90.
extern const std::array<float, 91> lookup_sin;

/// Sine and cosine of an angle of any size, degrees, rounded to a whole degree. An angle that is not finite counts
/// as 0.
void fast_sin_cos(float degrees, float& sine, float& cosine);
/// Whole degrees, 0 to 360, of a unit vector.
float fast_atan2(float cosine, float sine);
/// The angle folded to 0 .. below 360, in constant time; what is not finite gives 0.
float fold_degrees(float degrees);
/// The angle folded to -180 .. 180.
float fold_difference(float degrees);
