#include "navdata/angle_scan.h"

#include "core/lines.h"
#include "core/numbers.h"
#include "core/text.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

constexpr double kUnreadable = 999.0;
/// Nobody types more; a pasted novel is no position.
constexpr std::size_t kLongestText = 200;
constexpr std::string_view kBeforeSplit = "nNsS0123456789.";

bool IsOneOf(char c, std::string_view set)
{
    return set.find(c) != std::string_view::npos;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// Signs of typography and of other keyboards, in UTF-8, become the plain ones.
void MakePlain(std::string& text)
{
    constexpr std::string_view signs[][2] = {
        {"\u00b0", "d"},  {"\u00ba", "d"},  {"\u02da", "d"}, {"\u2032", "'"}, {"\u2019", "'"}, {"\u00b4", "'"},
        {"\u2033", "\""}, {"\u201d", "\""}, {"\u2212", "-"}, {"\u00a0", " "}, {"\u202f", " "}, {"\t", " "},
    };
    for (const auto& [sign, plain] : signs) ReplaceAll(text, sign, plain);
    ReplaceAll(text, "'.", "."); // 12'.345
}

/// Where the longitude begins in a text without a comma; npos when nowhere.
std::size_t FindSplit(const std::string& text)
{
    if (IsOneOf(text[0], "nNsS")) return text.find_first_of("eEwW");
    std::vector<std::size_t> blanks;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != ' ' || !IsOneOf(text[i - 1], kBeforeSplit)) continue;
        if (!IsDigit(text[i - 1]) && text[i - 1] != '.') return i;
        blanks.push_back(i);
    }
    if (blanks.empty()) return std::string::npos;
    return blanks.size() % 2 == 1 ? blanks[blanks.size() / 2] : blanks[0];
}

/// Takes one letter of the hemisphere from either end; false when there is another one, or two.
bool TakeLetter(std::string& text, char positive, char negative, bool& is_negative)
{
    int count = 0;
    for (const bool front : {true, false}) {
        if (text.empty()) return false;
        const char end = front ? text.front() : text.back();
        if (!std::isalpha(static_cast<unsigned char>(end)) || end == 'd') continue;
        const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(end)));
        if (letter != positive && letter != negative) return false;
        is_negative = letter == negative;
        text.erase(front ? 0 : text.size() - 1, 1);
        TrimSpaces(text);
        ++count;
    }
    return count <= 1;
}

/// An unsigned decimal number at the front, taken off the text; false when none stands there.
bool TakeNumber(std::string_view& text, double& value)
{
    std::size_t length = 0;
    while (length < text.size() && (IsDigit(text[length]) || text[length] == '.')) ++length;
    const auto number = text.substr(0, length);
    if (number.find('.') != number.rfind('.')) return false;
    const auto parsed = ParseDouble(number);
    if (!parsed) return false;
    value = *parsed;
    text.remove_prefix(length);
    return true;
}

} // namespace

bool SplitPosition(const char* text, std::string& latitude, std::string& longitude)
{
    if (text == nullptr || strnlen(text, kLongestText) == kLongestText) return false;
    std::string plain = text;
    MakePlain(plain);
    TrimSpaces(plain);
    if (plain.empty()) return false;
    const std::size_t comma = plain.find(',');
    const std::size_t split = comma != std::string::npos ? comma : FindSplit(plain);
    if (split == std::string::npos) return false;
    latitude = plain.substr(0, split);
    longitude = plain.substr(comma != std::string::npos ? split + 1 : split);
    return true;
}

double scan_deg_min_sec(const std::string& text, char positive_letter, char negative_letter)
{
    constexpr double kPerUnit[] = {1.0, 0.016666666666666666, 0.0002777777777777778};

    std::string plain = text;
    TrimSpaces(plain);
    bool is_negative = false;
    if (!TakeLetter(plain, positive_letter, negative_letter, is_negative)) return kUnreadable;
    std::string_view rest = plain;
    if (!rest.empty() && IsOneOf(rest[0], "+-")) {
        is_negative ^= rest[0] == '-';
        rest.remove_prefix(1);
    }
    double angle = 0.0;
    for (const double per_unit : kPerUnit) {
        double part;
        if (!TakeNumber(rest, part)) return kUnreadable;
        angle += part * per_unit;
        const std::size_t next = rest.find_first_not_of(" d:'\"-");
        rest.remove_prefix(std::min(next, rest.size()));
        if (rest.empty()) return is_negative ? -angle : angle;
    }
    return kUnreadable;
}
