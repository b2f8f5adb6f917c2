#include "tools/voyage/weather.h"

namespace {

constexpr double kHour = 3600.0;
constexpr double kTidePeriod = 12.42 * kHour;
/// The stream stands strongest this long after the start.
constexpr double kStrongestAt = 1.6 * kHour;

double Wave(double seconds, double period, double phase = 0.0)
{
    return std::sin(2.0 * std::numbers::pi * (seconds / period + phase));
}

} // namespace

double CWeather::WindFrom(double seconds) const
{
    return FoldCourse(wind_from + 6.0 * Wave(seconds, 1900.0) + 3.0 * Wave(seconds, 430.0, 0.3) +
                      1.5 * Wave(seconds, 71.0, 0.6));
}

double CWeather::WindSpeed(double seconds) const
{
    return wind_speed + 1.8 * Wave(seconds, 2600.0, 0.1) + 1.1 * Wave(seconds, 310.0, 0.45) + 0.7 * Wave(seconds, 47.0);
}

CVelocity CWeather::Stream(double axis, double strength, double seconds)
{
    const double phase = 2.0 * std::numbers::pi * (seconds - kStrongestAt) / kTidePeriod;
    return CVelocity::Polar(axis, strength * std::cos(phase));
}
