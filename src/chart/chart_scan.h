#pragma once

#include "chart/chart_outline.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Device and inode of a folder.
using folder_id = std::pair<std::uint64_t, std::uint64_t>;

/// One walk through chart folders, a chart or a folder a step. Each folder is read once, however many links lead to it.
class CChartScan {
public:
    struct Root {
        std::string path;
        std::int64_t last_write_ns = INT64_MIN; ///< as LastWriteBelow() would say
        bool met_again = false; ///< a folder below was walked before: the time above covers the rest only
    };

    /// `roots` are walked in this order; folders in `seen` are not walked again.
    explicit CChartScan(std::vector<std::string> roots, std::set<folder_id> seen = {});
    CChartScan(const CChartScan&) = delete;
    CChartScan& operator=(const CChartScan&) = delete;
    ~CChartScan();

    /// Does the next piece of work; false when there is none.
    bool Step();

    std::multiset<CChartOutline> found; ///< charts with a scale
    std::set<folder_id> seen;
    std::vector<Root> roots;

private:
    /// A folder that is being walked. Its handle is open while charts are left.
    struct Level {
        std::string path;
        int handle = -1;
        std::vector<std::string> charts;
        std::vector<std::string> folders;
        std::size_t next_chart = 0;
        std::size_t next_folder = 0;
    };

    void Enter(const std::string& path);
    void ReadChart(Level& level);

    std::size_t next_root = 0;
    std::vector<Level> levels; ///< innermost last
};

/// The latest write time of a folder, its sub-folders (links followed) and the charts in them, nanoseconds since 1970;
/// INT64_MIN when there is no folder.
std::int64_t LastWriteBelow(const std::string& folder);
/// Device and inode of a folder; nothing for anything else.
std::optional<folder_id> IdOfFolder(const std::string& path);
