#include "view_fixture.h"

#include <cmath>

namespace {

class MovingView : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        Chart("one.rlt", 1.0);
        MakeView();
        view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
        ASSERT_TRUE(view->IsOpen());
    }
};

TEST_F(MovingView, DragFollowsTheFingerAndGlides)
{
    view->onSingleTouchDown(400, 300);
    test_now += 0.25;
    view->onSingleTouchMove(450, 300);
    EXPECT_EQ(At(0, 0).x, 450.0);
    Ticks(3);
    EXPECT_EQ(At(0, 0).x, 450.0) << "the finger holds it";
    view->onSingleTouchUp();
    // 50 pixels in 0.25 s are 20 a tick, then 0.9 of it at each: 18, 16.2, ...
    Ticks(1);
    EXPECT_EQ(At(0, 0).x, 468.0);
    Ticks(100);
    const double end = At(0, 0).x;
    EXPECT_GT(end, 560.0);
    EXPECT_LT(end, 640.0);
    host.invalidated = 0;
    Ticks(10);
    EXPECT_EQ(host.invalidated, 0) << "at rest nothing is painted";
}

TEST_F(MovingView, GlideToTheLeftEndsByMagnitude)
{
    view->onSingleTouchDown(400, 300);
    test_now += 0.125;
    view->onSingleTouchMove(350, 300);
    view->onSingleTouchUp();
    Ticks(10);
    EXPECT_LT(At(0, 0).x, 150.0) << "a negative velocity is not a small one";
}

TEST_F(MovingView, TouchStopsTheGlideAndMouseDoesNotGlide)
{
    view->onSingleTouchDown(400, 300);
    test_now += 0.125;
    view->onSingleTouchMove(480, 300);
    view->onSingleTouchUp();
    Ticks(1);
    view->onSingleTouchDown(100, 100);
    const double held = At(0, 0).x;
    view->onSingleTouchUp();
    Ticks(5);
    EXPECT_EQ(At(0, 0).x, held);

    view->onMouseDown(400, 300);
    test_now += 0.25;
    view->onMouseDragged(440, 300);
    view->onMouseUp(true);
    Ticks(5);
    EXPECT_EQ(At(0, 0).x, held + 40.0);
}

TEST_F(MovingView, OneRepaintATick)
{
    view->SmoothZoom(-1);
    host.invalidated = 0;
    Ticks(1);
    EXPECT_EQ(host.invalidated, 1);
}

TEST_F(MovingView, LockedDragKeepsFollowingUntilTheEdge)
{
    Fix(1.0, 1.0);
    view->LockOnToGPS(ZT_HWND(), true);
    EXPECT_EQ(At(1, 1), (DblPoint{400, 300}));
    double dx = 150.0;
    double dy = -20.0;
    view->DoScroll(dx, dy);
    Fix(1.5, 1.5);
    EXPECT_TRUE(view->IsLockedOnGPS());
    EXPECT_EQ(At(1.5, 1.5), (DblPoint{550, 280})) << "the ship stays where it was put";
    view->SmoothZoomAtPoint(-1, 400, 300);
    Fix(1.5, 1.5);
    EXPECT_NEAR(At(1.5, 1.5).x, 700.0, 2.0) << "a zoom takes the anchor along";
    dx = 110.0;
    dy = 0.0;
    view->DoScroll(dx, dy);
    EXPECT_FALSE(view->IsLockedOnGPS()) << "pushed off the edge";
    const DblPoint before = At(1.5, 1.5);
    Fix(1.6, 1.6);
    EXPECT_EQ(At(1.5, 1.5), before);
}

TEST_F(MovingView, FollowingChangesTheChart)
{
    Chart("next.rlt", 1.0, 16, 0.0, 16.0);
    catalogue->Refresh();
    Fix(0.0, 8.0);
    view->LockOnToGPS(ZT_HWND(), true);
    double dx = 200.0;
    double dy = 100.0;
    view->DoScroll(dx, dy);
    Fix(0.0, 9.0);
    EXPECT_EQ(Shown(), "next.rlt");
    EXPECT_TRUE(view->IsLockedOnGPS());
    EXPECT_NEAR(At(0.0, 9.0).x, 600.0, 1.0);
    EXPECT_NEAR(At(0.0, 9.0).y, 400.0, 1.0);
}

TEST_F(MovingView, ResizingKeepsTheMiddleOrTheAnchorsPlace)
{
    view->setScreenRect(0, 0, 1001, 501);
    EXPECT_NEAR(At(0, 0).x, 500.5, 0.5);
    EXPECT_NEAR(At(0, 0).y, 250.5, 0.5);
    Fix(1.0, 1.0);
    view->setScreenRect(0, 0, 800, 600);
    view->LockOnToGPS(ZT_HWND(), true);
    double dx = 200.0;
    double dy = 150.0;
    view->DoScroll(dx, dy);
    view->setScreenRect(0, 0, 400, 300);
    EXPECT_EQ(At(1, 1), (DblPoint{300, 225}));
}

TEST_F(MovingView, StepZoomKeepsThePointAndEases)
{
    double lat = 0.0;
    double lon = 0.0;
    view->ScreenTolatlong(200, 150, lat, lon);
    view->SmoothZoomAtPoint(-1, 200, 150);
    EXPECT_EQ(view->Params().level, -1);
    EXPECT_EQ(view->SmoothScale(), 0.75);
    EXPECT_EQ(At(lat, lon), (DblPoint{200, 150}));
    EXPECT_NEAR(view->getDisplayedScale(), 0.5 / 0.75, 1e-9);
    Ticks(1);
    EXPECT_EQ(view->SmoothScale(), 1.0);
    view->SmoothZoomAtPoint(1, 200, 150);
    EXPECT_EQ(view->SmoothScale(), 1.5);
    Ticks(2);
    EXPECT_EQ(view->SmoothScale(), 1.0);
    EXPECT_EQ(view->Params().level, 0);
    EXPECT_EQ(At(lat, lon), (DblPoint{200, 150}));
}

