#include "chart/bounds_index.h"
#include "chart/chart_list.h"
#include "chart/map_types.h"
#include "chart/sorted_pointer.h"
#include "core/attributes.h"
#include "core/files.h"
#include "core/persistant_data.h"
#include "support/temporary_root.h"
#include "test_charts.h"

#include <filesystem>
#include <random>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class ChartListTest : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(getAppDirectory());
        CSelectMapTypes::CHB_external_folder.clear();
        CSelectMapTypes::show = {"Topo", "4WD", "Basemap"};
    }
    /// A chart under the application's folder.
    std::string Add(const std::string& name, const CChartWriter& writer)
    {
        const std::string path = getAppDirectory() + "/" + name;
        fs::create_directories(fs::path(path).parent_path());
        return WriteChart(path, writer);
    }
    std::string Add(const std::string& name, double scale, const std::string& type = "Topo")
    {
        return Add(name, ChartAt(0.0, 0.0, scale, 2).Type(type));
    }
    static std::string Name(const CChartOutline* chart)
    {
        return chart != nullptr ? fs::path(chart->path).stem().string() : "none";
    }

    CTemporaryRoot root;
};

struct Recorder : Listener<CChartList> {
    void OnUpdate(CChartList&) override { ++told; }
    int told = 0;
};

TEST_F(ChartListTest, ScanFindsEachReadableChartOnce)
{
    Add("a.rlt", 4.0);
    Add("sub/B.RLT", 1.0);
    Add("sub/deeper/c.rlt", 2.0);
    fs::create_directory_symlink(getAppDirectory(), getAppDirectory() + "/sub/loop");
    fs::create_directory_symlink(getAppDirectory() + "/sub", getAppDirectory() + "/again");
    fs::create_directories(getAppDirectory() + "/folder.rlt");
    fs::create_symlink("nowhere", getAppDirectory() + "/broken.rlt");
    ASSERT_EQ(mkfifo((getAppDirectory() + "/pipe.rlt").c_str(), 0600), 0);
    ASSERT_TRUE(write_to_file(getAppDirectory() + "/noise.rlt", std::string(20000, 'x')));
    ASSERT_TRUE(write_to_file(getAppDirectory() + "/a.rlt.bak", std::string(20000, 'x')));
    fs::create_directories(getBundleDirectory());
    ASSERT_FALSE(WriteChart(getBundleDirectory() + "/world.rlt", ChartAt(0, 0, 8.0)).empty());
    CChartList list;
    std::string order;
    for (const CChartOutline& chart : list.Outlines()) order += Name(&chart) + " ";
    EXPECT_EQ(order, "B c a world ");
}

TEST_F(ChartListTest, FoldersComeFromTheListAndTheSettings)
{
    for (const char* name : {"one", "two", "three"}) {
        fs::create_directories(root.file(name));
        ASSERT_FALSE(WriteChart(root.file(name) + "/" + name + ".rlt", ChartAt(0, 0, 1.0)).empty());
    }
    ASSERT_TRUE(write_to_file(getAppDirectory() + "/map_folders.txt",
                              "# charts\n\n" + root.file("one") + "\n" + root.file("missing") + "\n"));
    CSelectMapTypes::CHB_external_folder = root.file("two");
    CChartList list;
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(CChartList::getCHBfolder(), root.file("two"));
    list.AddSearchFolder(root.file("three"));
    list.AddSearchFolder(root.file("three"));
    list.AddSearchFolder(root.file("missing"));
    EXPECT_EQ(list.size(), 3U);
    list.Refresh();
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(list.pathUnderMapsFolder(root.file("one/V12/x.rlt")), "V12/x.rlt");
    EXPECT_EQ(list.pathUnderMapsFolder(root.file("one2/x.rlt")), root.file("one2/x.rlt"));
    EXPECT_EQ(CChartList::get_path_after_CHB("/data/CHB/uk/x.rlt"), "uk/x.rlt");
    CSelectMapTypes::CHB_external_folder.clear();
    list.init();
    EXPECT_EQ(CChartList::getCHBfolder(), getAppDirectory("CHB"));
    EXPECT_TRUE(isDirectory(getAppDirectory("CHB")));
}

struct BestCase {
    const char* name;
    double scale;
    bool any_type;
    const char* best;
};

constexpr BestCase kBest[] = {
    {"tie_goes_to_the_more_detailed", 2.0, false, "one"},  {"scale_0_wants_the_most_detailed", 0.0, false, "one"},
    {"coarser_than_all", 1000.0, false, "four"},           {"nearer_to_the_coarser", 2.1, false, "four"},
    {"a_hidden_type_does_not_count", 16.0, false, "four"}, {"unless_asked_for", 16.0, true, "hidden"},
};

