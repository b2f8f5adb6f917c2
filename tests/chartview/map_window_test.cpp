#include "support/patience.h"
#include "view_fixture.h"

#include "chartview/map_item.h"
#include "chartview/map_settings.h"
#include "chartview/qml_register_chartview.h"
#include "chartview/rastelle_window.h"
#include "core/global_settings_type.h"
#include "core/persistant_data.h"
#include "ui/qml_register_ui.h"
#include "ui/ui_context.h"

#include <fstream>

#include <QPointer>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

namespace {

struct TestContext : IUiContext {
    QQmlEngine* Engine() override { return engine; }
    QQuickItem* DialogParent() override { return layer; }
    void stopInactivityTimeout() override {}
    void startInactivityTimeout() override {}
    void showHelpForTag(const QString&) override {}
    void SetStatusText(const QString&) override {}
    void SetShowDoneButton(bool) override {}
    QQmlEngine* engine = nullptr;
    QQuickItem* layer = nullptr;
};

/// The real DVI_Rastelle.qml over a window of 600 x 400.
class MapWindow : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        static const bool registered = [] {
            if (QQuickStyle::name().isEmpty()) QQuickStyle::setStyle(QStringLiteral("Material"));
            qml_register_ui();
            qml_register_chartview();
            return true;
        }();
        Q_UNUSED(registered);
        Chart("one.rlt", 1.0, 32);
        MakeCatalogue();
        window = std::make_unique<QQuickView>();
        window->setResizeMode(QQuickView::SizeRootObjectToView);
        window->resize(600, 400);
        QObject::connect(window->engine(), &QQmlEngine::warnings, window.get(), [this](const QList<QQmlError>& list) {
            for (const QQmlError& warning : list) warnings += warning.toString().toStdString() + "\n";
        });
        window->setSource(QUrl(QStringLiteral("qrc:/DVI_Rastelle.qml")));
        map = qobject_cast<CDVI_Rastelle_Window*>(window->rootObject());
        ASSERT_NE(map, nullptr) << warnings;
        map->openMap();
        window->show();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), kPatience_ms));
        map->forceActiveFocus();
        ASSERT_TRUE(QTest::qWaitFor([this] { return map->View()->Screen().width() == 600.0; }, kPatience_ms));
        map->View()->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
        ASSERT_EQ(Middle(), QPointF(300, 200));
    }
    void TearDown() override
    {
        EXPECT_EQ(warnings, "");
        window.reset();
        ViewTest::TearDown();
    }
    QPointF Middle() const { return Place(0.0, 0.0); }
    QPointF Place(double lat, double lon) const
    {
        double x = 0.0;
        double y = 0.0;
        map->View()->LatLongToScreen(lat, lon, x, y);
        return {x, y};
    }
    QQuickItem* Find(const char* name) const { return map->findChild<QQuickItem*>(QString::fromLatin1(name)); }
    void Wheel(QPoint angle, Qt::ScrollPhase phase = Qt::NoScrollPhase, QPoint pixels = {})
    {
        const QPointF at(100, 100);
        QWheelEvent event(at, window->mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier, phase, false);
        QCoreApplication::sendEvent(window.get(), &event);
    }

    /// Moves of fingers are delivered with the next frame.
    void WaitForFrame()
    {
        QSignalSpy frames(window.get(), &QQuickWindow::frameSwapped);
        window->update();
        EXPECT_TRUE(frames.wait(kPatience_ms));
    }

    std::unique_ptr<QQuickView> window;
    CDVI_Rastelle_Window* map = nullptr;
    std::string warnings;
};

TEST_F(MapWindow, MouseDragsTheChartAndAClickDoesNot)
{
    QTest::mousePress(window.get(), Qt::LeftButton, {}, {300, 200});
    QTest::mouseMove(window.get(), {350, 210});
    QTest::mouseMove(window.get(), {360, 220});
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, {360, 220});
    EXPECT_EQ(Middle(), QPointF(360, 220));
    EXPECT_TRUE(map->View()->HasMoved());
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, {100, 100});
    EXPECT_FALSE(map->View()->HasMoved());
    EXPECT_EQ(Middle(), QPointF(360, 220));
}

