#include "chart/dib_list.h"
#include "chart/square_map.h"
#include "chart/square_scaling.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace {

DIB_square* Placed(DIB_square& square, double x, double y, int level, int shortfall = 0)
{
    square.x = x;
    square.y = y;
    square.level = level;
    square.shortfall = shortfall;
    return &square;
}

struct GridCase {
    const char* name;
    double oy, ox, height, width;
    int top, left, rows, cols, parent_rows, parent_cols;
};

constexpr GridCase kGrids[] = {
    {"one_cell", 0.0, 0.0, 256.0, 256.0, 0, 0, 1, 1, 1, 1},
    {"last_pixel_of_a_cell_does_not_reach_the_next", 0.0, 0.0, 512.0, 512.0, 0, 0, 2, 2, 1, 1},
    {"negative_origin_rounds_down", -1.0, -257.0, 10.0, 10.0, -1, -2, 2, 2, 2, 1},
    {"odd_top_needs_a_parent_more", 256.0, 768.0, 1024.0, 512.0, 1, 3, 4, 2, 3, 2},
    {"odd_negative_top", -768.0, 0.0, 512.0, 512.0, -3, 0, 2, 2, 2, 1},
    {"less_than_a_pixel_is_one_cell", 256.0, 256.0, 0.25, 0.25, 1, 1, 1, 1, 1, 1},
};

TEST(SquareMap, GridCoversTheRectangle)
{
    for (const GridCase& c : kGrids) {
        SCOPED_TRACE(c.name);
        square_map map;
        map.setup(c.oy, c.ox, c.height, c.width, 0);
        EXPECT_EQ(map.top, c.top);
        EXPECT_EQ(map.left, c.left);
        EXPECT_EQ(map.squares.rows, c.rows);
        EXPECT_EQ(map.squares.cols, c.cols);
        EXPECT_EQ(map.zoomed_in.rows, c.parent_rows);
        EXPECT_EQ(map.zoomed_in.cols, c.parent_cols);
    }
}

TEST(SquareMap, NeighbouringLevelsLandOverAndUnderTheirCells)
{
    square_map map;
    map.setup(-256.0, 256.0, 512.0, 512.0, 1); // rows -1 and 0, columns 1 and 2
    DIB_square coarse;
    DIB_square fine;
    DIB_square far;
    map.set(Placed(coarse, 256.0, -256.0, 2)); // columns 2 and 3, rows -2 and -1
    map.set(Placed(fine, 5 * 256.0, -256.0, 0));
    map.set(Placed(far, 256.0, 0.0, 3));
    EXPECT_EQ(map.zoomed_in.At(map.ParentCol(1), map.ParentRow(0)), &coarse);
    EXPECT_EQ(map.zoomed_in.At(map.ParentCol(0), map.ParentRow(0)), nullptr);
    EXPECT_EQ(map.zoomed_out.At(3, 1), &fine); // right half of column 2, lower half of row -1
    EXPECT_EQ(map.squares.At(0, 1), nullptr);
}

TEST(SquareMap, TheSquareWithBetterDataStays)
{
    square_map map;
    map.setup(0.0, 0.0, 256.0, 256.0, 0);
    DIB_square poor;
    DIB_square good;
    DIB_square second;
    EXPECT_EQ(map.set(Placed(poor, 0.0, 0.0, 0, 2)), square_map::Placing::taken);
    EXPECT_EQ(map.set(Placed(good, 0.0, 0.0, 0, 0)), square_map::Placing::taken);
    EXPECT_EQ(map.set(Placed(second, 0.0, 0.0, 0, 0)), square_map::Placing::dropped);
    EXPECT_TRUE(map.Holds(good));
    EXPECT_EQ(poor.level, DIB_square::kInvalidLevel);
    EXPECT_EQ(second.level, DIB_square::kInvalidLevel);
}

TEST(DibList, OrderAndCountSurviveMoves)
{
    Dib_List list;
    list.Populate(3, 0);
    DIB_square* middle = list.Head()->older;
    DIB_square* tail = list.Tail();
    list.MoveToHead(tail);
    list.MoveToHead(tail);
    EXPECT_EQ(list.Head(), tail);
    EXPECT_EQ(list.Tail(), middle);
    list.Remove(middle);
    EXPECT_EQ(list.Count(), 2);
    list.Populate(3, 1); // the one taken out lives on
    EXPECT_EQ(list.Count(), 2);
    list.PushTail(middle);
    EXPECT_EQ(list.Tail(), middle);
    int walked = 0;
    for (DIB_square* square = list.Head(); square != nullptr; square = square->older) ++walked;
    EXPECT_EQ(walked, list.Count());
}

TEST(SquareScaling, IsWhatThePainterDoes)
{
    QImage square(256, 256, QImage::Format_RGB32);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) square.setPixel(x, y, qRgb(x, y, x ^ y));
    const auto* bits = reinterpret_cast<const std::uint32_t*>(square.constBits());
    constexpr int kRows = 16;
    QImage ours(256, kRows, QImage::Format_RGB32);
    DoubleRows(bits + 128 * 256 + 128, 128, kRows / 2, reinterpret_cast<std::uint32_t*>(ours.bits()));
    QImage painted(256, 256, QImage::Format_RGB32);
    QPainter(&painted).drawImage(QRectF(0, 0, 256, 256), square, QRectF(128, 128, 128, 128));
    EXPECT_TRUE(ours == painted.copy(0, 0, 256, kRows));
    QImage small(128, kRows, QImage::Format_RGB32);
    HalveRows(bits, kRows, reinterpret_cast<std::uint32_t*>(small.bits()));
    QPainter(&painted).drawImage(QRectF(0, 0, 128, 128), square, QRectF(0, 0, 256, 256));
    EXPECT_TRUE(small == painted.copy(0, 0, 128, kRows));
}

TEST(DibSquare, KeysKeepABlockTogetherAndRiseAlongRows)
{
    DIB_square a;
    DIB_square b;
    EXPECT_EQ(Placed(a, 0, 0, 0)->ChunkKey(), Placed(b, 768, 768, 0)->ChunkKey());
    EXPECT_LT(Placed(a, 0, 0, 0)->ChunkKey(), Placed(b, 1024, 0, 0)->ChunkKey());
    EXPECT_LT(Placed(a, 9216, 0, 0)->ChunkKey(), Placed(b, 0, 1024, 0)->ChunkKey());
    EXPECT_EQ(Placed(a, 512, 0, 1)->ChunkKey(), Placed(b, 1024, 0, 0)->ChunkKey()); // same chart pixels
    EXPECT_LT(Placed(a, 0, -256, 0)->ChunkKey(), Placed(b, 0, 0, 0)->ChunkKey());
}

} // namespace
