#include "chart/chart_bytes.h"
#include "chart/chart_outline.h"
#include "chart/folder_number.h"
#include "chart/rastelle_header.h"
#include "core/files.h"
#include "support/temporary_root.h"
#include "test_charts.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <functional>
#include <limits>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A file in memory.
class MemoryBytes : public IChartBytes {
public:
    explicit MemoryBytes(std::vector<std::uint8_t> file) : content(std::move(file)) {}
    std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) override
    {
        if (position >= content.size()) return 0;
        const std::size_t count = std::min(out.size(), content.size() - static_cast<std::size_t>(position));
        std::memcpy(out.data(), content.data() + position, count);
        return count;
    }
    std::uint64_t Size() const override { return content.size(); }
    template <class T>
    void Put(std::size_t position, T value)
    {
        if (content.size() < position + sizeof(T)) content.resize(position + sizeof(T));
        std::memcpy(content.data() + position, &value, sizeof(T));
    }
    template <class T>
    T Get(std::size_t position) const
    {
        T value;
        std::memcpy(&value, content.data() + position, sizeof(T));
        return value;
    }
    std::vector<std::uint8_t> content;
};

MemoryBytes Chart(const CChartWriter& writer)
{
    return MemoryBytes(writer.Bytes(writer.Plain(1)));
}

CChartWriter Described()
{
    CChartWriter writer = ChartAt(50.0, -170.0, 0.6, 2);
    return writer.Title("Harbour")
        .Identifier("17")
        .Edition("Ed 2, 1999")
        .Revision("3/4/2001")
        .Flags(0x41)
        .ScaleText("1:5000");
}

TEST(ChartOutline, RecordTellsWhatTheHeadSays)
{
    MemoryBytes file = Chart(Described());
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/maps/h.rlt"));
    EXPECT_EQ(chart.title, "Harbour");
    EXPECT_EQ(chart.type, "Topo");
    EXPECT_EQ(chart.path, "/maps/h.rlt");
    EXPECT_EQ(chart.date, 20010403U);
    EXPECT_EQ(chart.flags, 0x41U);
    EXPECT_FALSE(chart.chunked);
    EXPECT_NEAR(chart.scale, 0.6, 1e-9);
    EXPECT_NEAR(chart.bounds.lat_max, 50.64, 1e-6);
    EXPECT_NEAR(chart.bounds.lon_min, -170.64, 1e-6);
}

TEST(ChartOutline, EmptyTitleBecomesThePath)
{
    MemoryBytes file = Chart(ChartAt(0, 0, 1.0));
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/maps/x.rlt"));
    EXPECT_EQ(chart.title, "/maps/x.rlt");
}

struct HeadCase {
    const char* name;
    std::function<void(MemoryBytes&)> change;
    bool listed;
};

const HeadCase kHeads[] = {
    {"unchanged", [](MemoryBytes&) {}, true},
    {"magic_with_its_free_bit_clear", [](MemoryBytes& f) { f.Put(0, 0x1423D5FEU); }, true},
    {"other_magic", [](MemoryBytes& f) { f.Put(0, 0x1423D5FDU); }, false},
    {"version_6", [](MemoryBytes& f) { f.Put(4, 6U); }, false},
    {"rl2_family", [](MemoryBytes& f) { f.Put(4, 0x10000005U); }, false},
    {"unknown_family_never_opens_but_is_listed", [](MemoryBytes& f) { f.Put(4, 0x30000005U); }, true},
    {"one_byte_short_of_a_chart", [](MemoryBytes& f) { f.content.resize(17831); }, false},
    {"title_behind_the_file", [](MemoryBytes& f) { f.Put(0x14, static_cast<std::uint32_t>(f.Size())); }, false},
    {"outline_behind_the_file", [](MemoryBytes& f) { f.Put(0x5C, 0xFFFFFFFFU); }, false},
    {"outline_cut_short",
     [](MemoryBytes& f) {
         f.Put(0x58, 1);
         f.Put(0x5C, static_cast<std::uint32_t>(f.Size() - 8));
     },
     false},
    {"outline_count_that_no_file_holds",
     [](MemoryBytes& f) {
         f.Put(0x58, 0x7FFFFFFF);
         f.Put(0x5C, 96U);
     },
     false},
    {"cut_inside_the_pointer_table",
     [](MemoryBytes& f) {
         f.Put(8, 100U);
         f.content.resize(17832 + 40);
     },
     false},
    {"size_in_tiles_that_overflows",
     [](MemoryBytes& f) {
         f.Put(8, 0xFFFFFFFFU);
         f.Put(12, 0xFFFFFFFFU);
     },
     false},
    {"last_tile_behind_the_file", [](MemoryBytes& f) { f.Put(17824 + 12, static_cast<std::uint32_t>(f.Size())); },
     false},
    {"type_behind_the_file", [](MemoryBytes& f) { f.Put(f.Get<std::uint32_t>(0x54), 0xFFFFFFF0U); }, false},
    {"extended_block_behind_the_file", [](MemoryBytes& f) { f.Put(0x54, 0xFFFFFFF0U); }, false},
};

