#include "view_fixture.h"

#include "chartview/chart_overlay_views.h"
#include "chartview/selection_tool.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"

namespace {

/// A view of an open chart around 0, 0 with the program's marks, routes and tracks on it.
class SelectionTool : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        Forget();
        g_mark_manager.LoadFromFile();
        g_track_manager.LoadFromFile();
        const std::string path = Chart("chart.rlt", 0.1);
        MakeView();
        ASSERT_TRUE(Open(path));
        view->GotoLocation(ZT_HWND(), 0.0, 0.0, true);
    }
    void TearDown() override
    {
        COverlayTool::DeselectTool();
        Forget();
        ViewTest::TearDown();
    }
    static void Forget()
    {
        g_mark_manager.ClearAll();
        g_track_manager.ClearAll();
    }
    static COverlayMark& AddMark(const char* name, double lat, double lon)
    {
        g_mark_manager.CreateNewMark(nullptr, lat, lon);
        COverlayMark& mark = *g_mark_manager.marks.back();
        mark.name = name;
        return mark;
    }
    static COverlayTrack& AddTrack(int points)
    {
        auto* const track = new COverlayTrack;
        track->name = "T";
        for (int i = 0; i < points; ++i) track->addPoint({0.0, 0.0005 * i, 1e9 + 10.0 * i, 0.0F}, false);
        g_track_manager.AddTrack(track);
        track->Dispatch(COverlayObject::kChanged);
        return *track;
    }
    void Tap(const DblPoint& at)
    {
        view->onSingleTouchDown(at.x, at.y);
        view->onSingleTouchUp();
    }
    enum Pointer { kFinger, kMouse };
    /// In steps, as a hand does.
    void Drag(Pointer pointer, const DblPoint& from, double dx, double dy)
    {
        constexpr int kSteps = 40;
        pointer == kFinger ? view->onSingleTouchDown(from.x, from.y) : view->onMouseDown(from.x, from.y);
        for (int i = 1; i <= kSteps; ++i) {
            const double x = from.x + dx * i / kSteps;
            const double y = from.y + dy * i / kSteps;
            pointer == kFinger ? view->onSingleTouchMove(x, y) : view->onMouseDragged(x, y);
        }
        pointer == kFinger ? view->onSingleTouchUp() : view->onMouseUp(true);
    }

    CChartOverlayViews overlay_views;
};

TEST_F(SelectionTool, SelectsByTapAndLetsGo)
{
    COverlayMark& mark = AddMark("A", 0.02, 0.02);
    COverlayMark& other = AddMark("B", -0.05, 0.05);
    Tap(At(0.02, 0.02));
    ASSERT_NE(COverlayTool::The(), nullptr);
    EXPECT_EQ(COverlayTool::The()->GetSelectedMark(), &mark);
    EXPECT_TRUE(overlay_views.IsSelected(mark));
    Tap(At(-0.05, 0.05));
    EXPECT_EQ(COverlayTool::The()->GetSelectedMark(), &other);
    Tap(At(0.08, -0.08)); // nothing there
    EXPECT_EQ(COverlayTool::The(), nullptr);
    Tap(At(0.02, 0.02));
    g_mark_manager.DeleteMark(&mark);
    EXPECT_EQ(COverlayTool::The(), nullptr);
    Tap(At(-0.05, 0.05));
    ASSERT_NE(COverlayTool::The(), nullptr);
    view.reset();
    EXPECT_EQ(COverlayTool::The(), nullptr);
}

TEST_F(SelectionTool, DragsTheSelectedMarkUnderFingerAndMouse)
{
    for (const Pointer pointer : {kFinger, kMouse}) {
        COverlayMark& mark = AddMark("A", 0.0, 0.0);
        Tap(At(0.0, 0.0));
        const DblPoint before = At(0.0, 0.0);
        Drag(pointer, before, 143.0, -87.0);
        const DblPoint after = At(mark.lat, mark.lon);
        EXPECT_NEAR(after.x, before.x + 143.0, 1.0);
        EXPECT_NEAR(after.y, before.y - 87.0, 1.0);
        EXPECT_EQ(At(0.0, 0.0).x, before.x) << "the chart stays where it is";
        mark.setLocked(true);
        Drag(pointer, after, 50.0, 50.0);
        EXPECT_NEAR(At(mark.lat, mark.lon).x, after.x, 0.001);
        COverlayTool::DeselectTool();
        g_mark_manager.ClearAll();
    }
}

TEST_F(SelectionTool, DragsFromWhereTheMarkIsAfterTheViewWentElsewhere)
{
    COverlayMark& mark = AddMark("A", 0.02, 0.02);
    Tap(At(0.02, 0.02));
    view->GotoLocation(ZT_HWND(), 0.01, 0.03, true);
    const DblPoint before = At(0.02, 0.02);
    Drag(kMouse, before, 30.0, 20.0);
    EXPECT_NEAR(At(mark.lat, mark.lon).x, before.x + 30.0, 1.0);
    EXPECT_NEAR(At(mark.lat, mark.lon).y, before.y + 20.0, 1.0);
}

