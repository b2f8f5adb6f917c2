#include "nmea/transports/port_number.h"

#include <charconv>

int PortFromText(const std::string& text)
{
    constexpr const char* blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return 0;
    const char* const begin = text.data() + first;
    const char* const end = text.data() + text.find_last_not_of(blanks) + 1;
    int number = 0;
    const std::from_chars_result read = std::from_chars(begin, end, number);
    return read.ec == std::errc() && read.ptr == end && IsPortNumber(number) ? number : 0;
}
