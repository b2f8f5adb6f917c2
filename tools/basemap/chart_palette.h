#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QColor>

/// The colours that the built-in charts are drawn in.
namespace chart_colours {
inline constexpr QRgb kSea = 0xFFD2E6F3;
inline constexpr QRgb kOutside = 0xFFE3E8EB; ///< what the reader shows beside a chart
inline constexpr QRgb kLand = 0xFFF5EACB;
inline constexpr QRgb kIceLand = 0xFFFBFCFC;
inline constexpr QRgb kIceShelf = 0xFFE9F1F5;
inline constexpr QRgb kLake = 0xFFC2DCEE;
inline constexpr QRgb kShore = 0xFF7D6A43;
inline constexpr QRgb kLakeShore = 0xFF7FA8C6;
inline constexpr QRgb kRiver = 0xFF86B2D3;
inline constexpr QRgb kBorder = 0xFFB58BB0;
inline constexpr QRgb kGraticule = 0xFFA9C3D6;
inline constexpr QRgb kGraticuleText = 0xFF6C8CA5;
inline constexpr QRgb kHalo = 0xFFFFFFFF;
inline constexpr QRgb kText = 0xFF26282B;
inline constexpr QRgb kSeaText = 0xFF2C6796;
inline constexpr QRgb kCountryText = 0xFF9A7F4C;
inline constexpr QRgb kCapeText = 0xFF5D4E2F;
inline constexpr QRgb kRose = 0xFFB03A8C;
inline constexpr QRgb kFrame = 0xFF303236;
} // namespace chart_colours

/// The one palette of all built-in charts: the drawing colours and the steps between those that meet at an edge.
/// Immutable after construction; any thread may use it.
///
/// Index 0 is the sea, index 1 what a view shows beside the chart.
class CChartPalette {
public:
    CChartPalette();

    /// 0xRRGGBB, at most 128.
    const std::vector<std::uint32_t>& Colours() const { return colours; }
    /// The index of the nearest colour. The drawing colours themselves come out exactly.
    unsigned char Index(QRgb colour) const { return table[Slot(colour)]; }
    /// The indices of a row of pixels.
    void Indices(std::span<const QRgb> pixels, unsigned char* out) const;

private:
    static std::size_t Slot(QRgb colour)
    {
        return ((colour >> 6) & 0x3F000U) | ((colour >> 4) & 0xFC0U) | ((colour >> 2) & 0x3FU);
    }
    void AddRamp(QRgb from, QRgb to, int steps);

    std::vector<std::uint32_t> colours;
    std::vector<unsigned char> table; ///< by six bits of each part
};