TEST_F(MovingView, StepZoomStopsAtTheEnds)
{
    for (const bool by_charts : {true, false}) {
        TheViewSettings().change_scale_by_zooming = by_charts;
        for (int i = 0; i < 10; ++i) view->SmoothZoom(-1);
        EXPECT_EQ(view->Params().level, -2) << by_charts;
        Ticks(20);
        EXPECT_EQ(view->SmoothScale(), 1.0);
        host.invalidated = 0;
        view->SmoothZoom(-1);
        EXPECT_EQ(view->SmoothScale(), 1.0) << "only a repaint";
        EXPECT_EQ(host.invalidated, 1);
        for (int i = 0; i < 10; ++i) view->SmoothZoom(1);
        EXPECT_EQ(view->Params().level, 3) << by_charts;
        Ticks(400);
    }
    EXPECT_EQ(sink.hints, 1) << "one chart only: the hint, at most once in two days";
}

TEST_F(MovingView, PinchChangesLevelsAndSettles)
{
    view->onPinchBegin(400, 300, 10000);
    view->onPinchMove(400, 300, 10000 * 1.7 * 1.7);
    EXPECT_EQ(view->Params().level, 0);
    view->onPinchMove(400, 300, 40000);
    EXPECT_EQ(view->Params().level, -1) << "above 1.75";
    EXPECT_NEAR(view->SmoothScale(), 1.0, 1e-9);
    view->onPinchMove(400, 300, 160000);
    EXPECT_EQ(view->Params().level, -2);
    view->onPinchMove(400, 300, 1440000);
    EXPECT_EQ(view->Params().level, -2);
    EXPECT_NEAR(view->SmoothScale(), 3.0, 1e-9) << "at the finest level the stretch grows";
    view->onPinchEnd();
    EXPECT_EQ(view->SmoothScale(), 2.0);
    Ticks(4);
    EXPECT_EQ(view->SmoothScale(), 1.0);

    view->onPinchBegin(400, 300, 1000000);
    view->onPinchMove(400, 300, 62500);
    EXPECT_EQ(view->Params().level, -2) << "pinching out changes levels at its end";
    view->onPinchEnd();
    EXPECT_EQ(view->Params().level, 0);
    EXPECT_NEAR(view->SmoothScale(), 1.0, 1e-9);
}

TEST_F(MovingView, FingerLeftAfterAPinchNeitherJumpsNorTaps)
{
    view->onPinchBegin(400, 300, 10000);
    view->onPinchMove(400, 300, 10000);
    view->onPinchEnd();
    view->onSingleTouchMove(450, 300);
    EXPECT_EQ(At(0, 0).x, 400.0);
    view->onSingleTouchMove(460, 300);
    EXPECT_EQ(At(0, 0).x, 410.0);
    EXPECT_TRUE(view->HasMoved());
}

TEST_F(ViewTest, ZoomingWalksThroughTheCharts)
{
    Chart("fine.rlt", 0.25);
    Chart("middle.rlt", 1.0);
    Chart("coarse.rlt", 4.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    const auto walk = [&](int step) {
        double last = view->getDisplayedScale();
        for (int i = 0; i < 30; ++i) {
            view->SmoothZoomAtPoint(step, 400, 300);
            Ticks(20);
            EXPECT_GE(view->getDisplayedScale() * step, last * step) << "never the other way";
            last = view->getDisplayedScale();
        }
    };
    walk(-1);
    EXPECT_EQ(Shown(), "fine.rlt");
    EXPECT_NEAR(view->getDisplayedScale(), 0.0625, 1e-6);
    walk(1);
    EXPECT_EQ(Shown(), "coarse.rlt");
    EXPECT_NEAR(view->getDisplayedScale(), 32.0, 1e-6);
    EXPECT_NEAR(At(0, 0).x, 400.0, 2.0);

    EXPECT_EQ(view->ChangeMapScale(1), 0);
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    EXPECT_EQ(view->ChangeMapScale(-1), 1);
    EXPECT_EQ(Shown(), "fine.rlt");
    EXPECT_NEAR(view->getDisplayedScale(), 1.0, 1e-6) << "another chart, the same view";
    TheViewSettings().change_scale_by_zooming = false;
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    walk(-1);
    EXPECT_EQ(Shown(), "middle.rlt");
}

TEST_F(ViewTest, PinchingOutOpensTheCoarserChart)
{
    Chart("middle.rlt", 1.0);
    Chart("coarse.rlt", 8.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    TheViewSettings().change_scale_by_zooming = false;
    view->SmoothZoom(1);
    view->SmoothZoom(1);
    TheViewSettings().change_scale_by_zooming = true;
    Ticks(10);
    ASSERT_EQ(view->Params().level, 2);
    ASSERT_EQ(Shown(), "middle.rlt");
    view->onPinchBegin(400, 300, 10000);
    view->onPinchMove(400, 300, 3600);
    view->onPinchEnd();
    EXPECT_EQ(Shown(), "coarse.rlt");
    EXPECT_EQ(view->Params().level, -1);
}

} // namespace
