#include "core/nautical_mile.h"
#include "core/text.h"
#include "navdata/unit_tables.h"
#include "navdata/units.h"

#include <algorithm>
#include <cmath>

namespace {

/// Below this many of the main unit the small one is used.
constexpr double kSmallestOfMainUnit = 0.1;
/// Below this "%.3g" would turn to exponents.
constexpr double kSmallestWritten = 0.0001;
/// What fits is judged with this much slack: the factors of the table are not exact.
constexpr double kRoundingSlack = 1.0 + 1e-6;

/// The largest of 1, 2 or 5 times a power of ten that is not above `limit` (positive).
double RoundDown125(double limit)
{
    const double power = std::pow(10.0, std::floor(std::log10(limit)));
    for (const double factor : {10.0, 5.0, 2.0, 1.0}) {
        if (factor * power <= limit * kRoundingSlack) return factor * power;
    }
    return power * 0.5; // log10 was rounded up over a power of ten
}

std::string FormatRoundDistance(double value, const char* unit)
{
    if (value < kSmallestWritten) return "0";
    return stringprintf(value >= 1.0 ? "%.0f %s" : "%.3g %s", value, unit);
}

} // namespace

double CUnits::format_scale(double nautical_miles_per_pixel, std::string& text, double longest) const
{
    text.clear();
    if (!(nautical_miles_per_pixel >= 1e-20 && nautical_miles_per_pixel <= 1e20) || !(longest > 0.0)) return 0.0;

    const double metres = nautical_miles_per_pixel * kMetresPerNauticalMile * longest;
    std::int32_t row = dist;
    double distance = RoundDown125(metres * tab_dist_factors[row]);
    if (distance < kSmallestOfMainUnit / kRoundingSlack) {
        row = small_dist;
        distance = RoundDown125(metres * tab_dist_factors[row]);
    }
    text = FormatRoundDistance(distance, tab_dist_units[row]);
    return std::min(longest, distance / tab_dist_factors[row] / metres * longest);
}
