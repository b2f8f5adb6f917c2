#include "tools/basemap/places.h"

#include "core/files.h"
#include "core/numbers.h"

#include <string_view>

namespace {

std::vector<std::string_view> Columns(std::string_view line)
{
    std::vector<std::string_view> columns;
    std::size_t start = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t', start)) {
        columns.push_back(line.substr(start, tab - start));
        start = tab + 1;
    }
    columns.push_back(line.substr(start));
    return columns;
}

PlaceKind KindOf(std::string_view category)
{
    if (category == "Country") return PlaceKind::country;
    if (category == "Island" || category == "Islands") return PlaceKind::island;
    if (category == "Cape" || category == "Peninsula") return PlaceKind::cape;
    if (category == "Lake") return PlaceKind::lake;
    if (category == "City" || category == "Town" || category == "Village") return PlaceKind::town;
    return PlaceKind::sea;
}

} // namespace

bool ReadPlaces(const std::string& path, std::vector<CPlace>& out)
{
    std::string text;
    if (!read_whole_file(path, text)) return false;
    std::size_t start = text.find('\n') + 1; // behind the names of the columns
    while (start != 0 && start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const auto columns = Columns(std::string_view(text).substr(start, end - start));
        start = end + 1;
        if (columns.size() < 9) return false;
        CPlace place;
        place.name = columns[0];
        place.lat = ParseDouble(columns[2]).value_or(0.0);
        place.lon = ParseDouble(columns[3]).value_or(0.0);
        place.population = ParseInt(columns[4]).value_or(0);
        place.kind = KindOf(columns[6]);
        place.rank = ParseInt(columns[7]).value_or(9);
        place.size_nm = ParseDouble(columns[8]).value_or(0.0);
        out.push_back(std::move(place));
    }
    return !out.empty();
}
