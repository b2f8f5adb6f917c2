#include "chart/chart_list.h"

#include "chart/chart_scan.h"
#include "chart/map_types.h"
#include "chart/path_under.h"
#include "core/files.h"
#include "core/folders.h"
#include "core/lines.h"

#include <algorithm>

CChartList* p_chart_list = nullptr;

namespace {

/// The view's rule needs a scale; this one is more detailed than any chart.
constexpr double kMostDetailed = 1e-8;
constexpr double kScaleInBound = 0.9;
constexpr double kScaleOutBound = 1.01;

} // namespace

CChartList::CChartList()
{
    init();
}

CChartList::~CChartList() = default;

void CChartList::init()
{
    folders.clear();
    complete = false;
    m_CHB_folder.clear();
    createPath(getCHBfolder());
    add_to_folders(getAppDirectory());
    add_to_folders(CSelectMapTypes::CHB_external_folder);
    if (FILE* file = openRegularFile(getAppDirectory() + "/map_folders.txt", "r")) {
        std::string line;
        while (read_line_noncomment(file, line)) {
            TrimSpaces(line);
            add_to_folders(line);
        }
        std::fclose(file);
    }
    StartScan();
}

void CChartList::add_to_folders(const std::string& path)
{
    if (const auto id = IdOfFolder(path)) folders[path] = {path, id->first, id->second, INT64_MIN};
}

void CChartList::StartScan()
{
    std::vector<std::string> roots;
    for (const auto& [path, folder] : folders) roots.push_back(path);
    roots.push_back(getBundleDirectory());
    scan = std::make_unique<CChartScan>(std::move(roots));
}

bool CChartList::ScanSlice(std::chrono::microseconds budget)
{
    const auto end = std::chrono::steady_clock::now() + budget;
    while (scan && scan->Step())
        if (std::chrono::steady_clock::now() >= end) return true;
    if (scan) FinishScan();
    return false;
}

void CChartList::Refresh()
{
    StartScan();
    FinishScan();
}

void CChartList::FinishScan()
{
    while (scan->Step()) {
    }
    const std::unique_ptr<CChartScan> ended = std::move(scan);
    for (const CChartScan::Root& root : ended->roots) {
        const auto folder = folders.find(root.path);
        if (folder == folders.end()) continue;
        folder->second.last_write_ns = root.met_again ? LastWriteBelow(root.path) : root.last_write_ns;
    }
    const std::string current_path = current != nullptr ? current->path : std::string();
    current = nullptr;
    outlines = std::move(ended->found);
    seen = std::move(ended->seen);
    complete = true;
    index_stale = true;
    if (!current_path.empty() && isRegularFile(current_path)) current = FindFile(current_path, 0.0);
    Changed();
}

void CChartList::EnsureScanned() const
{
    // The list's content does not depend on who finishes the scan: to the caller nothing changes.
    if (!complete && scan) const_cast<CChartList*>(this)->FinishScan();
}

void CChartList::RefreshIfNeeded()
{
    EnsureScanned();
    const bool changed = std::ranges::any_of(
        folders, [](const auto& entry) { return LastWriteBelow(entry.second.path) != entry.second.last_write_ns; });
    if (changed) Refresh();
}

void CChartList::SearchFolder(const std::string& path)
{
    EnsureScanned();
    CChartScan search({path}, std::move(seen));
    while (search.Step()) {
    }
    seen = std::move(search.seen);
    const auto folder = folders.find(path);
    if (folder != folders.end()) folder->second.last_write_ns = LastWriteBelow(path);
    outlines.merge(search.found);
    index_stale = true;
    Changed();
}

void CChartList::AddSearchFolder(const std::string& path)
{
    if (!isDirectory(path)) return;
    EnsureScanned();
    add_to_folders(path);
    SearchFolder(path);
}

const CChartList::outline_set& CChartList::Outlines() const
{
    EnsureScanned();
    return outlines;
}

