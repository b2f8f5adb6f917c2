#include "core/attributes.h"

#include <algorithm>
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
constexpr std::array<signed char, 256> MakeHexDigits()
{
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 10; ++i) values[static_cast<std::size_t>('0' + i)] = static_cast<signed char>(i);
    for (int i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('a' + i)] = static_cast<signed char>(10 + i);
        values[static_cast<std::size_t>('A' + i)] = static_cast<signed char>(10 + i);
    }
    return values;
}

constexpr std::array<signed char, 256> kHexDigits = MakeHexDigits();

} // namespace

std::string escape_string(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out(3 * text.size(), '\0');
    char* to = out.data();
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (kStays[byte] || c == ' ') {
            *to++ = c == ' ' ? '+' : c;
            continue;
        }
        *to++ = '%';
        *to++ = digits[byte >> 4];
        *to++ = digits[byte & 15];
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
    return out;
}

std::string unescape_string(std::string_view text)
{
    std::string out(text.size(), '\0');
    char* to = out.data();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            *to++ = text[i] == '+' ? ' ' : text[i];
            continue;
        }
        if (i + 2 >= text.size()) break;
        const int high = kHexDigits[static_cast<unsigned char>(text[i + 1])];
        const int low = kHexDigits[static_cast<unsigned char>(text[i + 2])];
        if (high >= 0 && low >= 0)
            *to++ = static_cast<char>(high << 4 | low);
        else
            to = std::copy_n(text.data() + i, 3, to);
        i += 2;
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
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
