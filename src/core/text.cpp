#include "core/text.h"

#include "core/clock.h"
#include "core/numbers.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <locale.h>

namespace {

int UpperAscii(unsigned char c)
{
    return c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c;
}

/// The C locale for this thread while the object lives: what is formatted does not depend on the user's.
class CNumericCLocale {
public:
    CNumericCLocale() : before(uselocale(CLocale())) {}
    ~CNumericCLocale() { uselocale(before); }
    CNumericCLocale(const CNumericCLocale&) = delete;
    CNumericCLocale& operator=(const CNumericCLocale&) = delete;

private:
    static locale_t CLocale()
    {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t before;
};

void AppendFormatted(std::string& out, const char* format, va_list arguments)
{
    const CNumericCLocale numeric;
    char small[256];
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(small, sizeof small, format, arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof small) {
        out.append(small, static_cast<std::size_t>(length));
    } else if (length >= 0) {
        const std::size_t before = out.size();
        out.resize(before + static_cast<std::size_t>(length) + 1);
        std::vsnprintf(out.data() + before, static_cast<std::size_t>(length) + 1, format, again);
        out.pop_back();
    }
    va_end(again);
}

/// A run of digits without its leading zeros, taken off the front of the text.
std::string_view TakeDigits(const char*& text)
{
    while (*text == '0') ++text;
    const char* begin = text;
    while (IsDigit(*text)) ++text;
    return {begin, static_cast<std::size_t>(text - begin)};
}

int CompareDigits(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

/// Date and time fields that a template may hold. "%R", the route's name in templates, is none of them.
constexpr const char* kDateFields = "aAbBcCdDeFgGhHIjklmMnpPrsStTuUVwWxXyYzZ%";

} // namespace

std::string stringprintf(const char* format, ...)
{
    std::string out;
    va_list arguments;
    va_start(arguments, format);
    AppendFormatted(out, format, arguments);
    va_end(arguments);
    return out;
}

void appendprintf(std::string& out, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    AppendFormatted(out, format, arguments);
    va_end(arguments);
}

const char* plural_s(int n)
{
    return n == 1 ? "" : "s";
}

const char* stristr_upper(const char* text, const char* upper_needle)
{
    const std::size_t length = std::strlen(upper_needle);
    for (;; ++text) {
        std::size_t i = 0;
        while (i < length &&
               UpperAscii(static_cast<unsigned char>(text[i])) == static_cast<unsigned char>(upper_needle[i]))
            ++i;
        if (i == length) return text;
        if (*text == '\0') return nullptr;
    }
}

int _tcsicmp(const char* a, const char* b)
{
    for (;; ++a, ++b) {
        const int difference = UpperAscii(static_cast<unsigned char>(*a)) - UpperAscii(static_cast<unsigned char>(*b));
        if (difference != 0 || *a == '\0') return difference;
    }
}

int alnumcmp(const char* a, const char* b)
{
    for (;;) {
        if (IsDigit(*a) && IsDigit(*b)) {
            const int order = CompareDigits(TakeDigits(a), TakeDigits(b));
            if (order != 0) return order;
            continue;
        }
        const int difference = UpperAscii(static_cast<unsigned char>(*a)) - UpperAscii(static_cast<unsigned char>(*b));
        if (difference != 0 || *a == '\0') return difference;
        ++a;
        ++b;
    }
}

bool CompareAlphaNumeric(const std::string& a, const std::string& b)
{
    return alnumcmp(a.c_str(), b.c_str()) < 0;
}

void break_string_args(const std::string& text, char separator, std::vector<std::string>& out)
{
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        if (end > begin) out.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

bool MParseURL(const std::string& url, std::string& scheme, std::string& host, int& port, std::string& path)
{
    const std::size_t colon = url.find("://");
    if (colon == std::string::npos || colon == 0) return false;
    const std::size_t authority = colon + 3;
    const std::size_t slash = std::min(url.find('/', authority), url.size());
    std::string_view server = std::string_view(url).substr(authority, slash - authority);
    int number = 0;
    const std::size_t bracket = server.rfind(']'); // an IPv6 address holds colons of its own
    const std::size_t port_colon = server.rfind(':');
    if (port_colon != std::string_view::npos && (bracket == std::string_view::npos || port_colon > bracket)) {
        const std::string_view digits = server.substr(port_colon + 1);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (result.ptr != digits.data() + digits.size() || number < 0 || number > 65535) return false;
        server = server.substr(0, port_colon);
    }
    if (server.empty()) return false;
    scheme = url.substr(0, colon);
    host = server;
    port = number;
    path = url.substr(slash);
    return true;
}

std::string ExpandDateAndTime(const std::string& pattern, double time)
{
    const auto seconds = static_cast<std::time_t>(time == 0.0 ? GetTimeNow() : std::clamp(time, -6e10, 2.5e11));
    std::tm fields{};
    localtime_r(&seconds, &fields);
    std::string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%' || i + 1 == pattern.size() || std::strchr(kDateFields, pattern[i + 1]) == nullptr) {
            out += pattern[i];
            continue;
        }
        const char field[] = {'%', pattern[++i], '\0'};
        char text[64];
        out.append(text, std::strftime(text, sizeof text, field, &fields));
    }
    return out;
}

std::string Latin1ToUtf8(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | byte >> 6);
            out += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return out;
}
