#include "chart/chart_list.h"

#include "chart/map_types.h"
#include "chart/rastelle3.h"
#include "core/file_names.h"
#include "core/files.h"
#include "core/folders.h"

#include <algorithm>
#include <map>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kDownloadFolder[] = "CHB";
constexpr char kDownloadMark[] = "/CHB/";

/// Removes a chart's file and its chunks; true when the chart is gone.
bool RemoveFromDisk(const std::string& path)
{
    if (path.empty() || unlink(path.c_str()) != 0) return false;
    const std::string chunks = CRastelle3::ChunkPath(path);
    if (isDirectory(chunks)) {
        deleteDirectorySingleLevel(chunks);
    } else if (!chunks.empty()) {
        unlink(chunks.c_str());
    }
    return true;
}

bool IsSameFile(const std::string& a, const std::string& b)
{
    struct stat first {};
    struct stat second {};
    return a == b || (stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
                      first.st_ino == second.st_ino);
}

} // namespace

std::string CChartList::m_CHB_folder;

const std::string& CChartList::getCHBfolder()
{
    if (m_CHB_folder.empty()) {
        const std::string& external = CSelectMapTypes::CHB_external_folder;
        m_CHB_folder = isDirectory(external) ? external : getAppDirectory(kDownloadFolder);
    }
    return m_CHB_folder;
}

void CChartList::setCHBfolder(const std::string& folder)
{
    CSelectMapTypes::CHB_external_folder = folder;
    CSelectMapTypes::SetModified();
    m_CHB_folder.clear();
}

std::string CChartList::get_path_after_CHB(const std::string& path)
{
    const std::size_t mark = path.find(kDownloadMark);
    return mark == std::string::npos ? std::string() : path.substr(mark + sizeof(kDownloadMark) - 1);
}

void CChartList::DeleteChart(const CChartOutline* chart)
{
    RemoveFromDisk(chart->path);
}

void CChartList::RemoveAndDeleteChart(const CChartOutline* chart)
{
    RemoveFromDisk(chart->path);
    if (Erase(chart)) Changed();
}

void CChartList::RemoveChart(const std::string& path)
{
    const auto found = std::ranges::find(outlines, path, &CChartOutline::path);
    if (found != outlines.end() && Erase(&*found)) Changed();
}

bool CChartList::Erase(const CChartOutline* chart)
{
    const auto [first, last] = outlines.equal_range(*chart);
    const auto found = std::find_if(first, last, [chart](const CChartOutline& other) { return &other == chart; });
    if (found == last) return false;
    if (current == chart) current = nullptr;
    outlines.erase(found);
    index_stale = true;
    return true;
}

int CChartList::DeleteDuplicates()
{
    std::map<std::string, std::vector<const CChartOutline*>> groups;
    for (const CChartOutline& chart : Outlines()) groups[filename(chart.path)].push_back(&chart);
    if (close_maps) close_maps();
    std::set<const CChartOutline*> deleted;
    for (const auto& [name, charts] : groups) {
        const CChartOutline* first = charts.front();
        for (const CChartOutline* other : charts) {
            if (other == first || IsSameFile(first->path, other->path)) continue;
            const CChartOutline* older = first->is_newer_than(other) ? other : first;
            if (!deleted.contains(older) && RemoveFromDisk(older->path)) deleted.insert(older);
        }
    }
    for (const CChartOutline* chart : deleted) Erase(chart);
    if (!deleted.empty()) Changed();
    if (reopen_maps) reopen_maps();
    return static_cast<int>(deleted.size());
}

void CChartList::AddRltToSelectedTypes(const std::string& path)
{
    CChartOutline chart;
    if (chart.Read(path) && CSelectMapTypes::show.insert(chart.type).second) CSelectMapTypes::SetModified();
}
