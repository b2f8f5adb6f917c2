#pragma once

#include "chart/rastelle_header.h"

#include <cstdint>
#include <span>
#include <vector>

#include <QImage>

/// A picture of palette indices, rows of `width` bytes from the top.
struct CIndexImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> palette; ///< 0xRRGGBB, at most kPaletteSize
    std::vector<unsigned char> indices;
};

/// Brings a picture to at most `colours` (1 to kPaletteSize) colours. One that has an index palette of that size, or
/// uses no more colours, keeps all of them exactly, an index picture its indices too; any other gets a median-cut
/// palette and the nearest colour for each pixel, without dithering. Where the order of the palette is free, index 1,
/// which is what shows beside a chart, is the lightest colour. Transparent parts count as laid over white.
CIndexImage QuantiseImage(const QImage& image, int colours = kPaletteSize);

/// A palette of at most `colours` for the given colours (0xRRGGBB), each counted once for each time it stands there, by
/// median cut: the box with the greatest spread times population is halved until there are enough.
std::vector<std::uint32_t> MedianCutPalette(std::span<const std::uint32_t> pixels, int colours);