TEST(ChartOutline, ListsWhatItsTestsLetThrough)
{
    for (const HeadCase& c : kHeads) {
        SCOPED_TRACE(c.name);
        MemoryBytes file = Chart(Described());
        c.change(file);
        CChartOutline chart;
        EXPECT_EQ(chart.ReadFrom(file, "/x.rlt"), c.listed);
        EXPECT_EQ(chart.scale != 0.0, c.listed);
    }
}

TEST(ChartOutline, EveryTruncationIsSurvived)
{
    const MemoryBytes whole = Chart(Described().Outline({{50, -170}, {51, -170}, {51, -169}}).DatumShift(0.1, 0.2));
    for (std::size_t length = 0; length < whole.content.size(); length += 7) {
        MemoryBytes cut = whole;
        cut.content.resize(length);
        CChartOutline chart;
        EXPECT_TRUE(!chart.ReadFrom(cut, "/x.rlt") || length >= 17832U);
        chart.ReadPolygonFrom(cut);
    }
}

TEST(ChartOutline, NoFiniteScaleIsNone)
{
    MemoryBytes file = Chart(Described());
    file.Put(0x60 + 8 * 21, std::numeric_limits<double>::quiet_NaN());
    CChartOutline chart;
    chart.ReadFrom(file, "/x.rlt");
    EXPECT_EQ(chart.scale, 0.0);
}

TEST(ChartOutline, OutlineIsShiftedAndKeptNearTheMiddle)
{
    MemoryBytes file =
        Chart(ChartAt(0.0, -170.0, 3.0, 2).Outline({{-1, 189}, {-1, 191}, {1, -169}, {1, -171}}).DatumShift(0.5, 0.25));
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
    EXPECT_TRUE(chart.polygon.empty()) << "points are read on first need";
    EXPECT_DOUBLE_EQ(chart.bounds.lon_min, -171.0 + 0.25);
    EXPECT_DOUBLE_EQ(chart.bounds.lat_max, 1.5);
    ASSERT_TRUE(chart.ReadPolygonFrom(file));
    ASSERT_EQ(chart.polygon.vertices.size(), 4U);
    EXPECT_DOUBLE_EQ(chart.polygon.vertices[1].x, -169.0 + 0.25);
    EXPECT_TRUE(chart.doesContain(0.5, -170.0));
    EXPECT_TRUE(chart.doesContain(0.5, 190.0));
    EXPECT_FALSE(chart.doesContain(0.5, -172.0));
}

TEST(ChartOutline, ShiftThatIsNoNumberIsNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    MemoryBytes file =
        Chart(ChartAt(0.0, 0.0, 3.0, 2).Outline({{-1, -1}, {-1, 1}, {1, 1}, {1, -1}}).DatumShift(0.5, nan));
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
    EXPECT_DOUBLE_EQ(chart.bounds.lat_max, 1.0);
}

TEST(ChartOutline, CornersStandUnshifted)
{
    MemoryBytes file = Chart(ChartAt(0.0, 0.0, 60.0, 1).DatumShift(5.0, 5.0));
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
    EXPECT_NEAR(chart.bounds.lat_max, 32.0, 1e-6);
}

TEST(ChartOutline, OutlinesLongerThanAWindowAreWhole)
{
    std::vector<GeoPoint> circle;
    for (int i = 0; i < 5000; ++i) circle.push_back({10.0 * std::sin(i * 0.00125664), 10.0 * std::cos(i * 0.00125664)});
    MemoryBytes file = Chart(ChartAt(0.0, 0.0, 10.0, 2).Outline(circle));
    CChartOutline chart;
    ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
    ASSERT_TRUE(chart.ReadPolygonFrom(file));
    ASSERT_EQ(chart.polygon.vertices.size(), circle.size());
    EXPECT_DOUBLE_EQ(chart.polygon.vertices[4999].y, circle[4999].lat);
    EXPECT_FALSE(chart.doesContain(9.0, 9.0)) << "inside the bounds, outside the outline";
}

TEST(ChartOutline, AreasAreTriedRoundTheWorld)
{
    CChartOutline chart;
    MemoryBytes file = Chart(ChartAt(0.0, 179.0, 6.0, 1)); // 175.8 to 182.2 degrees
    ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
    CBounds area;
    area.add(-1, -179);
    area.add(1, -178.5);
    EXPECT_TRUE(chart.mightOverlap(area));
    EXPECT_TRUE(chart.doesOverlap(area));
    CPolygon triangle;
    for (const auto& [x, y] : {std::pair(-179.0, 0.0), {-170.0, 0.0}, {-170.0, 5.0}}) triangle.add(x, y);
    EXPECT_TRUE(chart.doesOverlap(triangle));
    for (DblPoint& vertex : triangle.vertices) vertex.x += 20.0;
    EXPECT_FALSE(chart.doesOverlap(triangle));
}

