#include "mark_fixture.h"

#include "core/user_data_changed.h"
#include "gps_own_ship.h"

#include <limits>

#include <QPainter>

namespace {

TEST_F(CMarksTest, NewOnesTakeTheLookOfTheirTemplate)
{
    manager.DefaultMark().SetIcon("Anchor", {0.0F, 1.0F, 0.0F});
    manager.DefaultMark().locked = true;
    manager.DefaultMark().link = "https://example.org";
    COverlayMark& mark = AddMark("", 50.0, -1.0);
    EXPECT_EQ(mark.icon_name, "Anchor");
    EXPECT_EQ(mark.colour, GraphicsColor(0.0F, 1.0F, 0.0F));
    EXPECT_TRUE(mark.isLocked());
    EXPECT_EQ(mark.link, "https://example.org");
    {
        const COverlayMark::CCreatingRoute outer;
        {
            const COverlayMark::CCreatingRoute inner;
            EXPECT_EQ(COverlayMark().icon_name, "Dot");
        }
        EXPECT_TRUE(COverlayMark::creating_route);
    }
    EXPECT_FALSE(COverlayMark::creating_route);
    EXPECT_EQ(COverlayMark().icon_name, "Anchor");

    mark.anchor_radius = 5.0F;
    mark.alarm_radius = 50.0F;
    mark.name = "P7";
    const COverlayMark copy(mark);
    EXPECT_EQ(copy.name, "P8");
    EXPECT_EQ(copy.alarm_radius, 50.0F);
    EXPECT_FALSE(copy.HasPosition());
}

TEST_F(CMarksTest, EqualDataIsToldWithinTwoMetres)
{
    const COverlayMark& mark = AddMark("Pier", 50.0, 179.999995);
    const struct {
        const char* what;
        const char* name;
        double lat, lon;
        bool same, same_waypoint;
    } cases[] = {
        {"all equal", "Pier", 50.0, 179.999995, true, true},
        {"case of letters", "PIER", 50.00001, 179.999995, true, true},
        {"another name", "Quay", 50.0, 179.999995, false, true},
        {"too far north", "Pier", 50.00002, 179.999995, false, false},
        {"across the antimeridian", "Pier", 50.0, -179.999995, true, true},
        {"far east", "Pier", 50.0, -170.0, false, false},
        {"no number", "Pier", std::numeric_limits<double>::quiet_NaN(), 179.999995, false, false},
    };
    COverlayRoute route;
    for (const auto& c : cases) {
        COverlayMark other;
        other.name = c.name;
        other.lat = c.lat;
        other.lon = c.lon;
        EXPECT_EQ(other.sameData(mark), c.same) << c.what;
        EXPECT_EQ(manager.alreadyHave(other), c.same) << c.what;
        other.route = &route;
        EXPECT_EQ(other.sameData(mark), c.same_waypoint) << c.what;
        other.route = nullptr;
    }
    EXPECT_FALSE(manager.alreadyHave(mark)) << "itself";
}

TEST_F(CMarksTest, AlarmsSoundInTheirZone)
{
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        const char* what;
        bool on;
        float anchor, proximity;
        float anchor_radius, alarm_radius;
        std::vector<double> sounds, silent; ///< metres
    } cases[] = {
        {"off", false, 50, 100, 0, 0, {}, {10, 60}},
        {"proximity", true, 0, 100, 0, 100, {0, 99}, {101}},
        {"anchor", true, 50, 0, 50, 1100, {51, 1099}, {0, 49, 1101}},
        {"ring", true, 50, 200, 50, 200, {51, 199}, {49, 201}},
        {"both equal", true, 50, 50, 50, 50, {}, {49, 51}},
        {"no numbers", true, kNan, -5, 0, 0, {}, {0, 1}},
    };
    for (const auto& c : cases) {
        COverlayMark& mark = AddMark("Buoy", 0.0, 0.0);
        mark.SetAlarm(c.on, c.anchor, c.proximity);
        EXPECT_EQ(mark.anchor_radius, c.anchor_radius) << c.what;
        EXPECT_EQ(mark.alarm_radius, c.alarm_radius) << c.what;
        for (const double metres : c.sounds) {
            Fix(metres / (60.0 * 1852.0), 0.0);
            EXPECT_EQ(alarms.texts.size(), 1U) << c.what << metres;
        }
        for (const double metres : c.silent) {
            Fix(metres / (60.0 * 1852.0), 0.0);
            EXPECT_EQ(alarms.texts.size(), 0U) << c.what << metres;
        }
        manager.ClearAll();
    }
}

