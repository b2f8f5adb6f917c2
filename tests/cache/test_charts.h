#pragma once

#include "chart/chart_writer.h"

#include <cstdint>
#include <string>
#include <vector>

/// A georeferencing in which a pixel is `degrees_per_px` wide and high, (lat, lon) being the top left corner.
inline Geo_ref_coeff_t AffineGeo(double lat, double lon, double degrees_per_px)
{
    Geo_ref_coeff_t geo = {};
    geo.forward[0][0] = -lon / degrees_per_px;
    geo.forward[0][2] = 1.0 / degrees_per_px;
    geo.forward[1][0] = lat / degrees_per_px;
    geo.forward[1][1] = -1.0 / degrees_per_px;
    geo.inverse[0][0] = lat;
    geo.inverse[0][2] = -degrees_per_px;
    geo.inverse[1][0] = lon;
    geo.inverse[1][1] = degrees_per_px;
    return geo;
}

/// A writer of a chart of `tiles` x `tiles` whose middle is (lat, lon) and whose scale is `scale` nautical miles a
/// pixel.
inline CChartWriter ChartAt(double lat, double lon, double scale, int tiles = 1)
{
    const double degrees_per_px = scale / 60.0;
    const double half = tiles * kTileSide / 2.0 * degrees_per_px;
    CChartWriter writer;
    writer.Size(tiles, tiles).Georeferencing(AffineGeo(lat + half, lon - half, degrees_per_px)).Type("Topo");
    return writer;
}

/// Writes a chart of one colour.
inline std::string WriteChart(const std::string& path, const CChartWriter& writer)
{
    return writer.Write(path, writer.Plain(1)) ? path : std::string();
}

/// Writes a chart of `tiles` x `tiles` in which hardly two tiles are alike.
inline std::string WritePatternChart(const std::string& path, int tiles)
{
    const int side = tiles * kTileSide;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(side) * side);
    std::uint32_t state = 1;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            state = state * 1664525U + 1013904223U;
            const int noise = (state >> 28) == 0 ? 1 : 0;
            pixels[static_cast<std::size_t>(y) * side + x] =
                static_cast<unsigned char>((x / 48 * 7 + y / 40 * 11 + (x * y) / 4096 + noise) % 60 + 2);
        }
    }
    std::vector<std::uint32_t> colours(64);
    for (std::size_t i = 0; i < colours.size(); ++i) colours[i] = static_cast<std::uint32_t>(i * 0x03070D % 0xFFFFFF);
    CChartWriter writer = ChartAt(50.0, 0.0, 0.001, tiles);
    writer.Palette(colours);
    return writer.Write(path, writer.Image(pixels.data(), static_cast<std::size_t>(side))) ? path : std::string();
}
