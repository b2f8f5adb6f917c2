#include "chart/chart_outline.h"

#include "chart/chart_head_reader.h"
#include "chart/chart_list.h"
#include "chart/folder_number.h"
#include "chart/map_types.h"
#include "chart/path_under.h"
#include "chart/rastelle.h"
#include "core/files.h"
#include "core/folders.h"

#include <algorithm>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr double kWholeTurns[] = {0.0, 360.0, -360.0};

CPolygon Turned(const CPolygon& area, double turn)
{
    CPolygon turned = area;
    for (DblPoint& vertex : turned.vertices) vertex.x += turn;
    return turned;
}

CBounds Turned(CBounds area, double turn)
{
    area.lon_min += turn;
    area.lon_max += turn;
    return area;
}

} // namespace

bool CChartOutline::Read(const std::string& chart_path)
{
    return ReadAt(AT_FDCWD, chart_path.c_str(), chart_path);
}

bool CChartOutline::ReadAt(int folder, const char* name, const std::string& chart_path)
{
    CChartFile file(folder, name);
    return ReadFrom(file, chart_path);
}

bool CChartOutline::ReadFrom(IChartBytes& bytes, std::string chart_path)
{
    *this = CChartOutline();
    path = std::move(chart_path);
    if (!CChartHeadReader(bytes).ReadRecord(*this)) return false;
    if (chunked) fully_downloaded = CRastelle::appearsFullyDownloaded(path);
    if (title.empty()) title = path;
    return true;
}

bool CChartOutline::ReadPolygon() const
{
    CChartFile file(AT_FDCWD, path.c_str());
    return ReadPolygonFrom(file);
}

bool CChartOutline::ReadPolygonFrom(IChartBytes& bytes) const
{
    return CChartHeadReader(bytes).ReadOutline(polygon);
}

bool CChartOutline::doesContain(double lat, double lon) const
{
    return std::ranges::any_of(kWholeTurns, [&](double turn) {
        return bounds.contains(lat, lon + turn) && HasPolygon() && polygon.contains(lon + turn, lat);
    });
}

bool CChartOutline::mightOverlap(const CBounds& area) const
{
    return std::ranges::any_of(kWholeTurns, [&](double turn) { return bounds.overlaps(Turned(area, turn)); });
}

bool CChartOutline::doesOverlap(const CPolygon& area) const
{
    const CBounds area_bounds = area.bounds();
    return std::ranges::any_of(kWholeTurns, [&](double turn) {
        return bounds.overlaps(Turned(area_bounds, turn)) && HasPolygon() && polygon.overlaps(Turned(area, turn));
    });
}

bool CChartOutline::doesOverlap(const CBounds& area) const
{
    return std::ranges::any_of(kWholeTurns, [&](double turn) {
        const CBounds turned = Turned(area, turn);
        return bounds.overlaps(turned) && HasPolygon() &&
               polygon.rectDoesOverlap({turned.lon_min, turned.lat_min, turned.lon_max, turned.lat_max});
    });
}

bool CChartOutline::typeIsSelected() const
{
    return CSelectMapTypes::show.contains(type);
}

bool CChartOutline::is_newer_than(const CChartOutline* other) const
{
    if (date != other->date) return date > other->date;
    const auto number = [](const CChartOutline& chart) {
        return get_folder_number(p_chart_list != nullptr ? p_chart_list->pathUnderMapsFolder(chart.path) : chart.path);
    };
    const int own_number = number(*this);
    const int other_number = number(*other);
    if (other_number > 0 && own_number >= 1 && own_number != other_number) return own_number > other_number;
    return fileIsOlder(other->path, path);
}

std::string CChartOutline::getPathForTree() const
{
    const std::pair<const char*, std::string> places[] = {
        {"Built-in|", getBundleDirectory()}, {"Documents|", getDocsDirectory()}, {"Internal|", getAppDirectory()}};
    std::string rest;
    std::string tree_path;
    for (const auto& [name, folder] : places) {
        if (!IsPathUnder(path, folder, rest)) continue;
        tree_path = name + rest;
        break;
    }
    if (tree_path.empty()) tree_path = p_chart_list != nullptr ? p_chart_list->pathUnderMapsFolder(path) : path;
    std::ranges::replace(tree_path, '/', '|');
    return tree_path;
}

std::string CChartOutline::getMiscDetails() const
{
    const int file = openRegularHandle(path);
    if (file < 0) return "Can't open file";
    CRastelleHeader header{};
    std::string details;
    if (pread(file, &header, CRastelleHeader::kScalarBytes, 0) != ssize_t{CRastelleHeader::kScalarBytes} ||
        !header.HasChartMagic()) {
        details = "Not a rlt file";
    } else {
        const std::pair<const char*, std::uint32_t> texts[] = {
            {"Scale", header.scale_text},    {"ID", header.identifier}, {"Ed", header.edition},
            {"Rev", header.revision},        {"(C)", header.copyright}, {"Depths", header.depth_units},
            {"Heights", header.height_units}};
        for (const auto& [label, pointer] : texts) append_header_string(file, pointer, label, details);
    }
    close(file);
    return details;
}

bool CChartOutline::appearsFullyDownloadedWithin(const CBounds& area) const
{
    if (!chunked) return true;
    bool opened = false;
    CRastelle* chart = CRastelle::Create(ZT_HWND(), path.c_str(), [&opened](CRastelle*, bool ok) { opened = ok; });
    if (chart == nullptr) return false;
    const bool there = opened && chart->appearsFullyDownloadedWithin(area);
    chart->Destroy();
    return there;
}

void append_header_string(int file, unsigned pointer, const char* label, std::string& out)
{
    std::string value;
    if (pointer != 0) CRastelle::GetString(file, pointer, value);
    if (value.empty()) return;
    if (!out.empty()) out += ". ";
    out += label;
    out += ": ";
    out += value;
}

bool fileIsOlder(const std::string& path, const std::string& than)
{
    const auto written = [](const std::string& file) {
        struct stat status {};
        if (stat(file.c_str(), &status) != 0) return std::pair<std::int64_t, std::int64_t>(INT64_MIN, 0);
        return std::pair<std::int64_t, std::int64_t>(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    };
    return written(path) < written(than);
}
