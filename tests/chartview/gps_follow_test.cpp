#include "support/patience.h"
#include "view_fixture.h"

#include "chartview/qml_register_chartview.h"
#include "chartview/rastelle_window.h"
#include "overlays/gps_position.h"
#include "ui/qml_register_ui.h"

#include <vector>

#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

namespace {

using Ship = COverlayGPSPosition;

struct CAreaHost : IViewHost {
    void InvalidateView() override { ++whole; }
    void InvalidateArea(const FRect& area) override { areas.push_back(area); }
    ZT_HWND hWnd() override { return {}; }
    void Clear()
    {
        whole = 0;
        areas.clear();
    }
    int whole = 0;
    std::vector<FRect> areas;
};

/// Two charts side by side, and the own ship between them.
class FollowingView : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        ForgetShip();
        Chart("west.rlt", 0.1, 16, 0.1, -1.0); // to lon -0.15
        Chart("east.rlt", 0.1, 16, 0.1, 0.7);  // from lon -0.15
        MakeCatalogue();
    }
    void TearDown() override
    {
        ForgetShip();
        ViewTest::TearDown();
    }
    void OpenView()
    {
        view = std::make_unique<CRastelleView>(&areas);
        view->setScreenRect(0.0, 0.0, kWidth, kHeight);
        view->GotoBestMap(ZT_HWND(), 0.1, -1.0, 0.1, {});
    }
    /// Paints until every square of the picture is there.
    template <class Paint>
    static void Load(CRastelleView& loading, Paint paint)
    {
        for (int i = 0; i < kPatience_ms; ++i) {
            paint();
            if (!loading.IsLoading()) return;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            loading.onTimer();
        }
        ADD_FAILURE() << "still loading";
    }
    static void ForgetShip()
    {
        Ship::show_vector = true;
        static_cast<CDataSpeedDirection&>(ship) = CDataSpeedDirection();
        ship.set_latlon(999.0, 999.0);
        ship.status = CDataGPSPosition::kNoFix;
        ship.reset_history();
        ship.Dispatch(COverlayObject::kChanged);
    }
    static void Sail(double lat, double lon)
    {
        ship.set_latlon(lat, lon);
        ship.status = CDataGPSPosition::kFix;
        ship.time = test_now += 1.0;
        ship.DispatchPositionUpdate();
    }

    static constexpr Ship& ship = Ship::theLatestPosition;
    CAreaHost areas;
};

TEST_F(FollowingView, TheShipKeepsItsPlaceOnTheScreen)
{
    Sail(0.1, -1.0);
    OpenView();
    double lat = 0.0;
    double lon = 0.0;
    EXPECT_TRUE(view->GetLatestGPSLatLon(lat, lon)) << "a view that is opened later knows the ship";
    view->LockOnToGPS(ZT_HWND(), true);
    for (int i = 0; i < 20; ++i) {
        Sail(0.1 + i * 0.003, -1.0 + i * 0.01);
        EXPECT_NEAR(At(ship.latitude, ship.longitude).x, kWidth / 2.0, 1.0) << i;
        EXPECT_NEAR(At(ship.latitude, ship.longitude).y, kHeight / 2.0, 1.0) << i;
    }
    double dx = -250.0;
    double dy = 120.0;
    view->DoScroll(dx, dy);
    Sail(0.1, -0.7);
    EXPECT_TRUE(view->IsLockedOnGPS());
    EXPECT_NEAR(At(0.1, -0.7).x, 150.0, 1.0) << "the user has put it there";
    EXPECT_NEAR(At(0.1, -0.7).y, 420.0, 1.0);
    dx = -200.0;
    dy = 0.0;
    view->DoScroll(dx, dy);
    EXPECT_FALSE(view->IsLockedOnGPS()) << "pushed over the edge";
    const double before = view->Params().offset_x;
    Sail(0.1, -0.6);
    EXPECT_EQ(view->Params().offset_x, before);
}

TEST_F(FollowingView, TheNextChartOpensByItself)
{
    Sail(0.1, -0.5);
    OpenView();
    view->LockOnToGPS(ZT_HWND(), true);
    ASSERT_EQ(Shown(), "west.rlt");
    for (double lon = -0.5; lon < 0.3; lon += 0.02) {
        Sail(0.1, lon);
        ASSERT_TRUE(view->IsOpen()) << lon;
        EXPECT_TRUE(view->IsLockedOnGPS()) << lon;
        EXPECT_NEAR(At(0.1, lon).x, kWidth / 2.0, 1.0) << lon;
    }
    EXPECT_EQ(Shown(), "east.rlt");
}

