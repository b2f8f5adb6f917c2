#pragma once

#include <cmath>
#include <optional>
#include <string_view>

/// Numbers in text, whatever the locale: only "." is a decimal point. Leading blanks and a sign are allowed, text
/// behind the number is ignored. Nothing when no number stands there or it is not finite.
inline std::optional<double> ParseDouble(std::string_view text);
/// The same; NaN when no number stands there or it is not finite.
double ParseDoubleOrNaN(std::string_view text);
double ParseDoubleOrNaN(const char* text);
/// Decimal, 0x hexadecimal or leading-0 octal, as scanf's %i; a 32-bit pattern, so "0xffffffff" is -1.
std::optional<int> ParseInt(std::string_view text);

inline std::optional<double> ParseDouble(std::string_view text)
{
    const double number = ParseDoubleOrNaN(text);
    return std::isnan(number) ? std::nullopt : std::optional(number);
}
