#pragma once

#include <array>
#include <bit>
#include <cstdint>

/// Table-driven trigonometry to a whole degree, for what runs with every sentence and every drawn vector.

/// The sine of each whole degree from 0 to 90.
extern const std::array<float, 91> lookup_sin;

/// A whole degree of the full circle.
struct CDegree {
    float sine;
    float cosine;
    float up_from; ///< from this fraction of a degree on the next one is nearer
};
extern const std::array<CDegree, 361> degree_circle;

/// Sine and cosine of an angle of any size, degrees, rounded to a whole degree. An angle that is not finite counts
/// as 0.
inline void fast_sin_cos(float degrees, float& sine, float& cosine);
/// Whole degrees, 0 to 360, of a unit vector.
float fast_atan2(float cosine, float sine);
/// The angle folded to 0 .. below 360, in constant time; what is not finite gives 0.
float fold_degrees(float degrees);
/// The angle folded to -180 .. 180.
float fold_difference(float degrees);

inline void fast_sin_cos(float degrees, float& sine, float& cosine)
{
    constexpr float kTurn = 360.0F;
    // Below 0, above a turn and no number at all, in one comparison: the bits of positive numbers sort as they do.
    if (std::bit_cast<std::uint32_t>(degrees) > std::bit_cast<std::uint32_t>(kTurn)) degrees = fold_degrees(degrees);
    auto nearest = static_cast<unsigned>(static_cast<int>(degrees));
    const float fraction = degrees - static_cast<float>(static_cast<int>(nearest));
    nearest += fraction >= degree_circle[nearest].up_from ? 1 : 0;
    sine = degree_circle[nearest].sine;
    cosine = degree_circle[nearest].cosine;
}
