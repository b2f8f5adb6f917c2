#include "core/numbers.h"

#include "core/word_bytes.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

bool IsNumberBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Takes blanks and one sign off the front; true for a minus.
bool TakeSign(std::string_view& text)
{
    while (!text.empty() && IsNumberBlank(text.front())) text.remove_prefix(1);
    if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
    const bool minus = text.front() == '-';
    text.remove_prefix(1);
    return minus;
}

/// The base that the prefix announces, taken off the text.
int TakeBase(std::string_view& text)
{
    if (text.size() < 2 || text.front() != '0') return 10;
    if (text[1] != 'x' && text[1] != 'X') return 8;
    text.remove_prefix(2);
    return 16;
}

constexpr std::size_t kExactDigits = 15; ///< whole numbers of so many digits are exact
constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The quotient of two exact numbers is rounded once, as the nearest double is: so a number of few digits needs no more.
double Decimal(std::uint64_t digits, std::size_t places)
{
    return static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[places];
}

/// The number that eight digits make, of which the first is the lowest byte.
std::uint64_t ValueOfDigits(std::uint64_t word)
{
    word = (word & RepeatedByte(0x0F)) * (1 + (10 << 8)) >> 8;
    word = (word & 0x00FF00FF00FF00FF) * (1 + (100 << 16)) >> 16;
    return (word & 0x0000FFFF0000FFFF) * (1 + (std::uint64_t{10000} << 32)) >> 32;
}

bool AreDigits(std::uint64_t word)
{
    constexpr std::uint64_t kHighHalves = RepeatedByte(0xF0);
    constexpr std::uint64_t kZeroes = RepeatedByte('0');
    return ((word & kHighHalves) == kZeroes) & (((word + RepeatedByte(6)) & kHighHalves) == kZeroes);
}

/// The first `count` characters, 1 to 8, of a word with zeroes behind them: behind leading '0's.
std::uint64_t PutZeroesBefore(std::uint64_t word, std::size_t count)
{
    const std::size_t padding = 8 * (8 - count);
    return word << padding | (RepeatedByte('0') & ((std::uint64_t{1} << padding) - 1));
}

/// Digits with at most one point among them, of at most 8 characters: put together without a loop. NaN when it is
/// anything else.
double ShortDecimal(const char* text, std::size_t length)
{
    std::uint64_t word = LoadBytes(text, length);
    std::size_t places = 0;
    if (const std::uint64_t point = BytesEqualTo(word, '.'); point != 0) {
        const auto before = static_cast<std::size_t>(std::countr_zero(point)) / 8;
        const std::uint64_t left = (std::uint64_t{1} << 8 * before) - 1;
        word = (word & left) | (word >> 8 & ~left);
        places = --length - before;
    }
    if (length == 0) return kNone;
    word = PutZeroesBefore(word, length);
    return AreDigits(word) ? Decimal(ValueOfDigits(word), places) : kNone;
}

/// The same of 9 to 16 characters, a point among the first 8 of them and up to 8 digits behind it.
double LongDecimal(const char* text, std::size_t length)
{
    const std::uint64_t word = LoadEightBytes(text);
    const std::uint64_t point = BytesEqualTo(word, '.');
    const auto before = static_cast<std::size_t>(std::countr_zero(point)) / 8; // 8 without a point
    const std::size_t places = length - before - 1;
    if (before == 8 || before == 0 || places > 8) return kNone;
    const std::uint64_t whole = PutZeroesBefore(word & ((std::uint64_t{1} << 8 * before) - 1), before);
    const std::uint64_t fraction = PutZeroesBefore(LoadBytes(text + before + 1, places), places);
    if (!AreDigits(whole) || !AreDigits(fraction)) return kNone;
    return Decimal(ValueOfDigits(whole) * static_cast<std::uint64_t>(kPowersOfTen[places]) + ValueOfDigits(fraction),
                   places);
}

/// A number of few digits without an exponent, as nearly all are. NaN when it is anything else.
double PlainDecimal(std::string_view text)
{
    const bool minus = !text.empty() && text.front() == '-';
    if (minus) text.remove_prefix(1);
    if (text.size() > kExactDigits + 1) return kNone;
    const double value =
        text.size() <= 8 ? ShortDecimal(text.data(), text.size()) : LongDecimal(text.data(), text.size());
    return minus ? -value : value;
}

/// Whatever else is a number.
double AnyDouble(std::string_view text)
{
    const bool minus = TakeSign(text);
    if (text.empty() || text.front() == '-') return kNone;
    double value = 0.0;
    const char* end = text.data() + text.size();
    auto status = std::from_chars(text.data(), end, value).ec;
    if (status == std::errc::result_out_of_range) {
        // Too small is a zero, too large is none: the wider type tells which.
        long double wide = 0.0L;
        status = std::from_chars(text.data(), end, wide).ec;
        value = static_cast<double>(wide);
    }
    if (status != std::errc{} || !std::isfinite(value)) return kNone;
    return minus ? -value : value;
}

} // namespace

double ParseDoubleOrNaN(std::string_view text)
{
    const double plain = PlainDecimal(text);
    return std::isnan(plain) ? AnyDouble(text) : plain;
}

std::optional<int> ParseInt(std::string_view text)
{
    const bool minus = TakeSign(text);
    const int base = TakeBase(text);
    std::uint64_t magnitude = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), magnitude, base).ec != std::errc{}) return std::nullopt;
    constexpr std::uint64_t kPatterns = std::numeric_limits<std::uint32_t>::max();
    if (magnitude > (minus ? kPatterns / 2 + 1 : kPatterns)) return std::nullopt;
    const auto pattern = static_cast<std::uint32_t>(magnitude);
    return static_cast<int>(minus ? 0U - pattern : pattern);
}