TEST_F(ChartListTest, BestChartIsNearestInScale)
{
    Add("one.rlt", 1.0);
    Add("four.rlt", 4.0);
    Add("hidden.rlt", 16.0, "Secret");
    const CChartList list;
    for (const BestCase& c : kBest)
        EXPECT_EQ(Name(list.FindBestChart(0.1, 0.1, c.scale, c.any_type)), c.best) << c.name;
    // Only the hidden one reaches so far.
    EXPECT_EQ(Name(list.FindBestChart(0.0, 10.0, 1.0)), "hidden") << "a position is never left empty by the filter";
    EXPECT_EQ(list.ScaleIn(0.0, 10.0, 20.0), nullptr);
    EXPECT_EQ(list.ScaleOut(0.0, 10.0, 1.0), nullptr);
    EXPECT_EQ(list.FindBestChart(60.0, 0.0, 1.0), nullptr);
}

TEST_F(ChartListTest, StepsInScale)
{
    Add("a.rlt", 1.0);
    Add("b.rlt", 1.9);
    Add("c.rlt", 2.0);
    Add("d.rlt", 2.015);
    Add("e.rlt", 4.0);
    const CChartList list;
    EXPECT_EQ(Name(list.ScaleIn(0, 0, 2.0)), "a") << "0.95 of the scale is passed over";
    EXPECT_EQ(Name(list.ScaleOut(0, 0, 2.0)), "e") << "1.0075 of the scale is passed over";
    EXPECT_EQ(Name(list.ScaleOut(0, 0, 1.0)), "b");
    EXPECT_EQ(list.ScaleIn(0, 0, 1.0), nullptr);
    EXPECT_EQ(list.ScaleIn(0, 0, 9.0), nullptr) << "no record at the scale or above: no starting point";
    EXPECT_EQ(list.ScaleOut(0, 0, 4.0), nullptr);
    EXPECT_EQ(list.ScaleIn(60, 0, 2.0), nullptr);
}

TEST_F(ChartListTest, PositionsAreTriedRoundTheWorld)
{
    Add("pacific.rlt", ChartAt(0.0, 180.0, 10.0, 4)); // 158.7 to 201.3 degrees
    const CChartList list;
    for (const double lon : {179.0, -179.0, 190.0, -170.0, 181.0})
        EXPECT_EQ(Name(list.FindBestChart(1.0, lon, 1.0)), "pacific") << lon;
    std::list<const CChartOutline*> charts;
    list.ChartsAt(1.0, -150.0, charts);
    EXPECT_TRUE(charts.empty());
}

TEST_F(ChartListTest, FindFileReadsWhatIsNotListed)
{
    const std::string inside = Add("in.rlt", 2.0);
    const std::string outside = WriteChart(root.file("out.rlt"), ChartAt(0, 0, 3.0));
    CChartList list;
    list.Refresh();
    const CChartOutline* found = list.FindFile(inside, 0.0);
    EXPECT_EQ(list.FindFile(inside, 5.0), found) << "a wrong hint makes no second record";
    EXPECT_EQ(Name(list.FindFile(outside, 0.0)), "out");
    EXPECT_EQ(list.FindFile(root.file("none.rlt"), 0.0), nullptr);
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(Name(list.ScaleOut(0, 0, 2.5)), "out") << "the new record is found by position too";
    list.current = list.FindFile(outside, 3.0);
    list.Refresh();
    EXPECT_EQ(Name(list.current), "out") << "the open chart keeps its record";
    fs::remove(outside);
    list.Refresh();
    EXPECT_EQ(list.current, nullptr);
}

TEST_F(ChartListTest, SlicesGiveTheSameListAndOneNotice)
{
    for (int i = 0; i < 30; ++i) Add("f" + std::to_string(i % 3) + "/" + std::to_string(i) + ".rlt", 1.0 + i);
    CChartList list;
    Recorder recorder;
    recorder.Connect();
    int slices = 0;
    while (list.ScanSlice(std::chrono::microseconds(0))) ++slices;
    EXPECT_GE(slices, 30) << "an empty budget does one step";
    EXPECT_FALSE(list.IsScanning());
    EXPECT_EQ(recorder.told, 1);
    EXPECT_EQ(list.size(), 30U);
    // While the next scan runs, the list before answers, at once.
    Add("new.rlt", 0.1);
    list.StartScan();
    list.ScanSlice(std::chrono::microseconds(0));
    EXPECT_EQ(list.size(), 30U);
    EXPECT_TRUE(list.IsScanning());
    list.Refresh();
    EXPECT_EQ(list.size(), 31U);
    EXPECT_EQ(recorder.told, 2);
    list.StartScan();
    CChartList other; // never complete: a question finishes its scan
    EXPECT_EQ(other.size(), 31U);
    EXPECT_FALSE(other.IsScanning());
}

