#pragma once

#include <algorithm>
#include <chrono>

/// The days from 1970-01-01 to that day of the Gregorian calendar. Months below 1 and above 12 count on into the
/// neighbouring years, days beyond the month's into the neighbouring months; years are limited to -32767..32767.
inline long getDaysSince1970(int year, int month, int day)
{
    using namespace std::chrono;
    constexpr int kLastYear = 32767;
    const auto months_on = static_cast<long long>(month) - 1;
    const auto years_on = months_on >= 0 ? months_on / 12 : (months_on - 11) / 12;
    const auto in_year = static_cast<unsigned>(months_on - 12 * years_on);
    const auto whole_year = std::clamp<long long>(year + years_on, -kLastYear, kLastYear);
    const sys_days first{std::chrono::year{static_cast<int>(whole_year)} / std::chrono::month{in_year + 1} / 1};
    return first.time_since_epoch().count() + static_cast<long>(day) - 1;
}

/// The start of that UTC day: seconds since 1970, leap seconds not counted. Arguments as for getDaysSince1970.
inline double getStartOfDayUTC(int year, int month, int day)
{
    constexpr double kSecondsPerDay = 86400.0;
    return kSecondsPerDay * static_cast<double>(getDaysSince1970(year, month, day));
}
