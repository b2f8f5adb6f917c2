#include "core/files.h"
#include "support/temporary_root.h"
#include "tools/basemap/chart_palette.h"
#include "tools/basemap/clip.h"
#include "tools/basemap/free_space.h"
#include "tools/basemap/world_data.h"

#include <cmath>

#include <gtest/gtest.h>
#include <zlib.h>

namespace {

/// Twice the signed area, positive when the ring turns as its original did.
double Turning(const CPixelLine& ring)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const DblPoint& a = ring[i];
        const DblPoint& b = ring[(i + 1) % ring.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return sum;
}

void WriteGzip(const std::string& path, const std::string& text)
{
    gzFile file = gzopen(path.c_str(), "wb");
    gzwrite(file, text.data(), static_cast<unsigned>(text.size()));
    gzclose(file);
}

} // namespace

TEST(Clip, RingKeepsAreaInsideAndDirection)
{
    const FRect rect{0, 0, 10, 10};
    const CPixelLine square{{-5, -5}, {5, -5}, {5, 5}, {-5, 5}};
    const CPixelLine backwards(square.rbegin(), square.rend());
    const CPixelLine around{{-50, -50}, {50, -50}, {50, 50}, {-50, 50}};
    const CPixelLine outside{{20, 20}, {30, 20}, {30, 30}};
    EXPECT_DOUBLE_EQ(Turning(ClipRing(square, rect)), 50.0);
    EXPECT_DOUBLE_EQ(Turning(ClipRing(backwards, rect)), -50.0);
    EXPECT_DOUBLE_EQ(Turning(ClipRing(around, rect)), 200.0);
    EXPECT_TRUE(ClipRing(outside, rect).empty());
}

TEST(Clip, LineLosesNoVisibleSegment)
{
    const CPixelLine line{{-20, 5}, {5, 5}, {5, 50}, {40, 50}, {40, 5}, {8, 5}, {8, 8}};
    std::vector<CPixelLine> runs;
    ClipLine(line, {0, 0, 10, 10}, 2, runs);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0], (CPixelLine{{-20, 5}, {5, 5}, {5, 50}}));
    EXPECT_EQ(runs[1], (CPixelLine{{40, 5}, {8, 5}, {8, 8}}));
    runs.clear();
    ClipLine({{1, 1}, {2, 1}, {3, 1}, {4, 1}}, {0, 0, 10, 10}, 2, runs);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].back(), runs[1].front());
}

TEST(FreeSpace, SeesWhatTouchesSeveralCells)
{
    CFreeSpace space(1000, 1000);
    space.Take({100, 100, 400, 40});
    EXPECT_FALSE(space.IsFree({450, 130, 20, 20}));
    EXPECT_TRUE(space.IsFree({450, 150, 20, 20}));
    EXPECT_FALSE(space.IsFree({990, 10, 20, 20})) << "beyond the edge";
}

TEST(ChartPalette, DrawingColoursComeOutExactly)
{
    const CChartPalette palette;
    ASSERT_LE(palette.Colours().size(), 128U);
    using namespace chart_colours;
    for (const QRgb colour : {kSea, kLand, kLake, kShore, kHalo, kText, kSeaText, kRose, kIceShelf, kFrame}) {
        EXPECT_EQ(palette.Colours()[palette.Index(colour)], colour & 0xFFFFFFU);
    }
    EXPECT_EQ(palette.Index(kSea), 0);
    EXPECT_EQ(palette.Index(kOutside), 1);
}

TEST(WorldData, ReadsShapesAndRefusesDamage)
{
    const CTemporaryRoot root;
    const std::string path = root.file("world.gz");
    const std::string good = "# comment\nworld-vector 1\nunit 0.5\nlayer land area 1\nshape 1.5 antarctic 1\npart 3\n"
                             "10 20 -2 0\n0 4\nlayer rivers line 1\nshape 3.0 river 1\npart 2\n0 0 1 1\nend\n";
    CWorldData data;
    std::string error;
    WriteGzip(path, good);
    ASSERT_TRUE(ReadWorldData(path, data, error)) << error;
    ASSERT_EQ(data.land.size(), 1U);
    EXPECT_EQ(data.land[0].parts[0], (std::vector<DblPoint>{{5, 10}, {4, 10}, {4, 12}}));
    EXPECT_TRUE(data.land[0].antarctic);
    EXPECT_EQ(data.land[0].bounds, (CBounds{4, 5, 10, 12}));
    EXPECT_EQ(data.rivers.size(), 1U);

    for (std::size_t length = 0; length + 5 < good.size(); length += 3) {
        WriteGzip(path, good.substr(0, length));
        CWorldData part;
        EXPECT_FALSE(ReadWorldData(path, part, error)) << length;
    }
}