TEST_F(ChartListTest, RefreshesOnlyWhenAFolderHasChanged)
{
    const std::string deep = Add("sub/deeper/a.rlt", 1.0);
    fs::create_directory_symlink(getAppDirectory(), getAppDirectory() + "/sub/loop");
    CChartList list;
    list.Refresh();
    Recorder recorder;
    recorder.Connect();
    list.RefreshIfNeeded();
    EXPECT_EQ(recorder.told, 0);
    const timespec later[2] = {{4000000000, 0}, {4000000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, deep.c_str(), later, 0), 0); // written over in place
    list.RefreshIfNeeded();
    EXPECT_EQ(recorder.told, 1);
    list.RefreshIfNeeded();
    EXPECT_EQ(recorder.told, 1);
    const timespec latest[2] = {{4100000000, 0}, {4100000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, fs::path(deep).parent_path().c_str(), latest, 0), 0);
    list.RefreshIfNeeded();
    EXPECT_EQ(recorder.told, 2);
}

TEST_F(ChartListTest, ChartsAreRemovedFromListAndDisk)
{
    const std::string a = Add("a.rlt", 1.0);
    const std::string b = Add("b.rlt", 2.0);
    const std::string c = Add("c.rlt", ChartAt(0, 0, 3.0).Version(0x01000005));
    fs::create_directories(getAppDirectory() + "/c.rl3");
    ASSERT_TRUE(write_to_file(getAppDirectory() + "/c.rl3/0", "x"));
    CChartList list;
    list.Refresh();
    list.current = list.FindFile(b, 0.0);
    list.RemoveChart(b);
    EXPECT_TRUE(fs::exists(b));
    EXPECT_EQ(list.current, nullptr);
    list.DeleteChart(list.FindFile(a, 0.0));
    EXPECT_FALSE(fs::exists(a));
    list.RemoveAndDeleteChart(list.FindFile(c, 0.0));
    EXPECT_FALSE(fs::exists(c));
    EXPECT_FALSE(fs::exists(getAppDirectory() + "/c.rl3"));
    EXPECT_EQ(list.size(), 1U);
    EXPECT_EQ(list.FindBestChart(0, 0, 3.0), list.FindFile(a, 0.0));
}

TEST_F(ChartListTest, OfDuplicatesTheNewestStays)
{
    const std::string old_one = Add("x/chart.rlt", ChartAt(0, 0, 1.0).Edition("1999"));
    const std::string new_one = Add("y/chart.rlt", ChartAt(0, 0, 1.0).Edition("2005"));
    const std::string middle = Add("z/chart.rlt", ChartAt(0, 0, 1.0).Edition("2001"));
    const std::string other = Add("z/other.rlt", ChartAt(0, 0, 1.0).Edition("1990"));
    fs::create_hard_link(other, getAppDirectory() + "/other.rlt");
    CChartList list;
    std::string calls;
    list.close_maps = [&] { calls += fs::exists(old_one) ? "close " : "late "; };
    list.reopen_maps = [&] { calls += fs::exists(old_one) ? "early " : "reopen "; };
    EXPECT_EQ(list.DeleteDuplicates(), 1);
    EXPECT_EQ(calls, "close reopen ");
    EXPECT_TRUE(fs::exists(new_one));
    EXPECT_FALSE(fs::exists(old_one));
    EXPECT_TRUE(fs::exists(other)) << "two names of one file are not two charts";
    EXPECT_EQ(list.DeleteDuplicates(), 1) << "the first is compared with each of the others only";
    EXPECT_FALSE(fs::exists(middle));
    EXPECT_EQ(list.DeleteDuplicates(), 0);
}

TEST_F(ChartListTest, SelectedTypesGrowByAChart)
{
    const std::string path = Add("a.rlt", 1.0, "Harbour");
    CChartList list;
    EXPECT_EQ(list.ScaleOut(0, 0, 0.5), nullptr);
    list.AddRltToSelectedTypes(path);
    EXPECT_EQ(Name(list.ScaleOut(0, 0, 0.5)), "a");
}

TEST_F(ChartListTest, TypesShownAreNeverNoneAfterLoading)
{
    CAttributes settings;
    settings.Set("CChartOutline::CSortedPointer:sort_by", "0x2");
    CSelectMapTypes::show.clear();
    PersistantData::LoadFrom(settings);
    EXPECT_EQ(CSelectMapTypes::show, (std::set<std::string>{"4WD", "Basemap", "Topo"}));
    EXPECT_EQ(CSortedPointer::sort_by, CSortedPointer::by_distance) << "the long name of the group is read too";
    settings.Set("CSortedPointer:sort_by", "0x1");
    PersistantData::LoadFrom(settings);
    EXPECT_EQ(CSortedPointer::sort_by, CSortedPointer::by_scale);
    CSortedPointer::sort_by = CSortedPointer::by_title;
}

