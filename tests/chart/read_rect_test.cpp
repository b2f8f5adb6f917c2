#include "chart/plain_decoder.h"
#include "chart/rastelle1.h"
#include "decoder_support.h"
#include "support/allocation_counter.h"
#include "support/chart_samples.h"
#include "support/temporary_root.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr int kSquare = 256;
constexpr std::uint32_t kNothing = 0x12345678; ///< what no palette holds
using picture = std::vector<std::uint32_t>;

/// A chart on disk, its sample, and what its pixels must be, worked out from the image alone.
struct OpenSample {
    explicit OpenSample(ChartKind kind, int tiles = 8)
        : sample(MakeChartSample(kind, tiles)), matrix(BuildInterpolationMatrix(sample.palette))
    {
        const std::string path = root.file("sample.rlt");
        EXPECT_TRUE(sample.Writer().Write(path, sample.Source()));
        chart.Open({}, path.c_str(), [](bool opened) { EXPECT_TRUE(opened); });
    }
    /// Index at a chart pixel; 1 outside.
    unsigned Index(int x, int y) const
    {
        const int side = sample.side();
        if (x < 0 || y < 0 || x >= side || y >= side) return 1;
        return sample
            .indices[static_cast<std::size_t>(y) * static_cast<std::size_t>(side) + static_cast<std::size_t>(x)];
    }
    unsigned Mix(unsigned a, unsigned b) const { return matrix[a * kPaletteSize + b]; }
    /// The pixel at place (column, row) of a read from (x, y) at a level.
    std::uint32_t Expected(int x, int y, int level, int column, int row) const
    {
        unsigned index;
        if (level <= 0) {
            index = Index(x + (column >> -level), y + (row >> -level));
        } else {
            // Samples lie at the corners of a square of half the step, as the formats' row order has them.
            const int step = 1 << level, half = step / 2;
            const int left = x + column * step, top = y + row * step;
            index = Mix(Mix(Index(left, top), Index(left + half, top + half)),
                        Mix(Index(left, top + half), Index(left + half, top)));
        }
        return index < sample.palette.size() ? sample.palette[index] | 0xFF000000 : 0xFF000000;
    }
    picture Read(int x, int y, int w, int h, int level)
    {
        picture pixels(static_cast<std::size_t>(kSquare) * kSquare, kNothing);
        EXPECT_EQ(chart.ReadRectRGB(x, y, w, h, kSquare, level, pixels.data(), thread.get()), 0);
        return pixels;
    }

    CTemporaryRoot root;
    ChartSample sample;
    std::vector<std::uint8_t> matrix;
    CRastelle1 chart;
    std::unique_ptr<ThreadDataForRead> thread = std::make_unique<ThreadDataForRead>();
};

struct RectCase {
    const char* name;
    int level, x, y, w, h;
    int filled_w, filled_h; ///< the part of `dest` that is written
};

const RectCase kRects[] = {
    {"whole_square", 0, 64, 128, 256, 256, 256, 256},
    {"left_of_the_chart", 0, -128, -64, 256, 256, 256, 256},
    {"over_the_right_and_lower_edge", 0, 448, 384, 256, 256, 256, 256},
    {"one_tile", 0, 0, 0, 64, 64, 64, 64},
    {"five_tiles_across", 0, 0, 0, 320 - 64, 64, 256, 64},
    {"half", 1, 0, 0, 256, 256, 256, 256},
    {"half_over_the_edges", 1, -256, -128, 256, 256, 256, 256},
    {"quarter", 2, 0, 0, 256, 256, 256, 256},
    {"eighth", 3, 0, 0, 256, 256, 256, 256},
    {"sixteenth", 4, -1024, 0, 256, 256, 256, 256},
    {"sixtyfourth", 6, 0, 0, 8, 8, 8, 8},
    {"less_than_a_tile", 1, 0, 0, 256, 31, 0, 0},
    {"too_far_reduced", 7, 0, 0, 256, 256, 0, 0},
    {"doubled", -1, 64, 64, 256, 256, 256, 256},
    {"doubled_over_the_corner", -1, -64, -64, 256, 256, 256, 256},
    {"fourfold_in_a_tile", -2, 64, 64, 256, 256, 256, 256},
    {"fourfold_in_the_middle_of_a_tile", -2, 80, 70, 64, 32, 64, 32},
    {"sixteenfold", -4, 96, 16, 256, 256, 256, 256},
};

