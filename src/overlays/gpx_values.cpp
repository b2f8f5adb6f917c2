#include "core/calendar.h"
#include "core/numbers.h"
#include "core/text.h"
#include "overlays/gpx_output.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>

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

/// Two digits; 100 or more when one of them is none.
unsigned Pair(const char* digits)
{
    const unsigned tens = static_cast<unsigned char>(digits[0]) - unsigned{'0'};
    const unsigned ones = static_cast<unsigned char>(digits[1]) - unsigned{'0'};
    return tens < 10 && ones < 10 ? 10 * tens + ones : 100;
}

/// A time just as format_time writes it; nothing for any other.
std::optional<double> UsualTime(std::string_view text)
{
    const char* const t = text.data();
    if (text.size() != 20 || t[4] != '-' || t[7] != '-' || t[10] != 'T' || t[13] != ':' || t[16] != ':' || t[19] != 'Z')
        return {};
    const unsigned hour = Pair(t + 11);
    const unsigned minute = Pair(t + 14);
    const unsigned second = Pair(t + 17);
    const unsigned century = Pair(t);
    const unsigned year = Pair(t + 2);
    const unsigned month = Pair(t + 5);
    const unsigned day = Pair(t + 8);
    if (std::max({hour, minute, second, century, year, month, day}) >= 100 || month == 0 || day == 0) return {};
    // The points of a track mostly share a day.
    static unsigned last_date = 0;
    static double start_of_last = 0.0;
    const unsigned date = ((century * 100 + year) * 100 + month) * 100 + day;
    if (date != last_date) {
        start_of_last =
            getStartOfDayUTC(static_cast<int>(century * 100 + year), static_cast<int>(month), static_cast<int>(day));
        last_date = date;
    }
    return start_of_last + hour * 3600 + minute * 60 + second;
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

char* PutPair(char* to, std::uint32_t below_100)
{
    std::memcpy(to, kPairs.data() + 2 * below_100, 2);
    return to + 2;
}

/// Exactly four digits.
char* PutFour(char* to, std::uint32_t value)
{
    return PutPair(PutPair(to, value / 100), value % 100);
}

/// Exactly ten digits, in halves that need no long division.
char* PutTen(char* to, std::uint64_t value)
{
    for (const std::uint32_t five :
         {static_cast<std::uint32_t>(value / 100'000), static_cast<std::uint32_t>(value % 100'000)}) {
        *to++ = static_cast<char>('0' + five / 10'000);
        to = PutFour(to, five % 10'000);
    }
    return to;
}

constexpr int kDateLength = 11; ///< of "2026-06-14T"

void PutDate(char* to, long days)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
    to = PutFour(to, static_cast<std::uint32_t>(static_cast<int>(date.year())));
    *to++ = '-';
    to = PutPair(to, static_cast<unsigned>(date.month()));
    *to++ = '-';
    to = PutPair(to, static_cast<unsigned>(date.day()));
    *to = 'T';
}

} // namespace

double parse_time(std::string_view text)
{
    if (const std::optional<double> usual = UsualTime(text)) return *usual;
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

char* put_time(char* to, double seconds)
{
    constexpr double kLatest = 253402300799.0; // the end of the year 9999
    const auto whole = static_cast<long>(seconds >= 0.0 && seconds <= kLatest ? seconds : 0.0);
    // The points of a track mostly share a day.
    static long last_day = -1;
    static char last_date[kDateLength];
    const long day = whole / kSecondsPerDay;
    if (day != last_day) {
        last_day = day;
        PutDate(last_date, day);
    }
    std::memcpy(to, last_date, kDateLength);
    const auto of_day = static_cast<std::uint32_t>(whole - day * kSecondsPerDay);
    to = PutPair(to + kDateLength, of_day / 3600);
    *to++ = ':';
    to = PutPair(to, of_day / 60 % 60);
    *to++ = ':';
    to = PutPair(to, of_day % 60);
    *to++ = 'Z';
    return to;
}

void format_time(double seconds, std::string& out)
{
    char text[kTimeLength];
    out.append(text, static_cast<std::size_t>(put_time(text, seconds) - text));
}

char* put_ten_decimals(char* to, double number)
{
    // The number is mantissa * 2^-shift. Ten decimals of it as a whole number need at most 53 + 34 bits, so that the
    // rounding (half to even, as printf's) is exact.
    constexpr std::uint64_t kScale = 10'000'000'000;
    constexpr int kMantissaBits = 52;
    constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << kMantissaBits;
    if (!(std::fabs(number) < 1e6)) number = 0.0;
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const int exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF);
    const int shift = 1075 - exponent; // 33 or more, for the magnitudes allowed
    __extension__ using wide = unsigned __int128;
    std::uint64_t scaled = 0;
    if (shift < 120) {
        const wide product = static_cast<wide>((bits & (kImplicitBit - 1)) | kImplicitBit) * kScale;
        const wide rest = product & ((static_cast<wide>(1) << shift) - 1);
        const wide half = static_cast<wide>(1) << (shift - 1);
        scaled = static_cast<std::uint64_t>(product >> shift);
        if (rest > half || (rest == half && (scaled & 1) != 0)) ++scaled;
    }
    if (std::signbit(number)) *to++ = '-';
    const std::uint64_t whole = scaled / kScale;
    to = std::to_chars(to, to + 8, static_cast<std::uint32_t>(whole)).ptr;
    *to++ = '.';
    return PutTen(to, scaled - whole * kScale);
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
