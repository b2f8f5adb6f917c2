#include "chart/chart_outline.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

namespace {

constexpr std::array<std::string_view, 12> kMonthNames = {"jan", "feb", "mar", "apr", "may", "jun",
                                                          "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr int kFirstYear = 1500;
constexpr int kLastYear = 2999;
constexpr std::size_t kMostDigits = 4;

/// A run of digits or letters of a text.
struct DateToken {
    int number = -1; ///< -1: a word, or more digits than a year has
    int month = 0;   ///< 1 to 12 when the word begins like the name of a month
};

DateToken MakeToken(std::string_view run)
{
    DateToken token;
    if (std::isdigit(static_cast<unsigned char>(run[0])) != 0) {
        if (run.size() > kMostDigits) return token;
        token.number = 0;
        for (const char digit : run) token.number = token.number * 10 + (digit - '0');
        return token;
    }
    std::string word(run.substr(0, kMonthNames[0].size()));
    std::ranges::transform(word, word.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto name = std::ranges::find(kMonthNames, word);
    if (name != kMonthNames.end()) token.month = static_cast<int>(name - kMonthNames.begin()) + 1;
    return token;
}

std::vector<DateToken> Tokens(std::string_view text)
{
    const auto kind = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return std::isdigit(byte) != 0 ? 1 : std::isalpha(byte) != 0 ? 2 : 0;
    };
    std::vector<DateToken> tokens;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = start + 1;
        while (end < text.size() && kind(text[end]) == kind(text[start])) ++end;
        if (kind(text[start]) != 0) tokens.push_back(MakeToken(text.substr(start, end - start)));
        start = end;
    }
    return tokens;
}

bool IsMonth(int number)
{
    return number >= 1 && number <= 12;
}

bool IsDay(int number)
{
    return number >= 1 && number <= 31;
}

} // namespace

std::uint32_t parse_date_for_comparison(const std::string& text)
{
    const std::vector<DateToken> tokens = Tokens(text);
    const auto number_at = [&tokens](std::size_t i) { return i < tokens.size() ? tokens[i].number : -1; };
    const auto year_at = std::ranges::find_if(
        tokens, [](const DateToken& token) { return token.number >= kFirstYear && token.number <= kLastYear; });
    if (year_at == tokens.end()) return 0;
    const auto year = static_cast<std::size_t>(year_at - tokens.begin());
    const int before = year > 0 ? number_at(year - 1) : -1;
    const int before_that = year > 1 ? number_at(year - 2) : -1;
    int month = 0;
    int day = 0;
    const auto named = std::ranges::find_if(tokens, [](const DateToken& token) { return token.month != 0; });
    if (named != tokens.end()) {
        const auto at = static_cast<std::size_t>(named - tokens.begin());
        month = named->month;
        if (at > 0 && IsDay(number_at(at - 1))) {
            day = number_at(at - 1);
        } else if (IsDay(number_at(at + 1))) {
            day = number_at(at + 1);
        }
    } else if (IsMonth(number_at(year + 1)) && before < 0) { // year first
        month = number_at(year + 1);
        if (IsDay(number_at(year + 2))) day = number_at(year + 2);
    } else if (IsMonth(before)) {
        month = before;
        if (IsDay(before_that)) day = before_that;
    } else if (IsDay(before) && IsMonth(before_that)) { // the month first, since it cannot stand second
        month = before_that;
        day = before;
    }
    return static_cast<std::uint32_t>(year_at->number * 10000 + month * 100 + day);
}
