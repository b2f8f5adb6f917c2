#include "view_fixture.h"

#include <fstream>
#include <limits>

namespace {

TEST_F(ViewTest, LevelFollowsTheWantedScale)
{
    Chart("a.rlt", 1.0);
    MakeView();
    constexpr struct {
        double wanted;
        int level;
    } cases[] = {{1.0, 0},  {0.67, 0}, {0.66, -1}, {0.3, -2}, {0.01, -2}, {1.33, 0},
                 {1.34, 1}, {2.6, 1},  {2.7, 2},   {8.0, 3},  {500.0, 3}, {0.0, 0}};
    for (const auto& c : cases) {
        view->GotoBestMap(ZT_HWND(), 1.0, 2.0, c.wanted, {});
        ASSERT_TRUE(view->IsOpen());
        EXPECT_EQ(view->Params().level, c.level) << c.wanted;
        EXPECT_NEAR(At(1.0, 2.0).x, 400.0, 4.0) << c.wanted;
        EXPECT_NEAR(At(1.0, 2.0).y, 300.0, 4.0) << c.wanted;
        EXPECT_NEAR(view->getDisplayedScale(), std::ldexp(1.0, c.level), 1e-9);
    }
}

TEST_F(ViewTest, PositionOutsideTheChartShowsTheChartWhole)
{
    const std::string path = Chart("a.rlt", 1.0, 16, 10.0, 20.0);
    Chart("b.rlt", 1.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 0.5, {});
    ASSERT_EQ(Shown(), "b.rlt");
    EXPECT_TRUE(Open(path));
    EXPECT_EQ(view->Params().level, view->MaxLevel() - 1);
    EXPECT_NEAR(At(10.0, 20.0).x, 400.0, 1.0);
    EXPECT_NEAR(At(10.0, 20.0).y, 300.0, 1.0);
}

TEST_F(ViewTest, RestrictedChartHasOneLevelLess)
{
    std::filesystem::create_directories(getAppDirectory());
    WriteChart(getAppDirectory() + "/r.rlt", ChartAt(0, 0, 1.0, 16).Flags(0x40));
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 100.0, {});
    EXPECT_EQ(view->MaxLevel(), 2);
    EXPECT_EQ(view->Params().level, 2);
    EXPECT_EQ(sink.last, "") << "a small file is within reasonable use";
}

TEST_F(ViewTest, ChartThatFailsLeavesTheListAndThePreviousReturns)
{
    const std::string good = Chart("good.rlt", 1.0);
    const std::string bad = Chart("bad.rlt", 1.1);
    MakeView();
    ASSERT_EQ(catalogue->size(), 2U);
    ASSERT_TRUE(Open(good));
    view->GotoBestMap(ZT_HWND(), 1.0, 2.0, 1.0, {});
    std::filesystem::resize_file(bad, 18000); // behind the catalogue's back
    int answers = 0;
    view->onOpen(ZT_HWND(), bad.c_str(), true, [&](bool ok) {
        ++answers;
        EXPECT_FALSE(ok);
    });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(catalogue->size(), 1U);
    EXPECT_TRUE(view->IsOpen());
    EXPECT_FALSE(view->IsOpening());
    EXPECT_EQ(Shown(), "good.rlt");
    EXPECT_NEAR(At(1.0, 2.0).x, 400.0, 1.0) << "the view before";

    std::filesystem::remove(good);
    view->onOpen(ZT_HWND(), good.c_str(), true, {});
    EXPECT_FALSE(view->IsOpen());
    EXPECT_FALSE(view->IsOpening());
}

TEST_F(ViewTest, FirstFixChoosesTheChart)
{
    Chart("default.rlt", 0.2, 16, 43.04144, -31.7395);
    Chart("here.rlt", 1.0, 16, 10.0, 10.0);
    Chart("here_finer.rlt", 0.5, 16, 10.0, 10.0);
    const struct {
        const char* name;
        double lat, lon;
        const char* chart;
        double at_lat, at_lon;
    } cases[] = {
        {"most_detailed_chart", 10.0, 11.0, "here_finer.rlt", 10.0, 11.0},
        {"zero_is_no_position", 0.0, 0.0, "default.rlt", 43.04144, -31.7395},
        {"no_chart_there", -60.0, 100.0, "default.rlt", 43.04144, -31.7395},
    };
    for (const auto& c : cases) {
        MakeView();
        Fix(999.0, 999.0);
        EXPECT_FALSE(view->IsOpen()) << c.name << ": no position yet";
        view->LockOnToGPS(ZT_HWND(), true);
        Fix(c.lat, c.lon);
        ASSERT_TRUE(view->IsOpen()) << c.name;
        EXPECT_EQ(Shown(), c.chart) << c.name;
        EXPECT_NEAR(At(c.at_lat, c.at_lon).x, 400.0, 1.5) << c.name;
        EXPECT_EQ(view->IsLockedOnGPS(), c.lat == c.at_lat) << c.name;
        view.reset();
    }
}

