#pragma once

#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/sheet_geometry.h"

#include <cstdint>
#include <vector>

#include <QRectF>

/// Where a chart shows land, to an eighth of its resolution, for choosing places of names.
class CLandMask {
public:
    CLandMask(const CChartSheet& sheet, const CSheetGeometry& geometry);
    /// The part of a rectangle (chart pixels) that is land or ice, 0 to 1.
    double LandShare(const QRectF& rect) const;

private:
    static constexpr int kReduction = 8;
    int columns;
    int rows;
    std::vector<std::uint32_t> sums; ///< land cells above and to the left, (columns + 1) x (rows + 1)
};
