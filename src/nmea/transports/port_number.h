#pragma once

#include <string>

/// Whether a TCP or UDP port can have that number.
constexpr bool IsPortNumber(int number)
{
    return number > 0 && number <= 65535;
}
/// The port that the text names in decimal digits alone, blanks around them allowed; 0 when it names none.
int PortFromText(const std::string& text);
/// What the user is told of a text that names none.
inline constexpr const char* kPortProblem = "The port is a number from 1 to 65535";