TEST_F(ViewTest, StartChartGivesWayToTheFirstFixUnlessTouched)
{
    Chart("overview.rlt", 4.0);
    Chart("harbour.rlt", 0.5, 16, 5.0, 5.0);
    MakeView();
    view->OpenStartChart();
    EXPECT_EQ(Shown(), "overview.rlt") << "the coarsest, there being none at the start position";
    EXPECT_EQ(view->Params().level, 2) << "whole";
    Fix(0.0, 0.0);
    EXPECT_EQ(Shown(), "overview.rlt");
    Fix(5.0, 5.1);
    EXPECT_EQ(Shown(), "harbour.rlt");
    Fix(-5.0, 5.0);
    EXPECT_EQ(Shown(), "harbour.rlt") << "only the first fix";

    MakeView();
    view->OpenStartChart();
    double dx = 10.0;
    double dy = 0.0;
    view->DoScroll(dx, dy);
    Fix(5.0, 5.1);
    EXPECT_EQ(Shown(), "overview.rlt") << "the user is looking at it";
}

TEST_F(ViewTest, PlaceWithoutChartAsksForADownload)
{
    struct Services : IViewServices {
        void DownloadBestFreeMap(CRastelleView&, double lat, double, std::function<void(bool)> done) override
        {
            asked.push_back(lat);
            if (done) done(false);
        }
        std::vector<double> asked;
    } services;
    SetViewServices(&services);
    Chart("here.rlt", 1.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    int answers = 0;
    view->GotoBestMap(ZT_HWND(), 50.0, 50.0, 1.0, [&](bool ok) { answers += ok ? 100 : 1; });
    view->GotoBestMap(ZT_HWND(), 91.0, 50.0, 1.0, [&](bool ok) { answers += ok ? 100 : 1; });
    SetViewServices(nullptr);
    EXPECT_EQ(services.asked, std::vector<double>{50.0});
    EXPECT_EQ(answers, 2);
    EXPECT_TRUE(view->IsOpen());
}

TEST_F(ViewTest, GotoMovesOrChangesTheChart)
{
    Chart("here.rlt", 1.0);
    Chart("there.rlt", 1.0, 16, 30.0, 30.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 4.0, {});
    view->GotoLocation(ZT_HWND(), 3.0, -3.0, true);
    EXPECT_EQ(view->Params().level, 0);
    EXPECT_NEAR(At(3.0, -3.0).x, 400.0, 1.0);
    view->GotoLocation(ZT_HWND(), 31.0, 31.0, true);
    EXPECT_EQ(Shown(), "there.rlt");
    EXPECT_NEAR(At(31.0, 31.0).y, 300.0, 1.0);
    CBounds area;
    area.add(-6.0, -6.0);
    area.add(6.0, 6.0);
    view->GotoLocation(area);
    EXPECT_EQ(Shown(), "here.rlt");
    EXPECT_GT(At(-6.0, -6.0).x, 0.0);
    EXPECT_LT(At(-6.0, 6.0).y, 600.0);
}

TEST_F(ViewTest, AnAreaAskedForBeforeTheViewHasASizeIsShownThen)
{
    Chart("coast.rlt", 0.05, 64);
    Chart("harbour.rlt", 0.002, 64);
    MakeCatalogue();
    view = std::make_unique<CRastelleView>(&host);
    CBounds area;
    area.add(-0.01, -0.01);
    area.add(0.01, 0.01);
    view->GotoLocation(area);
    view->setScreenRect(0.0, 0.0, kWidth, kHeight);
    EXPECT_EQ(Shown(), "harbour.rlt");
    EXPECT_NEAR(At(0.0, 0.0).x, kWidth / 2.0, 1.0);
    EXPECT_GT(At(-0.01, 0.0).y - At(0.01, 0.0).y, kHeight / 3.0);
}

TEST_F(ViewTest, SavedViewComesBack)
{
    const std::string here = Chart("here.rlt", 1.0);
    Chart("other.rlt", 8.0);
    MakeView();
    Fix(1.0, 1.0);
    ASSERT_TRUE(Open(here));
    view->LockOnToGPS(ZT_HWND(), true);
    view->SmoothZoom(1);
    double dx = 100.0;
    double dy = 50.0;
    view->DoScroll(dx, dy);
    const DblPoint anchor = At(1.0, 1.0);
    const std::string file = root.file("v.dvqc");
    ASSERT_TRUE(view->WriteFile(file, ZT_HWND(), 0));

    CRastelleView again(&host);
    ASSERT_TRUE(again.ReadFile(file, ZT_HWND(), 0));
    again.setScreenRect(0, 0, kWidth, kHeight);
    EXPECT_TRUE(again.IsOpen());
    EXPECT_TRUE(again.IsLockedOnGPS());
    EXPECT_EQ(again.Params().level, 1);
    DblPoint at;
    again.LatLongToScreen(1.0, 1.0, at.x, at.y);
    EXPECT_NEAR(at.x, anchor.x, 1.0);
    EXPECT_NEAR(at.y, anchor.y, 1.0);

    std::filesystem::remove(here);
    catalogue->Refresh();
    CRastelleView without(&host);
    ASSERT_TRUE(without.ReadFile(file, ZT_HWND(), 0));
    EXPECT_EQ(std::filesystem::path(without.CurrentPath()).filename(), "other.rlt") << "the best chart of what is left";
}

TEST_F(ViewTest, AViewFarOffItsChartOpensTheChartAgain)
{
    Geo_ref_coeff_t nowhere{};
    for (auto* cubics : {nowhere.forward, nowhere.inverse}) cubics[0][0] = std::numeric_limits<double>::quiet_NaN();
    const std::string charts[] = {Chart("here.rlt", 1.0),
                                  WriteChart(root.file("nowhere.rlt"), ChartAt(0, 0, 1.0, 4).Georeferencing(nowhere))};
    const std::string file = root.file("v.dvqc");
    for (const std::string& chart : charts) {
        for (const double away : {0.0, 1e7, -1e7}) {
            SCOPED_TRACE(testing::Message() << chart << " scrolled by " << away);
            MakeView();
            ASSERT_TRUE(Open(chart));
            double dx = away;
            double dy = away;
            view->DoScroll(dx, dy);
            ASSERT_TRUE(view->WriteFile(file, ZT_HWND(), 0));
            CRastelleView again(&host);
            EXPECT_TRUE(again.ReadFile(file, ZT_HWND(), 0));
            EXPECT_EQ(again.CurrentPath(), chart);
        }
    }
}

TEST_F(ViewTest, DamagedViewGivesDefaultsAndIsKept)
{
    const std::string here = Chart("here.rlt", 1.0);
    MakeView();
    ASSERT_TRUE(Open(here));
    const std::string good = view->WriteMemory(0);
    ASSERT_FALSE(good.empty());
    const std::string file = getAppDirectory() + "/0.dvqc";
    const auto damage = [&](std::size_t at, char with) {
        std::string bytes = good;
        bytes[at] = with;
        return bytes;
    };
    const std::size_t latitude = good.find("here.rlt") + 8; // behind the name
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"cut_in_the_middle", good.substr(0, good.size() / 2)},
        {"other_magic", damage(9, 0)},
        {"no_section", damage(4, 0)},
        {"latitude_not_a_number", damage(latitude + 7, '\x7F').replace(latitude + 6, 1, "\xFF")},
    };
    for (const auto& c : cases) {
        std::ofstream(file, std::ios::binary) << c.bytes;
        CRastelleView fresh(&host);
        EXPECT_FALSE(fresh.ReadFile(file, ZT_HWND(), 0)) << c.name;
        EXPECT_FALSE(fresh.IsOpen()) << c.name;
        EXPECT_TRUE(std::filesystem::exists(file + ".damaged")) << c.name;
        std::filesystem::remove(file + ".damaged");
    }
}

} // namespace