TEST_F(ChartListTest, PlaceInATree)
{
    CChartOutline chart;
    const std::pair<std::string, std::string> cases[] = {
        {getBundleDirectory("basemap/world.rlt"), "Built-in|basemap|world.rlt"},
        {getDocsDirectory("x.rlt"), "Documents|x.rlt"},
        {getAppDirectory("CHB/a/x.rlt"), "Internal|CHB|a|x.rlt"},
    };
    for (const auto& [path, tree] : cases) {
        chart.path = path;
        EXPECT_EQ(chart.getPathForTree(), tree);
    }
}

TEST(SortedPointer, OrdersOfTheList)
{
    CChartOutline charts[4];
    const double middles[][2] = {{0, 0}, {0, 0.5}, {0, 40}, {0, 20}};
    for (int i = 0; i < 4; ++i) {
        charts[i].title = std::string(1, static_cast<char>("badc"[i]));
        charts[i].scale = 4.0 - i;
        for (const double side : {-1.0, 1.0}) charts[i].bounds.add(middles[i][0] + side, middles[i][1] + side);
        for (const auto& [x, y] : {std::pair(-1.0, -1.0), {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}})
            charts[i].polygon.add(middles[i][1] + x, middles[i][0] + y);
    }
    const auto order = [&charts] {
        std::vector<CSortedPointer> pointers;
        for (const CChartOutline& chart : charts) pointers.push_back({&chart});
        std::stable_sort(pointers.begin(), pointers.end());
        std::string titles;
        for (const CSortedPointer& pointer : pointers) titles += pointer.outline->title;
        return titles;
    };
    EXPECT_EQ(order(), "abcd");
    CSortedPointer::sort_by = CSortedPointer::by_scale;
    EXPECT_EQ(order(), "cdab");
    CSortedPointer::sort_by = CSortedPointer::by_distance;
    EXPECT_EQ(order(), "cdab") << "without a position by scale";
    CSortedPointer::grid.SetOrigin(0.0, 0.2);
    EXPECT_EQ(order(), "abcd") << "two contain the position, by scale; two do not, by distance";
    CSortedPointer::grid = CSimpleGrid();
    CSortedPointer::sort_by = CSortedPointer::by_title;
}

TEST(BoundsIndex, MissesNoRecordOfAPlainWalk)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> lat(-95.0, 95.0);
    std::uniform_real_distribution<double> lon(-400.0, 400.0);
    std::exponential_distribution<double> size(0.2);
    std::vector<CChartOutline> charts(500);
    CBoundsIndex index;
    index.Reset(charts.size());
    for (CChartOutline& chart : charts) {
        const double a = std::floor(lat(random));
        const double o = std::floor(lon(random));
        chart.bounds.add(a, o);
        chart.bounds.add(a + size(random), o + size(random) * 10.0);
        index.Add(&chart, chart.bounds);
    }
    for (int i = 0; i < 2000; ++i) {
        const double a = i % 2 == 0 ? lat(random) : std::floor(lat(random));
        const double o = i % 3 == 0 ? std::floor(lon(random)) - 1e-14 : lon(random);
        std::vector<const CChartOutline*> up;
        std::vector<const CChartOutline*> down;
        index.Ascending(a, o, 0, [&](const CChartOutline* c) { return up.push_back(c), true; });
        index.Descending(a, o, charts.size() - 1, [&](const CChartOutline* c) { return down.push_back(c), true; });
        EXPECT_TRUE(std::is_sorted(up.begin(), up.end()));
        EXPECT_TRUE(std::equal(up.begin(), up.end(), down.rbegin(), down.rend()));
        for (const CChartOutline& chart : charts) {
            const bool there = chart.bounds.contains(a, o) || chart.bounds.contains(a, o + 360.0) ||
                               chart.bounds.contains(a, o - 360.0);
            ASSERT_TRUE(!there || std::binary_search(up.begin(), up.end(), &chart)) << a << " " << o;
        }
    }
    int from = 0;
    index.Ascending(0.5, 0.5, 250, [&](const CChartOutline* c) { return from += c < &charts[250], true; });
    index.Descending(0.5, 0.5, 250, [&](const CChartOutline* c) { return from += c > &charts[250], true; });
    EXPECT_EQ(from, 0);
}

} // namespace
