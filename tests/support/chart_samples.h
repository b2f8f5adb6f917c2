#pragma once

#include "chart/chart_writer.h"

#include <cstdint>
#include <vector>

/// Made-up charts of the three kinds that decoders meet.
enum class ChartKind {
    clean,       ///< C: 19 flat colours, drawn without smoothing
    antialiased, ///< A: the same drawing smoothed, 127 colours
    scanned,     ///< S: the smoothed drawing with the noise of a scanner, 127 colours
};

struct ChartSample {
    int tiles = 0;                      ///< along each side
    std::vector<unsigned char> indices; ///< square, rows in image order
    std::vector<std::uint32_t> palette; ///< 0xRRGGBB

    int side() const { return tiles * kTileSide; }
    /// A writer for the sample, north up over a degree square at the equator; the sample must outlive its use.
    inline CChartWriter Writer() const;
    inline CChartWriter::band_source Source() const;
    /// The 4096 pixels of a tile in image order.
    std::vector<unsigned char> Tile(int x, int y) const;

private:
    std::size_t stride() const { return static_cast<std::size_t>(side()); }
};

/// The same sample for the same arguments, whatever the machine.
ChartSample MakeChartSample(ChartKind kind, int tiles);
/// Letters as in the tables of measurements: "C", "A", "S".
const char* ChartKindName(ChartKind kind);

/// The affine georeferencing of a chart of the given size in pixels between two corner positions.
Geo_ref_coeff_t AffineGeoreferencing(double width, double height, double top_lat, double left_lon, double bottom_lat,
                                     double right_lon);

// Here and not in the source file: tests of the rooms below do not link the chart writer.
CChartWriter ChartSample::Writer() const
{
    CChartWriter writer;
    writer.Size(tiles, tiles).Palette(palette);
    writer.Georeferencing(AffineGeoreferencing(side(), side(), 0.5, -0.5, -0.5, 0.5));
    return writer;
}

CChartWriter::band_source ChartSample::Source() const
{
    return Writer().Image(indices.data(), stride());
}
