#include "chart/chart_scan.h"

#include "chart/chart_bytes.h"
#include "chart/folder_entries.h"
#include "core/folders.h"

#include <algorithm>

#include <unistd.h>

CChartScan::CChartScan(std::vector<std::string> root_paths, std::set<folder_id> seen_before)
    : seen(std::move(seen_before))
{
    for (std::string& path : root_paths) roots.push_back({std::move(path)});
}

CChartScan::~CChartScan()
{
    for (const Level& level : levels)
        if (level.handle >= 0) close(level.handle);
}

bool CChartScan::Step()
{
    if (levels.empty()) {
        if (next_root == roots.size()) return false;
        Enter(roots[next_root++].path);
        return true;
    }
    Level& level = levels.back();
    if (level.next_chart < level.charts.size()) {
        ReadChart(level);
        return true;
    }
    if (level.handle >= 0) close(std::exchange(level.handle, -1));
    if (level.next_folder < level.folders.size()) {
        const std::string path = add_folder(level.path, level.folders[level.next_folder++].c_str());
        Enter(path);
    } else {
        levels.pop_back();
    }
    return true;
}

void CChartScan::Enter(const std::string& path)
{
    Root& root = roots[next_root - 1];
    const auto id = IdOfFolder(path);
    if (!id) return;
    if (!seen.insert(*id).second) {
        root.met_again = true;
        return;
    }
    CFolderEntries entries = ReadFolder(path);
    if (entries.handle < 0) return;
    root.last_write_ns = std::max(root.last_write_ns, WriteTime(entries.status));
    levels.push_back({path, entries.handle, std::move(entries.charts), std::move(entries.folders)});
}

void CChartScan::ReadChart(Level& level)
{
    const std::string& name = level.charts[level.next_chart++];
    CChartFile file(level.handle, name.c_str());
    if (!file.IsOpen()) return;
    Root& root = roots[next_root - 1];
    root.last_write_ns = std::max(root.last_write_ns, file.LastWrite());
    CChartOutline chart;
    if (chart.ReadFrom(file, add_folder(level.path, name.c_str())) && chart.scale > 0.0) found.insert(std::move(chart));
}

namespace {

void AddLastWrite(const std::string& folder, std::set<folder_id>& seen, std::int64_t& latest)
{
    const auto id = IdOfFolder(folder);
    if (!id || !seen.insert(*id).second) return;
    const CFolderEntries entries = ReadFolder(folder);
    if (entries.handle < 0) return;
    latest = std::max(latest, WriteTime(entries.status));
    for (const std::string& name : entries.charts) {
        struct stat status {};
        // Like the scan, this skips what cannot be opened: otherwise the two would never agree.
        if (faccessat(entries.handle, name.c_str(), R_OK, 0) == 0 &&
            fstatat(entries.handle, name.c_str(), &status, 0) == 0)
            latest = std::max(latest, WriteTime(status));
    }
    close(entries.handle);
    for (const std::string& name : entries.folders) AddLastWrite(add_folder(folder, name.c_str()), seen, latest);
}

} // namespace

std::int64_t LastWriteBelow(const std::string& folder)
{
    std::set<folder_id> seen;
    std::int64_t latest = INT64_MIN;
    AddLastWrite(folder, seen, latest);
    return latest;
}

std::optional<folder_id> IdOfFolder(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
    return folder_id(status.st_dev, status.st_ino);
}
