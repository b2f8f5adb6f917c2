#include "navdata/grid_position.h"

#include "core/numbers.h"

#include <algorithm>

namespace {

constexpr std::string_view kBlanks = " \t\n\r";

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char Capital(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

void CGridScanner::SkipBlanks()
{
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

bool CGridScanner::Number(double& value)
{
    SkipBlanks();
    // No exponents: their letter is the one of eastings.
    std::size_t length = rest.starts_with('-') ? 1 : 0;
    while (length < rest.size() && (rest[length] == '.' || (rest[length] >= '0' && rest[length] <= '9'))) ++length;
    const auto number = rest.substr(0, length);
    if (number.find('.') != number.rfind('.')) return false;
    const auto parsed = ParseDouble(number);
    if (!parsed) return false;
    value = *parsed;
    rest.remove_prefix(length);
    return true;
}

bool CGridScanner::Letter(char& letter)
{
    SkipBlanks();
    if (rest.empty() || !IsLetter(rest.front())) return false;
    letter = Capital(rest.front());
    rest.remove_prefix(1);
    return true;
}

void CGridScanner::Skip(char letter)
{
    SkipBlanks();
    if (!rest.empty() && Capital(rest.front()) == letter) rest.remove_prefix(1);
}

bool CGridScanner::Digits(std::string& digits, std::size_t most)
{
    digits.clear();
    for (; !AtEnd() && digits.size() < most; rest.remove_prefix(1)) {
        if (rest.front() < '0' || rest.front() > '9') return false;
        digits += rest.front();
    }
    return AtEnd();
}

bool CGridScanner::AtEnd()
{
    SkipBlanks();
    return rest.empty();
}
