#include "core/calendar.h"
#include "core/numbers.h"
#include "core/text.h"
#include "core/word_bytes.h"
#include "nmea/nmea_sentence.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr double kGreatestNumber = 1e9; ///< what lies beyond is no reading of any instrument
constexpr double kDegreesPerMinute = 0.016666666666666666;

bool HasLength(const char* field, std::size_t length)
{
    return std::memchr(field, 0, length) == nullptr;
}

/// A whole decimal number; what has more than 18 digits is cut short, and large enough all the same.
std::int64_t ReadWhole(const char* field)
{
    constexpr std::int64_t kLargeEnough = 100'000'000'000'000'000;
    while (*field == ' ' || (*field >= '\t' && *field <= '\r')) ++field;
    const bool negative = *field == '-';
    if (*field == '-' || *field == '+') ++field;
    std::int64_t number = 0;
    for (; IsDigit(*field) && number < kLargeEnough; ++field) number = number * 10 + (*field - '0');
    return negative ? -number : number;
}

/// Degrees of a field with its decimal point right behind `digits` digits, of which the last two are whole minutes.
/// Both halves are read apart: the minutes first, since the end of the degrees is written into them.
double GetCoordinate(char** fields, std::size_t digits, char negative)
{
    char* field = fields[0];
    if (!HasLength(field, digits) || field[digits] != '.') return 0.0;
    const double minutes = CNMEASentence::GetNumber(field + digits - 2);
    field[digits - 2] = 0;
    const double degrees = CNMEASentence::GetWhole(field) + minutes * kDegreesPerMinute;
    return fields[1][0] == negative ? -degrees : degrees;
}

constexpr std::ptrdiff_t kWordSize = sizeof(CSixteenBytes);
constexpr std::ptrdiff_t kBitmapSize = 4 * kWordSize;

/// A bit for each comma of the text from `begin` on, of at most 64 characters, the lowest for the first. Nothing
/// outside of the text is read.
std::uint64_t CommasIn(const char* text, const char* begin, const char* end)
{
    const auto commas_at = [](const char* at) {
        return std::uint64_t{HighestBits(CSixteenBytes(LoadSixteenBytes(at) == ','))};
    };
    std::uint64_t bits = 0;
    const char* at = begin;
    for (; end - at >= kWordSize; at += kWordSize) bits |= commas_at(at) << (at - begin);
    if (at == end) return bits;
    if (end - text >= kWordSize) return bits | commas_at(end - kWordSize) >> (kWordSize - (end - at)) << (at - begin);
    for (; at != end; ++at) bits |= std::uint64_t{*at == ','} << (at - begin);
    return bits;
}

/// A field of three parts of two digits, such as hhmmss. The last part is everything behind the fourth digit.
struct CTriple {
    int first;
    int second;
    char* third;
};

/// Splits the field, which has four characters at least.
CTriple SplitTriple(char* field)
{
    CTriple triple{};
    triple.third = field + 4;
    const char kept = *triple.third;
    *triple.third = 0;
    triple.second = CNMEASentence::GetWhole(field + 2);
    field[2] = 0;
    triple.first = CNMEASentence::GetWhole(field);
    *triple.third = kept;
    return triple;
}

int FullYear(int year)
{
    if (year < 0 || year >= 200) return year;
    return year < 100 ? 2000 + year : 1900 + year;
}

void SplitUpTo(char* end, char* text, int count, char** args)
{
    if (count < 1) return;
    char** const last = args + count;
    *args++ = text;
    for (char* begin = text; begin < end; begin += kBitmapSize) {
        std::uint64_t commas = CommasIn(text, begin, std::min(end, begin + kBitmapSize));
        for (; commas != 0; commas &= commas - 1) {
            char* const comma = begin + std::countr_zero(commas);
            *comma = 0;
            if (args == last) return;
            *args++ = comma + 1;
        }
    }
    *end = 0;
    std::fill(args, last, end);
}

} // namespace

char* CNMEASentence::FindEndOfFields(char* text)
{
    char* const star = std::strchr(text, '*');
    return star != nullptr ? star : text + std::strlen(text);
}

void CNMEASentence::SplitArgs(char* text, int count, char** args)
{
    SplitUpTo(FindEndOfFields(text), text, count, args);
}

void CNMEASentence::Split(char* text, int count, char** args) const
{
    SplitUpTo(EndOfFields(text), text, count, args);
}

double CNMEASentence::GetLat(char** fields)
{
    return GetCoordinate(fields, 4, 'S');
}

double CNMEASentence::GetLon(char** fields)
{
    return GetCoordinate(fields, 5, 'W');
}

int CNMEASentence::GetUTC(char* field)
{
    if (!HasLength(field, 4)) return 0;
    const CTriple time = SplitTriple(field);
    return time.first * 3600 + time.second * 60 + static_cast<int>(GetNumber(time.third));
}

double CNMEASentence::GetDate(char* field)
{
    // A receiver sends the same day all day long.
    static std::int64_t cached_field = std::numeric_limits<std::int64_t>::min();
    static double cached_day = 0.0;
    const std::int64_t whole = ReadWhole(field);
    if (whole == cached_field) return cached_day;
    if (!HasLength(field, 4)) return 0.0;
    const CTriple date = SplitTriple(field);
    cached_day = getStartOfDayUTC(FullYear(GetWhole(date.third)), date.second, date.first);
    cached_field = whole;
    return cached_day;
}

double CNMEASentence::GetNumber(const char* field)
{
    if (*field == 0) return 0.0;
    const double number = ParseDoubleOrNaN(field);
    return std::abs(number) <= kGreatestNumber ? number : 0.0; // so is NaN
}

int CNMEASentence::GetWhole(const char* field)
{
    constexpr std::ptrdiff_t kSafeDigits = 9; // nearly all fields have so few, and nothing before them
    int number = 0;
    const char* at = field;
    for (; IsDigit(*at) && at - field < kSafeDigits; ++at) number = number * 10 + (*at - '0');
    if (at != field && !IsDigit(*at)) return number;
    const std::int64_t any = ReadWhole(field);
    return std::abs(any) <= static_cast<std::int64_t>(kGreatestNumber) ? static_cast<int>(any) : 0;
}

float CNMEASentence::GetSpeed(const char* field)
{
    return LimitSpeed(GetNumber(field));
}

float CNMEASentence::LimitSpeed(double speed)
{
    constexpr double kGreatestSpeed = 1e6;
    return static_cast<float>(std::clamp(speed, -kGreatestSpeed, kGreatestSpeed));
}
