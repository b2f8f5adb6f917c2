#include "core/calendar.h"
#include "core/numbers.h"
#include "core/text.h"
#include "overlays/gpx_output.h"

#include <array>
#include <cmath>
#include <cstring>

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

constexpr std::array<char, 200> MakePairs()
{
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}

constexpr std::array<char, 200> kPairs = MakePairs(); ///< "00" to "99"

/// Writes exactly `digits` digits, two at a time from the end, and gives what follows them.
char* PutDigits(char* to, std::uint64_t value, int digits)
{
    char* const end = to + digits;
    char* at = end;
    for (; digits >= 2; digits -= 2) {
        const char* pair = kPairs.data() + 2 * (value % 100);
        value /= 100;
        *--at = pair[1];
        *--at = pair[0];
    }
    if (digits == 1) *--at = static_cast<char>('0' + value % 10);
    return end;
}

int DigitsOf(std::uint64_t value)
{
    int digits = 1;
    for (; value >= 10; value /= 10) ++digits;
    return digits;
}

constexpr int kDateLength = 11; ///< of "2026-06-14T"

void PutDate(char* to, long days)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
    to = PutDigits(to, static_cast<std::uint64_t>(static_cast<int>(date.year())), 4);
    *to++ = '-';
    to = PutDigits(to, static_cast<unsigned>(date.month()), 2);
    *to++ = '-';
    to = PutDigits(to, static_cast<unsigned>(date.day()), 2);
    *to = 'T';
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
    // The points of a track mostly share a day.
    static long last_day = -1;
    static char last_date[kDateLength];
    if (whole / kSecondsPerDay != last_day) {
        last_day = whole / kSecondsPerDay;
        PutDate(last_date, last_day);
    }
    char text[kDateLength + 9];
    std::memcpy(text, last_date, kDateLength);
    const auto of_day = static_cast<std::uint64_t>(whole % kSecondsPerDay);
    char* to = PutDigits(text + kDateLength, of_day / 3600, 2);
    *to++ = ':';
    to = PutDigits(to, of_day / 60 % 60, 2);
    *to++ = ':';
    to = PutDigits(to, of_day % 60, 2);
    *to++ = 'Z';
    out.append(text, static_cast<std::size_t>(to - text));
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
    char text[24];
    char* to = text;
    if (std::signbit(number)) *to++ = '-';
    const std::uint64_t whole = scaled / kScale;
    to = PutDigits(to, whole, DigitsOf(whole));
    *to++ = '.';
    to = PutDigits(to, scaled % kScale, 10);
    out.append(text, static_cast<std::size_t>(to - text));
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