TEST_F(FollowingView, APositionWithoutFixOrChartLeavesTheView)
{
    Sail(0.1, -1.0);
    OpenView();
    view->LockOnToGPS(ZT_HWND(), true);
    const CViewParams before = view->Params();
    for (int i = 0; i < 50; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(ship.status, CDataGPSPosition::kNoFix);
    EXPECT_EQ(view->Params().offset_x, before.offset_x);
    EXPECT_TRUE(view->IsLockedOnGPS());
    Sail(60.0, 100.0);
    EXPECT_EQ(Shown(), "west.rlt") << "no chart lies there";
    EXPECT_TRUE(view->IsOpen());
    Sail(0.2, -1.0);
    EXPECT_NEAR(At(0.2, -1.0).y, kHeight / 2.0, 1.0) << "resumes by itself";
}

TEST_F(FollowingView, RepaintsNoMoreThanTheShipHasChanged)
{
    Sail(0.1, -1.0);
    OpenView();
    view->LockOnToGPS(ZT_HWND(), true);
    Sail(0.1, -1.0);
    Load(*view, [this] { Paint(); });
    areas.Clear();
    QImage before = Paint();
    ship.set_course(90.0F, 30.0F);
    Sail(0.1, -1.0);
    ASSERT_EQ(areas.whole, 0) << "locked and at rest";
    ASSERT_EQ(areas.areas.size(), 1U);
    const FRect rest = areas.areas[0];
    EXPECT_TRUE(rest.contains(kWidth / 2.0, kHeight / 2.0));
    EXPECT_LT(rest.width(), 250.0);
    EXPECT_LT(rest.height(), 150.0);

    // What has changed lies in the area: blinking, vector, a step of the ship.
    const auto expect_covered = [&](const char* what) {
        const QImage after = Paint();
        EXPECT_NE(before, after) << what;
        ASSERT_EQ(areas.areas.size(), 1U) << what;
        const FRect area = areas.areas[0];
        int outside = 0;
        for (int y = 0; y < after.height(); ++y)
            for (int x = 0; x < after.width(); ++x)
                if (before.pixel(x, y) != after.pixel(x, y) && !area.contains(x, y)) ++outside;
        EXPECT_EQ(outside, 0) << what;
        before = after;
        areas.Clear();
    };
    expect_covered("blink and vector");
    double dx = 100.0;
    double dy = -80.0;
    view->DoScroll(dx, dy);
    view->LockOnToGPS(ZT_HWND(), false);
    before = Paint();
    areas.Clear();
    Sail(0.11, -0.95);
    EXPECT_EQ(areas.whole, 0);
    expect_covered("a step");
    for (int i = 0; i < 50; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(areas.whole, 0);
    expect_covered("the icon turns grey");
    ship.set_course(0.0F, 0.0F);
    ship.set_heading(200.0F, 1.0);
    ship.DispatchHeadingUpdate();
    Sail(0.11, -0.95);
    areas.areas.resize(1);
    expect_covered("compass");
    Ship::show_vector = false; // a jump's would reach far
    Sail(0.8, -0.2);
    areas.Clear();
    Sail(0.81, -0.2);
    for (const FRect& area : areas.areas)
        ADD_FAILURE() << "beside the window: " << area.left << ", " << area.top << " to " << area.right << ", "
                      << area.bottom;
    EXPECT_EQ(areas.whole, 0);
}

/// The real DVI_Rastelle.qml.
class ShipInWindow : public FollowingView {
protected:
    void SetUp() override
    {
        FollowingView::SetUp();
        static const bool registered = [] {
            if (QQuickStyle::name().isEmpty()) QQuickStyle::setStyle(QStringLiteral("Material"));
            qml_register_ui();
            qml_register_chartview();
            return true;
        }();
        Q_UNUSED(registered);
        window.setResizeMode(QQuickView::SizeRootObjectToView);
        window.resize(600, 400);
        window.setSource(QUrl(QStringLiteral("qrc:/DVI_Rastelle.qml")));
        map = qobject_cast<CDVI_Rastelle_Window*>(window.rootObject());
        ASSERT_NE(map, nullptr);
        map->openMap();
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, kPatience_ms));
        ASSERT_TRUE(QTest::qWaitFor([this] { return map->View()->Screen().width() == 600.0; }, kPatience_ms));
    }
    QQuickItem* LockButton() const { return map->findChild<QQuickItem*>(QStringLiteral("lockGPSButton")); }
    QImage Frame()
    {
        for (int i = 0; i < 3; ++i) {
            QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
            window.update();
            frames.wait(kPatience_ms);
        }
        return window.grabWindow();
    }

    QQuickView window;
    CDVI_Rastelle_Window* map = nullptr;
};

TEST_F(ShipInWindow, TheLockButtonFollowsAndShowsIt)
{
    Sail(0.1, -1.0);
    QSignalSpy lock(map, &CDVI_Rastelle_Window::gpsLockedOnChanged);
    const QPointF centre = LockButton()->mapToScene(QPointF(LockButton()->width() / 2, LockButton()->height() / 2));
    QTest::mouseClick(&window, Qt::LeftButton, {}, centre.toPoint());
    EXPECT_TRUE(map->gpsLockedOn());
    EXPECT_EQ(lock.count(), 1);
    Sail(0.15, -0.9);
    double x = 0.0;
    double y = 0.0;
    map->View()->LatLongToScreen(0.15, -0.9, x, y);
    EXPECT_NEAR(x, 300.0, 1.0);
    EXPECT_NEAR(y, 200.0, 1.0);
    double dx = 400.0;
    double dy = 0.0;
    map->View()->DoScroll(dx, dy);
    CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_FALSE(map->gpsLockedOn());
    EXPECT_EQ(lock.count(), 2) << "the button is told of the lost lock";
}

TEST_F(ShipInWindow, PartialPaintingLeavesNoTraces)
{
    Sail(0.1, -1.0);
    map->View()->GotoBestMap(ZT_HWND(), 0.1, -1.0, 0.1, {});
    Load(*map->View(), [this] { Frame(); });
    ship.set_course(45.0F, 20.0F);
    for (int i = 1; i <= 12; ++i) {
        Sail(0.1 + i * 0.004, -1.0 + i * 0.01);
        if (i % 4 == 0) map->Invalidate(); // before and after an area
        if (i % 3 == 0) Frame();
    }
    const QImage by_parts = Frame();
    map->Invalidate();
    EXPECT_EQ(by_parts, Frame());
}

} // namespace
