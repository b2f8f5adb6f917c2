#include "chart/folder_number.h"

#include "core/file_names.h"

#include <charconv>
#include <limits>

int get_folder_number(const std::string& path)
{
    std::string part = path;
    while (part.size() >= 2) {
        const std::size_t last = part.find_last_not_of("0123456789");
        const std::size_t digits = last == std::string::npos ? 0 : last + 1;
        if (digits < part.size()) {
            int number = 0;
            const auto result = std::from_chars(part.data() + digits, part.data() + part.size(), number);
            return result.ec == std::errc() ? number : std::numeric_limits<int>::max();
        }
        std::string parent = dirname(part);
        if (parent.size() >= part.size()) return 0;
        part = std::move(parent);
    }
    return 0;
}