TEST_F(CMarksTest, AlarmsKeepUpWithTheBoatAndEndWithTheMark)
{
    COverlayMark& mark = AddMark("100% Buoy", 50.0, 0.0);
    mark.SetAlarm(true, 0.0F, 5000.0F);
    Fix(50.01, 0.0);
    const std::string first = alarms.texts[static_cast<int>(mark.Number())];
    EXPECT_EQ(first.rfind("Mark proximity alarm: 100% Buoy is ", 0), 0U) << first;
    Fix(50.02, 0.0);
    EXPECT_NE(alarms.texts[static_cast<int>(mark.Number())], first);

    CDataGPSPosition lost;
    lost.set_latlon(60.0, 0.0);
    DispatchToListeners(lost);
    EXPECT_EQ(alarms.texts.size(), 1U) << "without a fix nothing changes";

    const struct {
        const char* what;
        void (*end)(COverlayMark& mark);
    } ends[] = {
        {"switched off", [](COverlayMark& m) { m.SetAlarm(false, 0.0F, 0.0F); }},
        {"all switched off",
         [](COverlayMark&) {
             CMarkManager::enable_alarm_notifications = false;
             Fix(50.01, 0.0);
             CMarkManager::enable_alarm_notifications = true;
         }},
        {"deleted", [](COverlayMark& m) { g_mark_manager.DeleteMark(&m); }},
    };
    for (const auto& c : ends) {
        mark.SetAlarm(true, 0.0F, 5000.0F);
        Fix(50.01, 0.0);
        EXPECT_EQ(alarms.texts.size(), 1U) << c.what;
        c.end(mark);
        EXPECT_EQ(alarms.texts.size(), 0U) << c.what;
    }
    AddMark("Wreck", 50.0, 0.0).SetAlarm(true, 0.0F, 5000.0F);
    Fix(50.01, 0.0);
    manager.ClearAll();
    EXPECT_EQ(alarms.texts.size(), 0U);
}

TEST_F(CMarksTest, DeletingLeavesABareTombstone)
{
    COverlayMark& mark = AddMark("Pier", 50.0, 1.0);
    mark.comment = "c";
    mark.link = "l";
    mark.category = "k";
    const std::uint64_t id = mark.GetObjectID();
    views.selected = &mark;
    manager.marks_modified = false;
    manager.DeleteMark(&mark);
    ASSERT_EQ(manager.marks.size(), 1U);
    EXPECT_TRUE(mark.deleted);
    EXPECT_EQ(mark.lat, COverlayMark::kNoPosition);
    EXPECT_EQ(mark.name + mark.comment + mark.link + mark.category, "");
    EXPECT_EQ(mark.object_id, id);
    EXPECT_EQ(views.selected, nullptr);
    EXPECT_TRUE(manager.marks_modified);

    struct Counter : Listener<COverlayObject> {
        void OnUpdate(COverlayObject&) override { ++count; }
        int count = 0;
    } counter;
    AddMark("Quay", 50.0, 1.0);
    AddRoute("R", {{1, 1}, {2, 2}});
    manager.GetUpdatesForAll(COverlayObject::kChanged, counter);
    EXPECT_EQ(counter.count, 4) << "a mark, two waypoints and a route; no tombstone";
}

TEST_F(CMarksTest, ChangesOfOwnObjectsAloneAreUserData)
{
    static int noted = 0;
    noted = 0;
    SetUserDataChangedCallback([] { ++noted; });
    COverlayGPSPosition::theLatestPosition.COverlayObject::Dispatch(COverlayObject::kChanged);
    EXPECT_EQ(noted, 0);
    EXPECT_FALSE(manager.marks_modified || manager.routes_modified);
    AddMark("Pier", 50.0, 1.0);
    EXPECT_EQ(noted, 1);
    EXPECT_TRUE(manager.marks_modified && !manager.routes_modified);
    manager.marks_modified = false;
    AddRoute("R", {{1, 1}, {2, 2}});
    EXPECT_GT(noted, 1);
    EXPECT_TRUE(manager.routes_modified && !manager.marks_modified);
    SetUserDataChangedCallback({});
}

TEST_F(CMarksTest, IsMappedWhereItLies)
{
    const CPolynomialProjection chart = FlatChart(50.0, 0.0);
    const struct {
        double lat, lon;
        bool mapped;
    } cases[] = {{49.99, 0.01, true}, {999.0, 999.0, false}, {std::numeric_limits<double>::quiet_NaN(), 0.0, false}};
    for (const auto& c : cases) {
        COverlayMark& mark = AddMark("", 0.0, 0.0);
        mark.lat = c.lat;
        mark.lon = c.lon;
        CMapping mapping;
        mark.Map(mapping, chart);
        ASSERT_EQ(mapping.image_points.size(), c.mapped ? 1U : 0U) << c.lat;
        if (c.mapped) {
            EXPECT_NEAR(mapping.image_points[0].x, 100.0, 1e-6);
            EXPECT_NEAR(mapping.image_points[0].y, 100.0, 1e-6);
            EXPECT_EQ(mapping.kind, CMapping::kPoints);
            EXPECT_EQ(mapping.count, 1);
        }
    }
}

TEST_F(CMarksTest, IconsAreDrawnAtTheirHotSpot)
{
    const CPolynomialProjection chart = FlatChart(50.0, 0.0);
    COverlayMark& mark = AddMark("", 49.99, 0.01);
    mark.SetIcon("Square", {0.0F, 0.0F, 1.0F});
    const struct {
        const char* icon;
        bool drawn; ///< an unknown icon gives way to the template's
    } cases[] = {{"Square", true}, {"Unknown", true}};
    for (const auto& c : cases) {
        mark.SetIcon(c.icon, {0.0F, 0.0F, 1.0F});
        CMapping mapping;
        CViewParams params;
        params.view_rect = {0, 0, 200, 200};
        mark.Map(mapping, chart);
        ASSERT_TRUE(mapping.map_to_screen(params));
        QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        mark.Draw(&painter, params, mapping);
        painter.end();
        int near = 0;
        int far = 0;
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                if (image.pixel(x, y) == QColor(Qt::white).rgb()) continue;
                (std::abs(x - 100) < 24 && std::abs(y - 100) < 24 ? near : far) += 1;
            }
        }
        EXPECT_EQ(near > 20, c.drawn) << c.icon;
        EXPECT_EQ(far, 0) << c.icon;
    }
}

} // namespace
