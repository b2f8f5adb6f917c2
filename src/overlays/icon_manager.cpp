#include "overlays/icon_manager.h"

#include "core/display_metrics.h"
#include "ui/colorized_image.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr double kUnknownHotSpot = 15.0; ///< device pixels

/// Where an icon stands on its place, of its width and height.
struct IconData {
    std::string_view name;
    double x;
    double y;
};

constexpr IconData kIconData[] = {
    {"Flag", 0.0862, 0.875},
    {"Dot", 0.486, 0.486},
    {"Pin", 0.937, 0.937},
    {"Person", 0.592, 0.875},
    {"X", 0.5, 0.5},
    {"Anchor", 0.4375, 0.875},
    {"Boat", 0.4375, 0.6},
    {"Buoy_can", 11.0 / 24.0, 15.0 / 19.0},
    {"Buoy_cardinal", 0.5625, 35.0 / 38.0},
    {"Buoy_conical", 11.0 / 24.0, 0.84},
    {"Circle", 6.0 / 13.0, 6.0 / 13.0},
    {"Deer", 0.5625, 0.53125},
    {"Exit", 16.0 / 31.0, 7.0 / 15.0},
    {"First_aid", 0.5, 0.5},
    {"Fish", 0.40625, 8.0 / 17.0},
    {"Fuel", 0.46875, 0.84375},
    {"G_pin", 0.28125, 31.0 / 33.0},
    {"Geocache", 0.53125, 8.0 / 13.0},
    {"Buoy_round", 11.0 / 24.0, 0.84},
    {"Car", 0.5625, 0.53125},
    {"House", 0.625, 0.8125},
    {"MOB", 10.0 / 21.0, 10.0 / 21.0},
    {"Skull", 0.5, 0.71875},
    {"Square", 4.0 / 9.0, 4.0 / 9.0},
    {"Tent", 0.6875, 0.71875},
    {"Tinydot", 1.0 / 3.0, 1.0 / 3.0},
    {"Trackback", 4.0 / 9.0, 4.0 / 9.0},
    {"Triangle", 7.0 / 15.0, 7.0 / 13.0},
    {"Warning", 0.5, 0.5625},
    {"Wreck", 0.40625, 9.0 / 11.0},
};

bool IsLower(char c)
{
    return c >= 'a' && c <= 'z';
}
bool IsUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}
char ToUpper(char c)
{
    return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}
char ToLower(char c)
{
    return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

CIconManager::CIconDetails::CIconDetails(const std::string& file_name, const GraphicsColor& tint)
    : name(file_name), colour(tint), image(LoadColorizedImage(file_name, tint)), resolution(graphicsResolution)
{
    const auto* const row = std::find_if(std::begin(kIconData), std::end(kIconData),
                                         [this](const IconData& data) { return data.name == name; });
    const bool known = row != std::end(kIconData);
    hot_x = (known ? row->x : 0.5) * image.width();
    hot_y = (known ? row->y : 0.5) * image.height();
}

const CIconManager::CIconDetails& CIconManager::GetIconFixedName(const std::string& name, const GraphicsColor& colour)
{
    const Key key(name, colour.argb(), graphicsResolution);
    const auto found = icons.find(key);
    if (found != icons.end()) return found->second;
    return icons.try_emplace(key, name, colour).first->second;
}

const CIconManager::CIconDetails* CIconManager::GetIcon(const std::string& name, const GraphicsColor& colour)
{
    for (const std::string& tried : {name, to_file_name(name)}) {
        const CIconDetails& icon = GetIconFixedName(tried, colour);
        if (!icon.image.isNull()) return &icon;
    }
    return nullptr;
}

void CIconManager::GetIconOffset(const std::string& name, double& x, double& y) const
{
    const std::string file_name = to_file_name(name);
    const auto found = icons.lower_bound(Key(file_name, 0, 0.0));
    const bool known = found != icons.end() && found->second.name == file_name;
    x = known ? found->second.hot_x : kUnknownHotSpot;
    y = known ? found->second.hot_y : kUnknownHotSpot;
}

std::string CIconManager::to_file_name(const std::string& name)
{
    if (name == "MOB") return name;
    std::string file_name;
    for (const char c : name) {
        if (IsLower(c) || IsUpper(c)) {
            file_name += file_name.empty() ? ToUpper(c) : ToLower(c);
        } else if (c >= '0' && c <= '9') {
            file_name += c;
        } else if (c == ' ' || c == '_') {
            file_name += '_';
        }
    }
    return file_name;
}

CIconManager& TheIcons()
{
    static CIconManager icons;
    return icons;
}

std::vector<std::string> CIconManager::IconNames()
{
    std::vector<std::string> names;
    for (const IconData& data : kIconData) names.emplace_back(data.name);
    std::sort(names.begin(), names.end());
    return names;
}
