#include "chart/chart_writer.h"
#include "chart/huffman_encoding.h"
#include "chart/plain_decoder.h"
#include "chart/rastelle.h"

#include <algorithm>
#include <cstring>

namespace {

/// A tile in stored row order with its colours, in order of first use.
struct StoredTile {
    explicit StoredTile(const unsigned char* image)
    {
        std::fill(std::begin(number), std::end(number), -1);
        for (int row = 0; row < kTileSide; ++row) {
            for (int column = 0; column < kTileSide; ++column) {
                pixels[row * kTileSide + column] = image[CRastelle::bitrev[row] * kTileSide + column] & 0x7F;
            }
        }
        for (const unsigned char pixel : pixels) {
            if (number[pixel] < 0) {
                number[pixel] = static_cast<int>(colours.size());
                colours.push_back(pixel);
            }
        }
    }

    unsigned char pixels[kTilePixels];
    std::vector<std::uint8_t> colours;
    int number[kPaletteSize]; ///< place of a colour in the list, -1 for one that is not used
};

std::vector<std::uint8_t> OneColour(const StoredTile& tile)
{
    return {0xFF, tile.pixels[0]};
}

std::vector<std::uint8_t> Huffman(const StoredTile& tile)
{
    std::vector<std::uint8_t> block(1 + CHuffmanEncoding::MostBytes(kTilePixels));
    CHuffmanEncoding encoding;
    block.resize(static_cast<std::size_t>(encoding.encode(tile.pixels, kTilePixels, block.data() + 1) - block.data()));
    return block;
}

/// Empty when the tile has too many colours for the coding.
std::vector<std::uint8_t> RunLength(const StoredTile& tile)
{
    constexpr std::size_t kMostColours = 127;
    if (tile.colours.size() > kMostColours) return {};
    const int width = CodeWidth(static_cast<int>(tile.colours.size()));
    const int longest = 255 >> width;
    std::vector<std::uint8_t> block{static_cast<std::uint8_t>(tile.colours.size())};
    block.insert(block.end(), tile.colours.begin(), tile.colours.end());
    for (int begin = 0, end = 0; begin < kTilePixels; begin = end) {
        while (end < kTilePixels && end - begin < longest && tile.pixels[end] == tile.pixels[begin]) ++end;
        block.push_back(static_cast<std::uint8_t>((end - begin) << width | tile.number[tile.pixels[begin]]));
    }
    return block;
}

/// Empty when the tile has too many colours for the coding, or one only.
std::vector<std::uint8_t> BitPacked(const StoredTile& tile)
{
    constexpr std::size_t kMostColours = 127;
    if (tile.colours.size() > kMostColours || tile.colours.size() < 2) return {};
    const int width = CodeWidth(static_cast<int>(tile.colours.size()));
    const int per_word = 32 / width;
    std::vector<std::uint8_t> block{static_cast<std::uint8_t>(256 - tile.colours.size())};
    block.insert(block.end(), tile.colours.begin(), tile.colours.end());
    for (int begin = 0; begin < kTilePixels; begin += per_word) {
        std::uint32_t word = 0;
        for (int i = 0; i < std::min(per_word, kTilePixels - begin); ++i) {
            word |= static_cast<std::uint32_t>(tile.number[tile.pixels[begin + i]]) << i * width;
        }
        for (int shift = 0; shift < 32; shift += 8) block.push_back(static_cast<std::uint8_t>(word >> shift));
    }
    return block;
}

} // namespace

std::vector<std::uint8_t> EncodeTile(const unsigned char* indices, TileCoding coding)
{
    const StoredTile tile(indices);
    std::vector<std::uint8_t> block;
    switch (coding) {
    case TileCoding::one_colour:
        return OneColour(tile);
    case TileCoding::run_length:
        block = RunLength(tile);
        break;
    case TileCoding::bit_packed:
        block = tile.colours.size() == 1 ? OneColour(tile) : BitPacked(tile);
        break;
    case TileCoding::huffman:
        return Huffman(tile);
    case TileCoding::smallest:
        if (tile.colours.size() == 1) return OneColour(tile);
        block = Huffman(tile);
        for (const auto& other : {RunLength(tile), BitPacked(tile)}) {
            if (!other.empty() && other.size() < block.size()) block = other;
        }
        return block;
    }
    // All 128 colours in one tile leave Huffman as the only coding.
    return block.empty() ? Huffman(tile) : block;
}
