#pragma once

#include "chart/bounds_index.h"
#include "chart/chart_outline.h"
#include "core/listener.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class CChartScan;

/// The list of all charts found on disk, ordered by scale. There is no catalogue file: folders are scanned when they
/// change. Main thread only; tells Listener<CChartList> when the list has changed.
///
/// A scan runs in slices: whoever drives the event loop calls ScanSlice() between events while IsScanning(). During a
/// repeated scan the list before answers; a question to a list that has never been complete finishes its scan first, so
/// answers never depend on the slices. FindFile alone does not wait. Pointers to records hold until the listeners are
/// told.
class CChartList {
public:
    using outline_set = std::multiset<CChartOutline>;
    using iterator = outline_set::const_iterator;

    /// As init().
    CChartList();
    CChartList(const CChartList&) = delete;
    CChartList& operator=(const CChartList&) = delete;
    ~CChartList();

    /// Works out the folders, makes the download folder and begins a scan.
    void init();
    /// Scans all folders, to the end.
    void Refresh();
    /// Refresh() when a folder has changed since it was scanned.
    void RefreshIfNeeded();
    /// Begins a scan, to be driven by ScanSlice(); one under way starts anew.
    void StartScan();
    bool IsScanning() const { return scan != nullptr; }
    /// Works for about `budget`; false when no scan is left.
    bool ScanSlice(std::chrono::microseconds budget);

    /// Adds the charts of a folder and its sub-folders to the list, each folder once a scan.
    void SearchFolder(const std::string& path);
    /// Remembers the folder for every scan and searches it now; ignored when it is not a folder.
    void AddSearchFolder(const std::string& path);
    /// The record of a file, looking from `scale_hint` on first; a chart that is not in the list is read and added.
    /// Null when it is none.
    const CChartOutline* FindFile(const std::string& path, double scale_hint);
    /// The chart nearest in scale to `scale` (nautical miles per pixel) at a position, the more detailed on a tie; null
    /// when there is no chart. Types that are not shown count only where nothing else lies, or with `any_type`.
    const CChartOutline* FindBestChart(double lat, double lon, double scale, bool any_type = false) const;
    /// Every chart that contains the position, in list order.
    void ChartsAt(double lat, double lon, std::list<const CChartOutline*>& charts) const;
    /// The next more detailed chart of a shown type at a position, below 0.9 x `scale`. Null when there is none, and
    /// when all records are more detailed than `scale`.
    const CChartOutline* ScaleIn(double lat, double lon, double scale) const;
    /// The next coarser chart of a shown type at a position, above 1.01 x `scale`.
    const CChartOutline* ScaleOut(double lat, double lon, double scale) const;
    /// Moves `at` to the first record from it on that contains the position; false at the end.
    bool NextHit(double lat, double lon, iterator& at) const;

    /// Removes the file from the disk, a chunked chart's chunks too. The record stays until the next scan.
    void DeleteChart(const CChartOutline* chart);
    /// The same, and the record with it.
    void RemoveAndDeleteChart(const CChartOutline* chart);
    /// Takes the record of a file out of the list, such as one that failed to open; the file stays.
    void RemoveChart(const std::string& path);
    /// Deletes from the disk, of charts with one file name, those that are older than the first (or the first);
    /// returns how many.
    int DeleteDuplicates();
    /// Adds the type of a chart file to those shown.
    void AddRltToSelectedTypes(const std::string& path);

    /// The folder for downloads.
    static const std::string& getCHBfolder();
    static void setCHBfolder(const std::string& folder);
    /// What stands behind the folder of the catalogue that the path is in; the whole path when in none.
    std::string pathUnderMapsFolder(const std::string& path) const;
    /// What stands behind "/CHB/" in a path; empty when that is not in it.
    static std::string get_path_after_CHB(const std::string& path);

    const outline_set& Outlines() const;
    std::size_t size() const { return Outlines().size(); }

    const CChartOutline* current = nullptr; ///< record of the open chart
    /// What must let go of chart files before some are deleted, and what takes them up again.
    std::function<void()> close_maps;
    std::function<void()> reopen_maps;

private:
    struct Folder {
        std::string path;
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t last_write_ns = 0; ///< the latest of the folder, its sub-folders and their charts
    };

    void add_to_folders(const std::string& path);
    void FinishScan();
    void EnsureScanned() const;
    const CBoundsIndex& Index() const;
    std::size_t FirstAtLeast(double scale) const;
    const CChartOutline* BestOfTypes(double lat, double lon, double scale, bool any_type) const;
    bool Erase(const CChartOutline* chart);
    void Changed();

    outline_set outlines;
    std::map<std::string, Folder> folders;
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen; ///< device and inode of the folders in the list
    std::unique_ptr<CChartScan> scan;
    bool complete = false; ///< a scan has ended
    mutable CBoundsIndex index;
    mutable bool index_stale = true;
    static std::string m_CHB_folder;
};

/// The catalogue of the program; made by load_app_data.
extern CChartList* p_chart_list;