const CBoundsIndex& CChartList::Index() const
{
    EnsureScanned();
    if (index_stale) {
        index.Reset(outlines.size());
        for (const CChartOutline& chart : outlines) index.Add(&chart, chart.bounds);
        index_stale = false;
    }
    return index;
}

std::size_t CChartList::FirstAtLeast(double scale) const
{
    const CBoundsIndex& charts = Index();
    std::size_t low = 0;
    std::size_t high = charts.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (charts[middle]->scale < scale) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

const CChartOutline* CChartList::FindFile(const std::string& path, double scale_hint)
{
    CChartOutline sought;
    sought.scale = scale_hint;
    const iterator hint = outlines.lower_bound(sought);
    const auto is_it = [&path](const CChartOutline& chart) { return chart.path == path; };
    iterator found = std::find_if(hint, outlines.cend(), is_it);
    if (found != outlines.end()) return &*found;
    found = std::find_if(outlines.cbegin(), hint, is_it); // a wrong hint does not make a second record
    if (found != hint) return &*found;
    CChartOutline chart;
    if (!chart.Read(path)) return nullptr;
    index_stale = true;
    return &*outlines.insert(std::move(chart));
}

const CChartOutline* CChartList::FindBestChart(double lat, double lon, double scale, bool any_type) const
{
    if (scale == 0.0) scale = kMostDetailed;
    const CChartOutline* best = BestOfTypes(lat, lon, scale, any_type);
    return best != nullptr || any_type ? best : BestOfTypes(lat, lon, scale, true);
}

const CChartOutline* CChartList::BestOfTypes(double lat, double lon, double scale, bool any_type) const
{
    const CChartOutline* best = nullptr;
    double best_ratio = 0.0;
    Index().Ascending(lat, lon, 0, [&](const CChartOutline* chart) {
        if (chart->scale == 0.0) return true;
        double ratio = scale / chart->scale;
        if (ratio > 1.0) ratio = 1.0 / ratio;
        // Beyond the wanted scale the ratio only falls: nothing better is to come.
        if (ratio <= best_ratio) return chart->scale <= scale;
        if ((any_type || chart->typeIsSelected()) && chart->doesContain(lat, lon)) {
            best = chart;
            best_ratio = ratio;
        }
        return true;
    });
    return best;
}

void CChartList::ChartsAt(double lat, double lon, std::list<const CChartOutline*>& charts) const
{
    Index().Ascending(lat, lon, 0, [&](const CChartOutline* chart) {
        if (chart->doesContain(lat, lon)) charts.push_back(chart);
        return true;
    });
}

const CChartOutline* CChartList::ScaleIn(double lat, double lon, double scale) const
{
    const CChartOutline* hit = nullptr;
    const std::size_t start = FirstAtLeast(scale);
    Index().Descending(lat, lon, start, [&](const CChartOutline* chart) {
        if (chart->scale < kScaleInBound * scale && chart->typeIsSelected() && chart->doesContain(lat, lon))
            hit = chart;
        return hit == nullptr;
    });
    return hit;
}

const CChartOutline* CChartList::ScaleOut(double lat, double lon, double scale) const
{
    const CChartOutline* hit = nullptr;
    const double above = scale * kScaleOutBound;
    Index().Ascending(lat, lon, FirstAtLeast(above), [&](const CChartOutline* chart) {
        if (chart->scale > above && chart->typeIsSelected() && chart->doesContain(lat, lon)) hit = chart;
        return hit == nullptr;
    });
    return hit;
}

bool CChartList::NextHit(double lat, double lon, iterator& at) const
{
    at = std::find_if(at, outlines.cend(), [&](const CChartOutline& chart) { return chart.doesContain(lat, lon); });
    return at != outlines.cend();
}

std::string CChartList::pathUnderMapsFolder(const std::string& path) const
{
    std::string rest;
    for (const auto& [folder, entry] : folders)
        if (IsPathUnder(path, folder, rest)) return rest;
    return path;
}

void CChartList::Changed()
{
    DispatchToListeners(*this);
}
