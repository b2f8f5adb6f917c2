#include "navdata/fast_trigonometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kTurn = 360.0F;
constexpr float kHalfTurn = 180.0F;

/// The sine of 0 to 90 degrees by its power series.
constexpr double SineOfDegrees(int degrees)
{
    constexpr int kTerms = 12; // the next one is below 1e-20
    const double angle = degrees * 3.14159265358979323846 / 180.0;
    double term = angle;
    double sum = 0.0;
    for (int i = 1; i <= kTerms; ++i) {
        sum += term;
        term *= -angle * angle / ((2 * i) * (2 * i + 1));
    }
    return sum;
}

constexpr std::array<float, 91> MakeSines()
{
    std::array<float, 91> sines{};
    for (int degrees = 0; degrees <= 90; ++degrees) {
        sines[static_cast<std::size_t>(degrees)] = static_cast<float>(SineOfDegrees(degrees));
    }
    return sines;
}

} // namespace

constinit const std::array<float, 91> lookup_sin = MakeSines();

float fold_degrees(float degrees)
{
    if (degrees >= 0.0F && degrees < kTurn) return degrees;
    const double wide = degrees;
    const auto folded = static_cast<float>(wide - std::floor(wide / kTurn) * kTurn);
    // Rounding may have reached the full turn, and beyond 2^53 the steps between numbers exceed a turn.
    return folded >= 0.0F && folded < kTurn ? folded : 0.0F;
}

float fold_difference(float degrees)
{
    if (std::fabs(degrees) <= kHalfTurn) return degrees;
    const float folded = fold_degrees(degrees);
    return folded > kHalfTurn ? folded - kTurn : folded;
}

namespace {

/// The circle, mirrored from the quadrant of the table. Rounding is that of the mirrored angle: half degrees go towards
/// east and west.
constexpr std::array<CDegree, 361> MakeCircle()
{
    constexpr float kHalf = 0.5F, kAboveHalf = 0.50000006F;
    const auto sines = MakeSines();
    std::array<CDegree, 361> circle{};
    for (std::size_t d = 0; d < circle.size(); ++d) {
        const std::size_t to_south = d > 180 ? 360 - d : d;
        const std::size_t to_axis = to_south > 90 ? 180 - to_south : to_south;
        circle[d].sine = d > 180 ? -sines[to_axis] : sines[to_axis];
        circle[d].cosine = to_south > 90 ? -sines[90 - to_axis] : sines[90 - to_axis];
        circle[d].up_from = (d / 90) % 2 == 0 ? kHalf : kAboveHalf;
    }
    return circle;
}

} // namespace

constinit const std::array<CDegree, 361> degree_circle = MakeCircle();

float fast_atan2(float cosine, float sine)
{
    const float abs_cosine = std::fabs(cosine);
    const float abs_sine = std::fabs(sine);
    const float larger = std::max(abs_cosine, abs_sine);
    std::size_t a = 90;
    for (std::size_t step = 32; step > 0; step /= 2) {
        if (lookup_sin[a - step] >= larger) a -= step;
    }
    auto angle = static_cast<int>(abs_cosine > abs_sine ? 90 - a : a);
    if (cosine < 0.0F) angle = 180 - angle;
    if (sine < 0.0F) angle = 360 - angle;
    return static_cast<float>(angle);
}