TEST(ChartOutline, OnlyRegularFilesAreRead)
{
    const CTemporaryRoot root;
    CChartOutline chart;
    EXPECT_FALSE(chart.Read(root.path()));
    EXPECT_FALSE(chart.Read("/dev/zero"));
    ASSERT_EQ(mkfifo(root.file("pipe.rlt").c_str(), 0600), 0);
    EXPECT_FALSE(chart.Read(root.file("pipe.rlt"))) << "and does not wait for a writer";
    EXPECT_EQ(chart.getMiscDetails(), "Can't open file");
}

TEST(ChartOutline, DetailsInTheirOrder)
{
    const CTemporaryRoot root;
    CChartOutline chart;
    chart.path = WriteChart(root.file("a.rlt"), Described().DepthUnits("Metres").Copyright("nobody"));
    EXPECT_EQ(chart.getMiscDetails(),
              "Scale: 1:5000. ID: 17. Ed: Ed 2, 1999. Rev: 3/4/2001. (C): nobody. Depths: Metres");
    chart.path = root.file("b.rlt");
    ASSERT_TRUE(write_to_file(chart.path, std::string(500, 'x')));
    EXPECT_EQ(chart.getMiscDetails(), "Not a rlt file");
}

TEST(ChartOutline, DatesOfTextsCompare)
{
    const struct {
        const char* text;
        unsigned date;
    } cases[] = {
        {"12/05/2004", 20040512},
        {"05/13/2004", 20040513},
        {"2004-05-12", 20040512},
        {"12 March 2004", 20040312},
        {"Mar. 12, 2004", 20040312},
        {"05/2004", 20040500},
        {"4th Ed., 2004", 20040000},
        {"Edition 7", 0},
        {"", 0},
        {"99999", 0},
        {"31/31/2004", 20040000},
        {"1 Sept 1998 rev 2", 19980901},
    };
    for (const auto& c : cases) EXPECT_EQ(parse_date_for_comparison(c.text), c.date) << c.text;
}

TEST(ChartOutline, RevisionCountsOnlyWithAYearAtItsEnd)
{
    const struct {
        const char* revision;
        const char* edition;
        unsigned date;
    } cases[] = {
        {"1/2/2001", "2010", 20010201},
        {"2001-02-01", "2010", 20100000},
        {"/2001", "2010", 20100000},
        {"x/yyyy", "2010", 20100000},
    };
    for (const auto& c : cases) {
        MemoryBytes file = Chart(ChartAt(0, 0, 1.0).Revision(c.revision).Edition(c.edition));
        CChartOutline chart;
        ASSERT_TRUE(chart.ReadFrom(file, "/x.rlt"));
        EXPECT_EQ(chart.date, c.date) << c.revision;
    }
}

TEST(ChartOutline, NewerByDateThenFolderThenFile)
{
    const CTemporaryRoot root;
    CChartOutline a;
    CChartOutline b;
    a.path = root.file("V3/c.rlt");
    b.path = root.file("V12/c.rlt");
    EXPECT_FALSE(a.is_newer_than(&b));
    EXPECT_TRUE(b.is_newer_than(&a));
    a.date = 2;
    b.date = 1;
    EXPECT_TRUE(a.is_newer_than(&b));
    a.date = 1;
    for (CChartOutline* chart : {&a, &b}) {
        chart->path = root.file(chart == &a ? "old.rlt" : "new.rlt");
        ASSERT_TRUE(write_to_file(chart->path, "x"));
        const timespec times[2] = {{chart == &a ? 1000 : 2000, 0}, {chart == &a ? 1000 : 2000, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, chart->path.c_str(), times, 0), 0);
    }
    EXPECT_FALSE(a.is_newer_than(&b));
    EXPECT_TRUE(b.is_newer_than(&a));
}

TEST(FolderNumber, IsTheNearestNumberAtTheEnd)
{
    const struct {
        const char* path;
        int number;
    } cases[] = {
        {"/maps/Series/V12/chart.rlt", 12},
        {"/maps/V12", 12},
        {"/maps/V12/", 12},
        {"chart.rlt", 0},
        {".", 0},
        {"", 0},
        {"7", 0},
        {"77", 77},
        {"/", 0},
        {"//", 0},
        {"/a/b/c", 0},
        {"V99999999999/x", std::numeric_limits<int>::max()},
    };
    for (const auto& c : cases) EXPECT_EQ(get_folder_number(c.path), c.number) << c.path;
}

} // namespace