TEST_F(MapWindow, WheelStepsOnceANotchAboutThePointer)
{
    double lat = 0.0;
    double lon = 0.0;
    map->View()->ScreenTolatlong(100, 100, lat, lon);
    Wheel({0, 120});
    EXPECT_EQ(map->View()->Params().level, -1);
    EXPECT_EQ(Place(lat, lon), QPointF(100, 100));
    Wheel({0, -240});
    EXPECT_EQ(map->View()->Params().level, 0) << "the size of the step does not count";
    EXPECT_EQ(Place(lat, lon), QPointF(100, 100));
}

TEST_F(MapWindow, TrackpadScrolls)
{
    Wheel({0, 15});
    EXPECT_EQ(map->View()->Params().level, 0);
    EXPECT_EQ(Middle(), QPointF(300, 215));
    Wheel({30, 0});
    EXPECT_EQ(Middle(), QPointF(330, 215)) << "a trackpad until a mouse wheel turns";
    Wheel({0, 120});
    EXPECT_EQ(map->View()->Params().level, -1);
}

TEST_F(MapWindow, FingersDragPinchAndAThirdIsIgnored)
{
    QPointingDevice* const screen = QTest::createTouchDevice();
    QWindow* const w = window.get();
    QTest::touchEvent(w, screen).press(0, {300, 200});
    QTest::touchEvent(w, screen).move(0, {330, 200});
    QTest::touchEvent(w, screen).move(0, {360, 240});
    WaitForFrame();
    EXPECT_NEAR(Middle().x(), 360, 1);
    EXPECT_NEAR(Middle().y(), 240, 1);

    QTest::touchEvent(w, screen).move(0, {360, 240}).press(1, {460, 240});
    QTest::touchEvent(w, screen).move(0, {320, 240}).move(1, {500, 240});
    WaitForFrame();
    EXPECT_NEAR(map->View()->SmoothScale(), 1.8 / 2, 0.02) << "above 1.75: one level in";
    EXPECT_EQ(map->View()->Params().level, -1);
    const double stretch = map->View()->SmoothScale();
    QTest::touchEvent(w, screen).move(0, {320, 240}).move(1, {500, 240}).press(2, {100, 100});
    QTest::touchEvent(w, screen).move(0, {200, 240}).move(1, {590, 240}).move(2, {120, 100});
    WaitForFrame();
    EXPECT_EQ(map->View()->SmoothScale(), stretch) << "three fingers change nothing";
    QTest::touchEvent(w, screen).release(0, {200, 240}).release(1, {590, 240}).release(2, {120, 100});
    WaitForFrame();
    EXPECT_EQ(map->View()->Params().level, 0) << "settled: 0.9 at level -1 goes out";
    for (int i = 0; i < 60; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(map->View()->SmoothScale(), 1.0);
    const QPointF before = Middle();
    QTest::touchEvent(w, screen).press(0, {50, 50});
    QTest::touchEvent(w, screen).release(0, {50, 50});
    EXPECT_EQ(Middle(), before);
}

TEST_F(MapWindow, KeysScrollZoomAndLeaveTheRest)
{
    const struct {
        Qt::Key key;
        double dx, dy;
    } cases[] = {
        {Qt::Key_Home, 100, 100}, {Qt::Key_End, 100, -100}, {Qt::Key_Left, 100, 0},      {Qt::Key_Right, -100, 0},
        {Qt::Key_Up, 0, 100},     {Qt::Key_Down, 0, -100},  {Qt::Key_PageUp, -100, 100}, {Qt::Key_PageDown, -100, -100},
        {Qt::Key_Escape, 0, 0},   {Qt::Key_F5, 0, 0},
    };
    for (const auto& c : cases) {
        const QPointF before = Middle();
        QTest::keyClick(window.get(), c.key);
        EXPECT_EQ(Middle() - before, QPointF(c.dx, c.dy)) << c.key;
        EXPECT_EQ(map->onKeyPressed(c.key), c.dx != 0 || c.dy != 0) << c.key;
    }
    for (const Qt::Key in : {Qt::Key_Plus, Qt::Key_Equal}) QTest::keyClick(window.get(), in);
    EXPECT_EQ(map->View()->Params().level, -2);
    for (const Qt::Key out : {Qt::Key_Minus, Qt::Key_Underscore, Qt::Key_Minus}) QTest::keyClick(window.get(), out);
    EXPECT_EQ(map->View()->Params().level, 1);
    map->setArranging(true);
    EXPECT_FALSE(map->onKeyPressed(Qt::Key_Plus)) << "no keys while the page is arranged";
    EXPECT_FALSE(Find("mapsButton")->isVisible());
}

TEST_F(MapWindow, ScaleBarIsRoundFitsAndDoesNotFlicker)
{
    QSignalSpy changes(map, &CDVI_Rastelle_Window::scaleBarChanged);
    CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(map->scaleBarText(), "200 NM");
    EXPECT_NEAR(map->scaleBarWidth(), 200.0, 0.1);
    EXPECT_TRUE(Find("scaleBar")->isVisible());
    EXPECT_NEAR(Find("scaleBar")->x() + Find("scaleBar")->width() / 2, 300.0, 1.0);
    QTest::keyClick(window.get(), Qt::Key_Left);
    for (int i = 0; i < 5; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.size(), 1) << "the same scale";
    TheViewSettings().show_scale_bar = false;
    for (int i = 0; i < 3; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.size(), 2);
    EXPECT_FALSE(Find("scaleBar")->isVisible());
    TheViewSettings().show_scale_bar = true;
    window->resize(400, 400);
    ASSERT_TRUE(QTest::qWaitFor([this] { return map->View()->Screen().width() == 400.0; }, kPatience_ms));
    CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_LE(map->scaleBarWidth(), 160.0);
    EXPECT_GE(map->scaleBarWidth(), 64.0);
}

TEST_F(MapWindow, LockButtonFollowsThePosition)
{
    QSignalSpy changes(map, &CDVI_Rastelle_Window::gpsLockedOnChanged);
    Fix(2.0, 2.0);
    QQuickItem* const button = Find("lockGPSButton");
    ASSERT_TRUE(button->isVisible());
    EXPECT_GE(std::min(button->width(), button->height()), 36.0);
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    EXPECT_TRUE(map->gpsLockedOn());
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(Place(2.0, 2.0), QPointF(300, 200));
    double dx = 500.0;
    double dy = 0.0;
    map->View()->DoScroll(dx, dy);
    CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.size(), 2) << "told by the heartbeat";
    Fix(999.0, 999.0);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_TRUE(map->gpsLockedOn()) << "by the keyboard";
}