class ReadRect : public testing::TestWithParam<InstructionSet> {};

TEST_P(ReadRect, ShowsTheImageAndTouchesNothingElse)
{
    const CWithInstructionSet with(GetParam());
    for (const ChartKind kind : {ChartKind::clean, ChartKind::antialiased, ChartKind::scanned}) {
        OpenSample open(kind);
        for (const RectCase& c : kRects) {
            const picture pixels = open.Read(c.x, c.y, c.w, c.h, c.level);
            for (int row = 0; row < kSquare; ++row) {
                for (int column = 0; column < kSquare; ++column) {
                    const bool filled = column < c.filled_w && row < c.filled_h;
                    const std::uint32_t expected = filled ? open.Expected(c.x, c.y, c.level, column, row) : kNothing;
                    ASSERT_EQ(pixels[static_cast<std::size_t>(row * kSquare + column)], expected)
                        << c.name << " " << ChartKindName(kind) << " at " << column << "," << row;
                }
            }
        }
    }
}

std::string NameOfSet(const testing::TestParamInfo<InstructionSet>& set)
{
    constexpr const char* kNames[] = {"portable", "avx2", "avx512"};
    return kNames[static_cast<int>(set.param)];
}
INSTANTIATE_TEST_SUITE_P(Sets, ReadRect,
                         testing::Values(InstructionSet::portable, InstructionSet::avx2, InstructionSet::avx512),
                         NameOfSet);

TEST(ReadRectMix, FollowsAnyMatrixEvenADamagedOne)
{
    std::mt19937 random(2);
    std::vector<std::uint8_t> matrix(kPaletteSize * kPaletteSize);
    for (auto& mix : matrix) mix = static_cast<std::uint8_t>(random());
    const ChartSample sample = MakeChartSample(ChartKind::antialiased, 4);
    CTemporaryRoot root;
    const std::string path = root.file("mix.rlt");
    ASSERT_TRUE(sample.Writer().Matrix(matrix).Write(path, sample.Source()));
    CRastelle1 chart;
    chart.Open({}, path.c_str(), [](bool opened) { ASSERT_TRUE(opened); });
    auto thread = std::make_unique<ThreadDataForRead>();
    for (int level = 1; level <= 3; ++level) {
        const int side = kTileSide >> level;
        picture fast(kTilePixels, kNothing), plain(kTilePixels, kNothing);
        chart.ReadRectRGB(0, 0, side, side, kTileSide, level, fast.data(), thread.get());
        chart.ReadBlock(0, 0, level - 1, thread->tiles[0].data(), thread.get());
        PlainReduceTile(thread->tiles[0].data(), level, matrix.data(), chart.palette, plain.data(), kTileSide);
        EXPECT_EQ(fast, plain) << level;
    }
}

TEST(ReadRectCost, AllocatesNothingAtAnyLevel)
{
    OpenSample open(ChartKind::antialiased);
    picture pixels(static_cast<std::size_t>(kSquare) * kSquare);
    for (int level = -2; level <= 6; ++level) {
        const CAllocationCounter counter;
        open.chart.ReadRectRGB(0, 0, kSquare, kSquare, kSquare, level, pixels.data(), open.thread.get());
        EXPECT_EQ(counter.Count(), 0U) << level;
    }
}

TEST(ReadRectPlaceholder, IsReportedByAnEmptyTile)
{
    CTemporaryRoot root;
    CChartWriter writer;
    writer.Size(4, 1).RawTile(1, 0, {0x80, 0, 0, 5});
    ASSERT_TRUE(writer.Write(root.file("p.rlt"), writer.Plain(2)));
    CRastelle1 chart;
    chart.Open({}, root.file("p.rlt").c_str(), [](bool opened) { ASSERT_TRUE(opened); });
    auto thread = std::make_unique<ThreadDataForRead>();
    picture pixels(kTilePixels);
    chart.ReadRectRGB(0, 0, 64, 64, 64, 0, pixels.data(), thread.get());
    EXPECT_FALSE(thread->placeholder);
    chart.ReadRectRGB(64, 0, 64, 64, 64, 0, pixels.data(), thread.get());
    EXPECT_TRUE(thread->placeholder);
}

} // namespace