TEST_F(SelectionTool, AnUnselectedMarkIsNotDraggedByAFinger)
{
    const COverlayMark& mark = AddMark("A", 0.0, 0.0);
    const DblPoint before = At(0.0, 0.0);
    Drag(kFinger, before, 100.0, 0.0);
    EXPECT_EQ(mark.lon, 0.0);
    EXPECT_NEAR(At(0.0, 0.0).x, before.x + 100.0, 1.5) << "the chart moves";
}

TEST_F(SelectionTool, TwoFingersOnTheMarkMoveTheChart)
{
    const COverlayMark& mark = AddMark("A", 0.0, 0.0);
    Tap(At(0.0, 0.0));
    const DblPoint before = At(0.0, 0.0);
    view->onPinchBegin(before.x, before.y, 10000.0);
    for (int i = 1; i <= 10; ++i) view->onPinchMove(before.x + 10.0 * i, before.y, 10000.0);
    view->onPinchEnd();
    EXPECT_EQ(mark.lon, 0.0);
    EXPECT_GT(At(0.0, 0.0).x, before.x + 50.0);
}

TEST_F(SelectionTool, AFingerThatRestsOpensTheMenuOnce)
{
    struct CMenuCounter : IViewServices {
        void ShowContextMenu(CRastelleView&, double, double) override { ++shown; }
        int shown = 0;
    } menus;
    SetViewServices(&menus);
    view->onSingleTouchDown(400.0, 300.0);
    test_now += 0.5;
    view->onTimer();
    EXPECT_EQ(menus.shown, 0);
    test_now += 0.5;
    Ticks(3);
    EXPECT_EQ(menus.shown, 1);
    view->onSingleTouchUp();
    view->onSingleTouchDown(400.0, 300.0);
    view->onSingleTouchMove(480.0, 300.0);
    test_now += 2.0;
    Ticks(3);
    EXPECT_EQ(menus.shown, 1) << "a finger that moves drags";
    view->onSingleTouchUp();
    SetViewServices(nullptr);
}

TEST_F(SelectionTool, LabelsSayWhereFrom)
{
    g_mark_manager.CreateNewRoute(ZT_HWND());
    COverlayRoute& route = *g_mark_manager.routes.back();
    COverlayMark* first = route.AddWaypoint(0.0, 0.0, nullptr, {}, {});
    COverlayMark* second = route.AddWaypoint(0.05, 0.0, nullptr, {}, {});
    COverlayRoute::onDoneButton(&route);
    first->name = "first";
    second->name = "second";
    COverlayTool::Select(*view, *second, {});
    EXPECT_EQ(COverlayTool::The()->Label(), "second\n3.00 NM  000°T");
    COverlayTool::Select(*view, *first, {});
    EXPECT_EQ(COverlayTool::The()->Label(), "first\n3.00 NM  000°T") << "the way on";
    route.ReverseWaypoints();
    EXPECT_EQ(COverlayTool::The()->Label(), "first\n3.00 NM  180°T") << "now it is the last one";
    route.AddWaypointFromMark(AddMark("Harbour", 0.05, 0.05), view.get(), {}, {});
    EXPECT_EQ(COverlayTool::The()->Label().substr(0, 8), "Harbour\n") << "the mark's name, not the template's";
    COverlayTool::Select(*view, AddMark("free", 0.0, 0.0), {});
    EXPECT_EQ(COverlayTool::The()->Label(), "free") << "without a fix there is no origin";
}

TEST_F(SelectionTool, SlidesAlongATrack)
{
    COverlayTrack& track = AddTrack(150); // over three sections
    Tap(At(0.0, 0.0005 * 10));
    ASSERT_NE(COverlayTool::The(), nullptr);
    CTrackSection* section = COverlayTool::The()->GetSelectedTrackSection();
    ASSERT_EQ(section, track.sections.front());
    EXPECT_NEAR(overlay_views.SelectedPoint(*section), 10, 1);
    EXPECT_TRUE(overlay_views.IsSelected(track));
    const DblPoint from = At(0.0, 0.0005 * 10);
    const DblPoint to = At(0.0, 0.0005 * 140);
    Drag(kMouse, from, to.x - from.x, 30.0); // beside the line: the marker stays on it
    section = COverlayTool::The()->GetSelectedTrackSection();
    ASSERT_EQ(section, track.sections.back());
    const int index = overlay_views.SelectedPoint(*section);
    EXPECT_NEAR(section->points[index].lon, 0.0005 * 140, 0.001);
    const std::string label = COverlayTool::The()->Label();
    EXPECT_NE(label.find("T\n"), std::string::npos) << label;
    EXPECT_NE(label.find("NM"), std::string::npos) << label;
    EXPECT_NE(label.find("kts"), std::string::npos) << label;
    EXPECT_EQ(track.getTotalPoints(), 150) << "the track itself is not changed";
    g_track_manager.DeleteTrack(&track);
    EXPECT_EQ(COverlayTool::The(), nullptr);
}

} // namespace