TEST_F(MapWindow, MapsButtonAndMenusAskTheServices)
{
    struct Services : IViewServices {
        void ShowMapListDialog(CRastelleView*, ZT_HWND from, std::function<void()>) override { list_from = from.item; }
        void ShowContextMenu(CRastelleView&, double x, double) override { menu_x = x; }
        QQuickItem* list_from = nullptr;
        double menu_x = 0;
    } services;
    SetViewServices(&services);
    QQuickItem* const button = Find("mapsButton");
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    EXPECT_EQ(services.list_from, button);
    QTest::mouseClick(window.get(), Qt::RightButton, {}, {222, 100});
    EXPECT_EQ(services.menu_x, 222.0);
    SetViewServices(nullptr);
}

TEST_F(MapWindow, DeviceRatioScalesEveryCoordinate)
{
    SetGraphicsResolution(2.0);
    map->onSingleTouchDown(100, 100);
    map->onSingleTouchMove(110, 105);
    EXPECT_EQ(Middle(), QPointF(320, 210));
    map->onScrollGesture(QPointF(10, 0), false);
    EXPECT_EQ(Middle(), QPointF(300, 210));
    map->onKeyPressed(Qt::Key_Left);
    EXPECT_EQ(Middle(), QPointF(500, 210));
    SetGraphicsResolution(1.0);
}

