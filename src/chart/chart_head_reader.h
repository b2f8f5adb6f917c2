#pragma once

#include "chart/chart_bytes.h"
#include "chart/chart_outline.h"
#include "chart/rastelle_header.h"

/// Reads the parts of a chart file that the catalogue wants, without mapping it. Every step answers false when the file
/// is not a whole chart of a known kind.
class CChartHeadReader {
public:
    /// More points than this in one outline are not believed.
    static constexpr std::int32_t kMostOutlinePoints = 1 << 20;

    explicit CChartHeadReader(IChartBytes& chart_bytes);

    /// Fills everything of `out` but its path and what the disk says about its chunks.
    bool ReadRecord(CChartOutline& out);
    /// Fills the polygon from the outline's points, which it has.
    bool ReadOutline(CPolygon& out);

private:
    bool ReadHead();
    bool ReadExtended();
    void PrefetchTexts();
    /// Position of the last tile pointer; 0 when no file could hold the table.
    std::uint64_t LastPointer() const;
    bool HasWholePointerTable();
    bool HasOutline() const { return head.outline_count >= 1; }
    template <class Take>
    bool ForEachOutlinePoint(Take take);
    void AddCorners(CChartOutline& out) const;
    std::uint32_t Date();

    IChartBytes& bytes;
    CWindowedBytes items;
    /// Only the first kScalarBytes are read: no palette, no matrix.
    CRastelleHeader head;
    CRastelleExtendedBlock extended = {};
    double shift[2] = {0.0, 0.0}; ///< latitude, longitude
};
