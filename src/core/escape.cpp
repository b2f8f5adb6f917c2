#include "core/attributes.h"

#include <array>

namespace {

constexpr std::string_view kUnescaped = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789$-_.!*'()";

constexpr std::array<bool, 256> MakeStays()
{
    std::array<bool, 256> stays{};
    for (const char c : kUnescaped) stays[static_cast<unsigned char>(c)] = true;
    return stays;
}

constexpr std::array<bool, 256> kStays = MakeStays();

/// The value of a hexadecimal digit, -1 for another character.
int HexDigit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::string escape_string(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out;
    out.reserve(text.size() + text.size() / 4);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (kStays[byte]) {
            out += c;
        } else if (c == ' ') {
            out += '+';
        } else {
            const char escaped[] = {'%', digits[byte >> 4], digits[byte & 15]};
            out.append(escaped, sizeof escaped);
        }
    }
    return out;
}

std::string unescape_string(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out += text[i] == '+' ? ' ' : text[i];
            continue;
        }
        if (i + 2 >= text.size()) break;
        const int high = HexDigit(text[i + 1]);
        const int low = HexDigit(text[i + 2]);
        if (high >= 0 && low >= 0)
            out += static_cast<char>(high << 4 | low);
        else
            out += text.substr(i, 3);
        i += 2;
    }
    return out;
}

std::string unescape_multiple(std::string text)
{
    for (;;) {
        std::string next = unescape_string(text);
        if (next == text) return text;
        text = std::move(next);
    }
}
