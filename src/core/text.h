#pragma once

#include <string>
#include <string_view>
#include <vector>

/// printf into a string; numbers are written with "." whatever the locale.
std::string stringprintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
void appendprintf(std::string& out, const char* format, ...) __attribute__((format(printf, 2, 3)));
constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
/// "s" unless n is 1.
const char* plural_s(int n);
/// Where `upper_needle` (upper case) begins in `text`, ASCII case ignored; null when nowhere.
const char* stristr_upper(const char* text, const char* upper_needle);
/// strcmp without regard to ASCII case.
int _tcsicmp(const char* a, const char* b);
/// Natural order: runs of digits compare by value, the rest by bytes without regard to case.
int alnumcmp(const char* a, const char* b);
/// alnumcmp as a sort order.
bool CompareAlphaNumeric(const std::string& a, const std::string& b);
/// Splits at `separator` and appends the pieces that are not empty.
void break_string_args(const std::string& text, char separator, std::vector<std::string>& out);
/// Splits "scheme://host:port/path"; port 0 when none is given. False when there is no scheme or host.
bool MParseURL(const std::string& url, std::string& scheme, std::string& host, int& port, std::string& path);
/// Fills the date and time fields of a name template as strftime does, in local time; `time` is in seconds since 1970,
/// 0.0 is now. An unknown field stays as it is, and so does "%R": in name templates it is the route's name.
std::string ExpandDateAndTime(const std::string& pattern, double time);
/// Latin-1 to UTF-8.
std::string Latin1ToUtf8(std::string_view text);
