#include "chart/colour_tile.h"
#include "chart/mix_tables.h"
#include "chart/rastelle.h"

#include <algorithm>

namespace {

constexpr int kTileShift = 6; // kTileSide is 1 << 6; a shift rounds towards minus infinity
constexpr int kMostReduced = 6;
constexpr int kMostMagnified = 16;

/// The part of a range of chart pixels that lies in tile `tile`.
struct TilePart {
    TilePart(int tile, int begin, int length)
        : first(std::max(begin, tile * kTileSide)), last(std::min(begin + length - 1, tile * kTileSide + kTileSide - 1))
    {}
    int first;
    int last;
};

} // namespace

int CRastelle::ReadRectRGB(int x, int y, int w, int h, int stride, int level, unsigned int* dest,
                           ThreadDataForRead* thread)
{
    if (header == nullptr || w <= 0 || h <= 0 || level > kMostReduced || level < -kMostMagnified) return 0;
    if (level < 0) return ReadMagnified(x, y, w, h, stride, -level, dest, thread);
    return ReadReduced(x, y, w, h, stride, level, dest, thread);
}

int CRastelle::ReadReduced(int x, int y, int w, int h, int stride, int level, unsigned int* dest,
                           ThreadDataForRead* thread)
{
    const int across = static_cast<int>((std::int64_t{w} << level) / kTileSide);
    const int down = static_cast<int>((std::int64_t{h} << level) / kTileSide);
    const int side = kTileSide >> level;
    int failed = 0;
    for (int row = 0; row < down; ++row) {
        for (int column = 0; column < across; column += ThreadDataForRead::kTilesInStep) {
            const int count = std::min(ThreadDataForRead::kTilesInStep, across - column);
            failed |= ReadBlockRow((x >> kTileShift) + column, (y >> kTileShift) + row, count, std::max(level - 1, 0),
                                   thread);
            for (int i = 0; i < count; ++i) {
                const auto slot = static_cast<std::size_t>(i);
                const unsigned char* tile = thread->tiles[slot].data();
                std::uint32_t* to = dest + std::ptrdiff_t{row} * side * stride + std::ptrdiff_t{column + i} * side;
                if (level == 0) {
                    ColourTile(tile, thread->notes[slot], palette, to, stride);
                } else {
                    mix->ReduceTile(tile, thread->notes[slot], level, to, stride);
                }
            }
        }
    }
    return failed;
}

int CRastelle::ReadMagnified(int x, int y, int w, int h, int stride, int power, unsigned int* dest,
                             ThreadDataForRead* thread)
{
    const int factor = 1 << power;
    const int source_w = w >> power;
    const int source_h = h >> power;
    unsigned char* tile = thread->tiles[0].data();
    int failed = 0;
    for (int tile_y = y >> kTileShift; tile_y <= (y + source_h - 1) >> kTileShift; ++tile_y) {
        for (int tile_x = x >> kTileShift; tile_x <= (x + source_w - 1) >> kTileShift; ++tile_x) {
            failed |= ReadBlock(tile_x, tile_y, 0, tile, thread);
            const TilePart rows(tile_y, y, source_h);
            const TilePart columns(tile_x, x, source_w);
            for (int row = rows.first; row <= rows.last; ++row) {
                const unsigned char* from = tile + bitrev[row & (kTileSide - 1)] * kTileSide;
                std::uint32_t* first_line = dest + std::ptrdiff_t{row - y} * factor * stride;
                std::uint32_t* to = first_line + std::ptrdiff_t{columns.first - x} * factor;
                std::uint32_t* const begin = to;
                for (int column = columns.first; column <= columns.last; ++column) {
                    to = std::fill_n(to, factor, palette[from[column & (kTileSide - 1)] & 0x7F]);
                }
                for (int line = 1; line < factor; ++line) std::copy(begin, to, begin + std::ptrdiff_t{line} * stride);
            }
        }
    }
    return failed;
}
