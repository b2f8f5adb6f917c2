#include "tools/zt_chart/chart_picture.h"

#include "chart/plain_decoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <numeric>

namespace {

constexpr int kSquare = 256; // output pixels; whole tiles of the chart at every level

std::int64_t FloorDivide(std::int64_t a, std::int64_t b)
{
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

/// Calls `square(left, top)` for each aligned square that touches the rectangle, and `copy(line, x, y, count, from)`
/// for each of its lines that lie in it, `from` being the place in the square.
template <class Square, class Copy>
bool ForEachSquare(const CPictureRect& rect, Square square, Copy copy)
{
    const auto first_square = [](int value) { return static_cast<int>(FloorDivide(value, kSquare)) * kSquare; };
    for (int top = first_square(rect.top); top < rect.top + rect.height; top += kSquare) {
        for (int left = first_square(rect.left); left < rect.left + rect.width; left += kSquare) {
            if (!square(left, top)) return false;
            const int from_x = std::max(left, rect.left);
            const int to_x = std::min(left + kSquare, rect.left + rect.width);
            const int from_y = std::max(top, rect.top);
            const int to_y = std::min(top + kSquare, rect.top + rect.height);
            for (int y = from_y; y < to_y; ++y) {
                copy(y - rect.top, from_x - rect.left, to_x - from_x, (y - top) * kSquare + from_x - left);
            }
        }
    }
    return true;
}

int ChartPixel(int output_pixel, int level)
{
    return level >= 0 ? output_pixel * (1 << level) : output_pixel / (1 << -level);
}

/// One tile as indices in image order: (64 >> level) squared for a reduction, else all 64 x 64.
void ReadTileIndices(CRastelle& chart, int tile_x, int tile_y, int level, ThreadDataForRead& thread, std::uint32_t* out,
                     int stride)
{
    static const std::array<std::uint32_t, kPaletteSize> kIdentity = [] {
        std::array<std::uint32_t, kPaletteSize> identity{};
        std::iota(identity.begin(), identity.end(), 0U);
        return identity;
    }();
    unsigned char* tile = thread.tiles[0].data();
    chart.ReadBlock(tile_x, tile_y, std::max(level - 1, 0), tile, &thread);
    if (level > 0)
        PlainReduceTile(tile, level, chart.header->interpolation_matrix, kIdentity.data(), out, stride);
    else
        PlainColourTile(tile, kIdentity.data(), out, stride);
}

/// A square of indices, as ReadRectRGB would colour it.
void ReadIndexSquare(CRastelle& chart, int x, int y, int level, ThreadDataForRead& thread, std::uint32_t* out)
{
    const int side = level >= 0 ? kTileSide >> level : kTileSide;
    const int reach = level >= 0 ? kSquare : kSquare >> -level;
    for (int row = 0; row < reach; row += side) {
        for (int column = 0; column < reach; column += side) {
            const int tile_x = static_cast<int>(FloorDivide(x, kTileSide)) + column / side;
            const int tile_y = static_cast<int>(FloorDivide(y, kTileSide)) + row / side;
            ReadTileIndices(chart, tile_x, tile_y, level, thread, out + row * kSquare + column, kSquare);
        }
    }
    if (level >= 0) return;
    // Magnified in place, from the far corner, so that no source pixel is overwritten before its turn.
    for (int row = kSquare - 1; row >= 0; --row) {
        for (int column = kSquare - 1; column >= 0; --column) {
            out[row * kSquare + column] = out[(row >> -level) * kSquare + (column >> -level)];
        }
    }
}

} // namespace

QImage ReadPicture(CRastelle& chart, const CPictureRect& rect, int level)
{
    QImage image(rect.width, rect.height, QImage::Format_RGB32);
    if (image.isNull()) return image;
    const auto thread = std::make_unique<ThreadDataForRead>();
    std::vector<std::uint32_t> square(kSquare * kSquare);
    const auto read = [&](int left, int top) {
        return chart.ReadRectRGB(ChartPixel(left, level), ChartPixel(top, level), kSquare, kSquare, kSquare, level,
                                 square.data(), thread.get()) == 0;
    };
    const auto copy = [&](int line, int x, int count, int from) {
        std::memcpy(image.scanLine(line) + 4 * x, &square[static_cast<std::size_t>(from)],
                    static_cast<std::size_t>(count) * 4);
    };
    return ForEachSquare(rect, read, copy) ? image : QImage();
}

QImage ReadIndexPicture(CRastelle& chart, const CPictureRect& rect, int level)
{
    QImage image(rect.width, rect.height, QImage::Format_Indexed8);
    if (image.isNull()) return image;
    QList<QRgb> colours;
    for (const std::uint32_t colour : chart.palette) colours.append(colour);
    image.setColorTable(colours);
    const auto thread = std::make_unique<ThreadDataForRead>();
    std::vector<std::uint32_t> square(kSquare * kSquare);
    const auto read = [&](int left, int top) {
        ReadIndexSquare(chart, ChartPixel(left, level), ChartPixel(top, level), level, *thread, square.data());
        return true;
    };
    const auto copy = [&](int line, int x, int count, int from) {
        unsigned char* to = image.scanLine(line) + x;
        for (int i = 0; i < count; ++i) to[i] = static_cast<unsigned char>(square[static_cast<std::size_t>(from + i)]);
    };
    return ForEachSquare(rect, read, copy) ? image : QImage();
}
