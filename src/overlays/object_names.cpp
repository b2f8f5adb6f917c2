#include "overlays/object_names.h"

#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

namespace {

constexpr std::string_view kRouteName = "%R";
/// Bytes: beyond it no more route names are filled in.
constexpr std::size_t kLongestName = 10'000;

/// The number that a text begins with; 0 without one, the largest there is for one beyond it.
long LeadingNumber(std::string_view text)
{
    long number = 0;
    while (text.starts_with(' ')) text.remove_prefix(1);
    if (text.starts_with('-')) return 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<long>::max() : number;
}

} // namespace

CNameCounter::CNameCounter(const std::string& name_template)
{
    const bool of_waypoint = name_template.find(kRouteName) != std::string::npos;
    const std::string name = of_waypoint ? name_template : ExpandDateAndTime(name_template, 0.0);
    const std::size_t at = name.rfind('#');
    prefix = name.substr(0, at);
    numbered = at != std::string::npos;
    if (numbered) suffix = name.substr(at + 1);
}

void CNameCounter::Add(const std::string& used_name)
{
    if (!numbered || !used_name.starts_with(prefix)) return;
    highest = std::max(highest, LeadingNumber(std::string_view(used_name).substr(prefix.size())));
}

std::string CNameCounter::Name() const
{
    if (!numbered) return prefix;
    const long next = highest < std::numeric_limits<long>::max() ? highest + 1 : highest;
    return prefix + std::to_string(next) + suffix;
}

std::string NumberedName(const std::string& name_template, int number)
{
    std::string name = name_template;
    const std::size_t at = name.rfind('#');
    if (at == std::string::npos) return name + std::to_string(number);
    return name.replace(at, 1, std::to_string(number));
}

std::string WaypointName(const std::string& name_template, const std::string& route_name, int number)
{
    std::string name = NumberedName(name_template, number);
    for (std::size_t at = name.find(kRouteName); at != std::string::npos;
         at = name.find(kRouteName, at + route_name.size())) {
        if (name.size() > kLongestName) break;
        name.replace(at, kRouteName.size(), route_name);
    }
    return name;
}
