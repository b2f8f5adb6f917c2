#include "core/text.h"
#include "navdata/units.h"

#include <cmath>
#include <ctime>

namespace {

constexpr double kSecondsPerMinute = 60.0;
constexpr double kSecondsPerHour = 3600.0;
constexpr double kMinutesPerHour = 60.0;
constexpr double kMinutesPerDay = 1440.0;
/// From here on seconds are not worth showing.
constexpr double kLong = 10 * kSecondsPerHour;

/// What is left of `value` over whole `parts`, and the number of those.
double Split(double value, double part, double& parts)
{
    parts = std::floor(value / part);
    return value - parts * part;
}

/// Days, hours and minutes; the minutes are rounded before they are split, so that they never show as 60.
std::string FormatLongTime(double seconds)
{
    double minutes, days, hours;
    if (Split(seconds, kSecondsPerMinute, minutes) > 30.0) minutes += 1.0;
    minutes = Split(Split(minutes, kMinutesPerDay, days), kMinutesPerHour, hours);
    return days > 0.0 ? stringprintf("%.0fD %.0fh:%02.0f", days, hours, minutes)
                      : stringprintf("%.0fh:%02.0f", hours, minutes);
}

std::string FormatShortTime(double seconds)
{
    if (seconds < kSecondsPerMinute) return stringprintf("%.0fs", seconds);
    double minutes, hours;
    seconds = Split(seconds, kSecondsPerMinute, minutes);
    minutes = Split(minutes, kMinutesPerHour, hours);
    return hours > 0.0 ? stringprintf("%.0f:%02.0f:%02.0f", hours, minutes, seconds)
                       : stringprintf("%.0f:%02.0f", minutes, seconds);
}

/// False for a time that the calendar cannot hold.
bool LocalTime(double time, std::tm& local)
{
    constexpr double kLatest = 1e15;
    if (!(std::fabs(time) < kLatest)) return false;
    const auto whole = static_cast<std::time_t>(std::floor(time));
    return localtime_r(&whole, &local) != nullptr;
}

} // namespace

void CUnits::FormatElapsedTime(double seconds, std::string& text)
{
    text.clear();
    if (!std::isfinite(seconds)) return;
    const double whole = std::round(std::fabs(seconds));
    if (seconds < 0.0) text = "Negative ";
    text += whole < kLong ? FormatShortTime(whole) : FormatLongTime(whole);
}

void CUnits::FormatTimeOfDay(double time, std::string& text)
{
    std::tm local;
    text.clear();
    if (!LocalTime(time, local)) return;
    const int hour = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    text = stringprintf("%d:%02d%s", hour, local.tm_min, local.tm_hour < 12 ? "am" : "pm");
}

void CUnits::Get24hTime(double time, std::string& text)
{
    std::tm local;
    text.clear();
    if (LocalTime(time, local)) text = stringprintf("%02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec);
}

void CUnits::FormatDate(double time, std::string& text)
{
    std::tm local;
    text.clear();
    if (LocalTime(time, local))
        text = stringprintf("%04d-%02d-%02d", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}
