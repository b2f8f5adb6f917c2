#pragma once

#include <optional>
#include <string_view>

/// Numbers in text, whatever the locale: only "." is a decimal point. Leading blanks and a sign are allowed, text
/// behind the number is ignored. Nothing when no number stands there or it is not finite.
std::optional<double> ParseDouble(std::string_view text);
/// Decimal, 0x hexadecimal or leading-0 octal, as scanf's %i; a 32-bit pattern, so "0xffffffff" is -1.
std::optional<int> ParseInt(std::string_view text);