TEST_F(MapWindow, ViewLivesInItsFileAndADamagedOneIsKept)
{
    map->View()->SmoothZoom(-1);
    map->closeMap();
    EXPECT_EQ(map->View(), nullptr);
    map->onMouseWheel(120, 1, 1);
    EXPECT_FALSE(map->onPressed(1, 1, 1));
    map->openMap();
    EXPECT_EQ(map->View()->Params().level, -1);
    EXPECT_TRUE(CMapItem::SaveAllMaps());

    const std::string file = getAppDirectory() + "/0.dvqc";
    map->closeMap();
    std::ofstream(file, std::ios::binary) << "noise";
    map->openMap();
    EXPECT_TRUE(map->View()->IsOpen()) << "the start chart instead";
    EXPECT_TRUE(std::filesystem::exists(file + ".damaged"));
}

TEST_F(MapWindow, ShowsTheChart)
{
    ASSERT_TRUE(QTest::qWaitFor(
        [this] {
            CHeartbeat::TheHeartbeat.Pulse();
            return !map->View()->IsLoading();
        },
        kPatience_ms));
    CHeartbeat::TheHeartbeat.Pulse();
    const QColor plain = window->grabWindow().pixelColor(150, 100);
    EXPECT_NE(plain, QColor(0xC4, 0xD3, 0xDC)) << "the colour of no chart";
    map->closeMap();
    EXPECT_EQ(window->grabWindow().pixelColor(150, 100), QColor(0xC4, 0xD3, 0xDC));
}

TEST_F(MapWindow, MapSettingsDialogChangesTheSettings)
{
    TestContext context;
    context.engine = window->engine();
    context.layer = window->contentItem();
    SetUiContext(&context);
    CGlobalSettingsType* const first = CGlobalSettingsType::First();
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->name, "Map Settings");
    CDlg_map_settings* const dialog = CZTDialog::ShowDialog<CDlg_map_settings>(ZT_HWND(map));
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->chartTypes(), QStringList{"Topo"});
    auto* const zooming = dialog->findChild<QQuickItem*>("changeScale");
    ASSERT_NE(zooming, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return zooming->isVisible() && zooming->width() > 0; }, kPatience_ms));
    zooming->forceActiveFocus();
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_FALSE(TheViewSettings().change_scale_by_zooming);
    dialog->showType("Topo", false);
    EXPECT_TRUE(dialog->isTypeShown("Topo")) << "the last type stays";
    dialog->showType("Basemap", true);
    dialog->showType("Topo", false);
    EXPECT_FALSE(dialog->isTypeShown("Topo"));
    dialog->closeDialog(0);
    const QPointer<CDlg_map_settings> closing(dialog);
    EXPECT_TRUE(QTest::qWaitFor([&] { return closing.isNull(); }, kPatience_ms));
    SetUiContext(nullptr);
}

TEST_F(ViewTest, SettingsAreKept)
{
    PersistantData::LoadAll("zentara");
    TheViewSettings().show_scale_bar = false;
    TheViewSettings().app_default_lat = 12.0;
    SaveViewSettings();
    TheViewSettings() = CViewSettings();
    PersistantData::LoadAll("zentara");
    EXPECT_FALSE(TheViewSettings().show_scale_bar);
    EXPECT_EQ(TheViewSettings().app_default_lat, 43.04144) << "never saved";
    std::ofstream(getAppDirectory() + "/zentara.ini", std::ios::app) << "CRastelleView:app_default_lat=12.5\n";
    PersistantData::LoadAll("zentara");
    EXPECT_EQ(TheViewSettings().app_default_lat, 12.5);
    PersistantData::appname.clear();
}

} // namespace
