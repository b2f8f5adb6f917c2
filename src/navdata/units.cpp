#include "navdata/units.h"

#include "core/text.h"

#include <algorithm>
#include <cmath>

namespace {

struct DistanceUnit {
    const char* name;
    double per_metre;
};

constexpr DistanceUnit kDistanceUnits[] = {
    {"Mi", 0.000621371204033494}, {"NM", 0.0005399567889980972}, {"km", 0.0010000000474974513}, {"m", 1.0},
    {"ft", 3.2809998989105225},   {"yds", 1.0936000347137451},
};
constexpr double kMetresPerNauticalMile = 1852.0;
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

CUnits default_units;

} // namespace

CUnits* CUnits::Default = &default_units;

void CUnits::set_unit_family(e_dist_units family)
{
    constexpr int kSmallUnits[] = {4, 5, 3};
    dist = family;
    small_dist = kSmallUnits[family];
}

double CUnits::format_scale(double nautical_miles_per_pixel, std::string& text, double longest) const
{
    text.clear();
    if (!(nautical_miles_per_pixel >= 1e-20 && nautical_miles_per_pixel <= 1e20) || !(longest > 0.0)) return 0.0;

    const double metres = nautical_miles_per_pixel * kMetresPerNauticalMile * longest;
    const DistanceUnit* unit = &kDistanceUnits[dist];
    double distance = RoundDown125(metres * unit->per_metre);
    if (distance < kSmallestOfMainUnit / kRoundingSlack) {
        unit = &kDistanceUnits[small_dist];
        distance = RoundDown125(metres * unit->per_metre);
    }
    text = FormatRoundDistance(distance, unit->name);
    return std::min(longest, distance / unit->per_metre / metres * longest);
}
