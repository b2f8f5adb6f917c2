#include "core/numbers.h"

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

constexpr std::ptrdiff_t kExactDigits = 15; ///< whole numbers of so many digits are exact
constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Appends digits to the number as far as they go; gives where they end.
template <class End>
const char* TakeDigits(const char* at, End end, std::uint64_t& number)
{
    for (unsigned digit = 0; at != end && (digit = static_cast<unsigned char>(*at) - unsigned{'0'}) <= 9; ++at)
        number = number * 10 + digit;
    return at;
}

/// A number of few digits without an exponent, as nearly all are; false when it is anything else. It is the quotient of
/// two exact numbers, which is rounded once, as the nearest double is.
template <class End>
bool ReadPlainDecimal(const char* at, End end, double& number)
{
    const bool minus = at != end && *at == '-';
    if (minus) ++at;
    std::uint64_t digits = 0;
    const char* const whole = at;
    at = TakeDigits(whole, end, digits);
    std::ptrdiff_t count = at - whole;
    std::ptrdiff_t places = 0;
    if (at != end && *at == '.') {
        const char* const fraction = at + 1;
        at = TakeDigits(fraction, end, digits);
        places = at - fraction;
        count += places;
    }
    if (at != end || count == 0 || count > kExactDigits) return false;
    number = static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[places];
    if (minus) number = -number;
    return true;
}

/// The end of a text that a NUL ends.
struct CEndOfText {
    friend bool operator==(const char* at, CEndOfText) { return *at == 0; }
};

/// Whatever else is a number.
[[gnu::noinline]] double AnyDouble(std::string_view text)
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
    double number = kNone;
    return ReadPlainDecimal(text.data(), text.data() + text.size(), number) ? number : AnyDouble(text);
}

double ParseDoubleOrNaN(const char* text)
{
    double number = kNone;
    return ReadPlainDecimal(text, CEndOfText(), number) ? number : AnyDouble(text);
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
