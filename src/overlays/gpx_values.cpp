#include "core/calendar.h"
#include "core/numbers.h"
#include "core/text.h"
#include "overlays/gpx_output.h"

#include <array>
#include <cmath>

#include <cstdint>

namespace {

constexpr std::array<const char*, 5> kLineStyles = {"Solid", "Dash", "Dot", "Dash Dot", "Dash Dot Dot"};
constexpr long kSecondsPerDay = 86400;

/// Reads up to `most` digits off the front; -1 when there is none.
int TakeDigits(std::string_view& text, std::size_t most)
{
    int value = -1;
    for (std::size_t i = 0; i < most && !text.empty() && text.front() >= '0' && text.front() <= '9'; ++i) {
        value = (value < 0 ? 0 : value) * 10 + (text.front() - '0');
        text.remove_prefix(1);
    }
    return value;
}

bool Take(std::string_view& text, char expected)
{
    if (text.empty() || text.front() != expected) return false;
    text.remove_prefix(1);
    return true;
}

/// Seconds east of UTC that stand at the front: "Z", "+02:00", "-0530"; 0 for anything else.
int Offset(std::string_view text)
{
    if (text.empty() || (text.front() != '+' && text.front() != '-')) return 0;
    const int sign = text.front() == '-' ? -1 : 1;
    text.remove_prefix(1);
    const int hours = TakeDigits(text, 2);
    Take(text, ':');
    const int minutes = TakeDigits(text, 2);
    return sign * (std::max(hours, 0) * 3600 + std::max(minutes, 0) * 60);
}

void AppendDigits(std::string& out, std::uint64_t value, int digits)
{
    char buffer[20];
    for (int i = digits - 1; i >= 0; --i) {
        buffer[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    out.append(buffer, static_cast<std::size_t>(digits));
}

} // namespace

double parse_time(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\n')) text.remove_prefix(1);
    const int year = TakeDigits(text, 4);
    if (!Take(text, '-')) return 0.0;
    const int month = TakeDigits(text, 2);
    if (!Take(text, '-')) return 0.0;
    const int day = TakeDigits(text, 2);
    if (!Take(text, 'T')) return 0.0;
    const int hour = TakeDigits(text, 2);
    if (!Take(text, ':')) return 0.0;
    const int minute = TakeDigits(text, 2);
    if (!Take(text, ':')) return 0.0;
    const int second = TakeDigits(text, 2);
    if (year < 0 || month < 1 || day < 1 || hour < 0 || minute < 0 || second < 0) return 0.0;
    double fraction = 0.0;
    if (!text.empty() && (text.front() == '.' || text.front() == ',')) {
        text.remove_prefix(1);
        for (double place = 0.1; !text.empty() && text.front() >= '0' && text.front() <= '9'; place *= 0.1) {
            fraction += place * (text.front() - '0');
            text.remove_prefix(1);
        }
    }
    return getStartOfDayUTC(year, month, day) + hour * 3600 + minute * 60 + second + fraction - Offset(text);
}

void format_time(double seconds, std::string& out)
{
    constexpr double kLatest = 253402300799.0; // the end of the year 9999
    const auto whole = static_cast<long>(std::floor(seconds >= 0.0 && seconds <= kLatest ? seconds : 0.0));
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{whole / kSecondsPerDay}}};
    const auto of_day = static_cast<std::uint64_t>(whole % kSecondsPerDay);
    AppendDigits(out, static_cast<std::uint64_t>(static_cast<int>(date.year())), 4);
    out += '-';
    AppendDigits(out, static_cast<unsigned>(date.month()), 2);
    out += '-';
    AppendDigits(out, static_cast<unsigned>(date.day()), 2);
    out += 'T';
    AppendDigits(out, of_day / 3600, 2);
    out += ':';
    AppendDigits(out, of_day / 60 % 60, 2);
    out += ':';
    AppendDigits(out, of_day % 60, 2);
    out += 'Z';
}

void append_ten_decimals(std::string& out, double number)
{
    // The number is mantissa * 2^-shift. Ten decimals of it as a whole number need at most 53 + 34 bits, so that the
    // rounding (half to even, as printf's) is exact.
    constexpr std::uint64_t kScale = 10'000'000'000;
    if (!(std::fabs(number) < 1e6)) number = 0.0;
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(number), &exponent);
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
    const int shift = 53 - exponent; // 33 or more, for the magnitudes allowed
    __extension__ using wide = unsigned __int128;
    std::uint64_t scaled = 0;
    if (shift < 120) {
        const wide product = static_cast<wide>(mantissa) * kScale;
        const wide rest = product & ((static_cast<wide>(1) << shift) - 1);
        const wide half = static_cast<wide>(1) << (shift - 1);
        scaled = static_cast<std::uint64_t>(product >> shift);
        if (rest > half || (rest == half && (scaled & 1) != 0)) ++scaled;
    }
    if (std::signbit(number)) out += '-';
    const std::uint64_t whole = scaled / kScale;
    AppendDigits(out, whole,
                 whole < 10        ? 1
                 : whole < 100     ? 2
                 : whole < 1000    ? 3
                 : whole < 10000   ? 4
                 : whole < 100000  ? 5
                 : whole < 1000000 ? 6
                                   : 7);
    out += '.';
    AppendDigits(out, scaled % kScale, 10);
}

const char* gpx_line_style(int style)
{
    return style >= 0 && style < static_cast<int>(kLineStyles.size()) ? kLineStyles[static_cast<std::size_t>(style)]
                                                                      : nullptr;
}

int gpx_line_style_number(std::string_view name)
{
    for (std::size_t style = 0; style < kLineStyles.size(); ++style) {
        if (_tcsicmp(std::string(name).c_str(), kLineStyles[style]) == 0) return static_cast<int>(style);
    }
    return 0;
}
