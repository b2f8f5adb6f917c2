#pragma once

#include "tools/basemap/chart_palette.h"
#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/graticule.h"
#include "tools/basemap/places.h"
#include "tools/basemap/sheet_geometry.h"
#include "tools/basemap/sheet_marks.h"
#include "tools/basemap/world_data.h"

#include <string>

#include <QImage>

/// Draws one chart, band by band from the top. Several may work at once, each in its own thread, with shared data.
class CSheetRenderer {
public:
    CSheetRenderer(const CChartSheet& sheet, const CWorldData& data, const std::vector<CPlace>& places,
                   const CChartPalette& palette);

    /// Fills one row of tiles: kTileSide rows of Width() palette indices.
    void TileRow(int tile_y, unsigned char* indices);

private:
    void PaintBand(double top);
    void PaintMap(QPainter& painter, double top, double bottom) const;
    void PaintLines(QPainter& painter, const CSheetLines& lines, double top, double bottom) const;
    void PaintGraticule(QPainter& painter, double top, double bottom) const;

    const CChartSheet& sheet;
    const CChartPalette& palette;
    CSheetGeometry geometry;
    CGraticule graticule;
    CSheetMarks marks;
    QImage band;            ///< the rows painted last
    int band_tile_row = -1; ///< the tile row at the top of `band`
};

/// Draws and writes a chart as FOLDER/NAME.rlt; false, with `error` set, when it cannot.
bool WriteSheet(const CChartSheet& sheet, const CWorldData& data, const std::vector<CPlace>& places,
                const CChartPalette& palette, const std::string& folder, std::string& error);
