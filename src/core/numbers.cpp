#include "core/numbers.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

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

} // namespace

std::optional<double> ParseDouble(std::string_view text)
{
    const bool minus = TakeSign(text);
    if (text.empty() || text.front() == '-') return std::nullopt;
    double value = 0.0;
    const char* end = text.data() + text.size();
    auto status = std::from_chars(text.data(), end, value).ec;
    if (status == std::errc::result_out_of_range) {
        // Too small is a zero, too large is none: the wider type tells which.
        long double wide = 0.0L;
        status = std::from_chars(text.data(), end, wide).ec;
        value = static_cast<double>(wide);
    }
    if (status != std::errc{} || !std::isfinite(value)) return std::nullopt;
    return minus ? -value : value;
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
