#pragma once

#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/clip.h"
#include "tools/basemap/world_data.h"

#include <vector>

#include <QPainterPath>

/// Rings of one tint; outer rings and holes turn against each other, so the non-zero rule fills them.
struct CSheetAreas {
    std::vector<CPixelLine> rings;

    /// The rings between two rows of pixels, moved up by `top`.
    QPainterPath Band(double top, double bottom) const;
};

/// Lines of one pen.
struct CSheetLines {
    std::vector<CPixelLine> lines;
    std::vector<FRect> bounds; ///< of each line

    void FindBounds();
};

/// The world's shapes on the pixels of one chart: projected, thinned out and clipped to the chart. Only shapes that
/// matter at the chart's zoom are in it.
struct CSheetGeometry {
    CSheetGeometry(const CChartSheet& sheet, const CWorldData& data);

    CSheetAreas land;
    CSheetAreas ice_land; ///< Antarctica, nearly all under ice
    CSheetAreas ice_shelf;
    CSheetAreas lakes;
    CSheetLines shore;
    CSheetLines lake_shore;
    CSheetLines rivers;
    CSheetLines borders;
};
