#include "mark_fixture.h"

#include <cmath>

namespace {

constexpr double kMetre = 1.0 / (60.0 * 1852.0); ///< degrees of latitude, and of longitude at the equator

/// Someone who wants to know where to steer.
struct CSteersman : Listener<CDataGotoMark> {
    CSteersman() { Connect(); }
    void OnUpdate(CDataGotoMark&) override { ++updates; }
    int updates = 0;
};

class GoTo : public CMarksTest {
protected:
    /// The boat, metres from (0, 0).
    static void Boat(double x, double y, float course = CDataGPSPosition::kNoCourse)
    {
        Fix(y * kMetre, x * kMetre, course);
    }
    COverlayMark& Mark(double x, double y) { return AddMark("M", y * kMetre, x * kMetre); }
    COverlayRoute& Route(const std::vector<DblPoint>& metres)
    {
        std::vector<DblPoint> places;
        for (const DblPoint& place : metres) places.push_back({place.x * kMetre, place.y * kMetre});
        return AddRoute("A to B", places);
    }
    std::string Target() const { return n.target != nullptr ? n.target->name : ""; }

    CSteersman steersman;
    CDataGotoMark& n = manager.navigation;
};

TEST_F(GoTo, AMarkGivesTheFiguresOfItsLeg)
{
    COverlayMark& mark = Mark(0, 1000);
    manager.SetGoto(&mark);
    EXPECT_TRUE(mark.goto_target);
    EXPECT_EQ(n.bearing, CDataGotoMark::kNoBearing);
    const struct {
        const char* what;
        double x, y;
        float distance, bearing, cross_track;
    } cases[] = {
        {"where it began", 0, 0, 1000, 0, 0},
        {"to the right of the line", 100, 900, 141.42F, 315, 100},
        {"to the left of it", -100, 900, 141.42F, 45, -100},
        {"near: the direction stays", 2, 999, 2.236F, 45, -100},
        {"past it", 0, 1010, 10, 180, 0},
    };
    for (const auto& c : cases) {
        const int before = steersman.updates;
        Boat(c.x, c.y);
        EXPECT_EQ(steersman.updates, before + 1) << c.what;
        EXPECT_NEAR(n.distance, c.distance, 0.1) << c.what;
        EXPECT_EQ(n.bearing, c.bearing) << c.what;
        EXPECT_NEAR(std::abs(n.cross_track), std::abs(c.cross_track), 0.1) << c.what;
        EXPECT_NEAR(n.leg_length, 1000.0F, 0.1F) << c.what;
    }
    Boat(100, 900);
    const float right = n.cross_track;
    Boat(-100, 900);
    EXPECT_NEAR(right + n.cross_track, 0.0F, 0.1F) << "the sign says the side";
    float axis = 0.0F;
    EXPECT_TRUE(n.GetAxis(axis));
    EXPECT_EQ(static_cast<int>(axis) % 360, 0);
}

TEST_F(GoTo, GoesOnWithAMarkThatMoves)
{
    COverlayMark& mark = Mark(0, 1000);
    manager.SetGoto(&mark);
    Boat(0, 0);
    mark.lon = 1000 * kMetre;
    mark.Dispatch(COverlayObject::kChanged);
    float axis = 0.0F;
    EXPECT_TRUE(n.GetAxis(axis));
    EXPECT_EQ(axis, 45.0F) << "from where the leg began to the new place";
    EXPECT_NEAR(n.leg_length, std::sqrt(2.0F) * 1000.0F, 0.1F);
    Boat(500, 500);
    EXPECT_NEAR(n.cross_track, 0.0F, 0.1F);
    EXPECT_NEAR(n.distance, std::sqrt(0.5F) * 1000.0F, 0.1F);
}

TEST_F(GoTo, EndsWithWhatItIsFor)
{
    const struct {
        const char* what;
        void (*end)(COverlayMark& mark, COverlayRoute& route);
        bool mark_ends, route_ends;
    } cases[] = {
        {"mark deleted", [](COverlayMark& m, COverlayRoute&) { g_mark_manager.DeleteMark(&m); }, true, false},
        {"route deleted", [](COverlayMark&, COverlayRoute& r) { g_mark_manager.DeleteRoute(&r); }, false, true},
        {"cancelled", [](COverlayMark&, COverlayRoute&) { g_mark_manager.CancelNavigation(); }, true, true},
        {"all gone", [](COverlayMark&, COverlayRoute&) { COverlayMark().Dispatch(COverlayObject::kAllGone); }, true,
         true},
        {"everything removed", [](COverlayMark&, COverlayRoute&) { g_mark_manager.ClearAll(); }, true, true},
        {"look changed", [](COverlayMark& m, COverlayRoute&) { m.Dispatch(COverlayObject::kLookChanged); }, false,
         false},
    };
    for (const auto& c : cases) {
        for (const bool to_route : {false, true}) {
            COverlayMark& mark = Mark(0, 1000);
            COverlayRoute& route = Route({{0, 0}, {0, 1000}, {1000, 1000}});
            if (to_route)
                manager.SetFollowRoute(&route);
            else
                manager.SetGoto(&mark);
            Boat(10, 500);
            ASSERT_NE(n.target, nullptr);
            c.end(mark, route);
            EXPECT_EQ(n.target == nullptr, to_route ? c.route_ends : c.mark_ends) << c.what;
            EXPECT_EQ(n.grid.ready(), n.target != nullptr) << c.what;
            if (n.target == nullptr) {
                EXPECT_EQ(n.route, nullptr) << c.what;
                EXPECT_EQ(n.after_target, nullptr) << c.what;
                EXPECT_EQ(n.bearing, CDataGotoMark::kNoBearing) << c.what;
            }
            manager.ClearAll();
        }
    }
    manager.SetGoto(nullptr);
    COverlayMark& gone = Mark(0, 0);
    manager.DeleteMark(&gone);
    manager.SetGoto(&gone);
    manager.SetFollowRoute(nullptr);
    EXPECT_EQ(n.target, nullptr);
}

TEST_F(GoTo, ARouteChangesItsLegByItself)
{
    COverlayRoute& route = Route({{0, 0}, {0, 1000}, {1000, 1000}});
    manager.SetFollowRoute(&route);
    EXPECT_EQ(n.target, nullptr);
    const struct {
        double x, y;
        const char* target;
        const char* after;
        float remaining, cross_track;
        float axis;
    } cases[] = {
        {0, -100, "a", "b", 2000, 0, 0},   {20, 100, "b", "c", 1000, 20, 0}, {500, 1030, "c", "", 0, 30, 90},
        {-10, 300, "b", "c", 1000, 10, 0}, {1500, 1000, "c", "", 0, 0, 90},
    };
    for (const auto& c : cases) {
        Boat(c.x, c.y);
        EXPECT_EQ(Target(), c.target);
        EXPECT_EQ(n.after_target != nullptr ? n.after_target->name : "", c.after) << c.target;
        EXPECT_NEAR(n.remaining, c.remaining, 0.1) << c.target;
        EXPECT_NEAR(std::abs(n.cross_track), c.cross_track, 0.1) << c.target;
        float axis = 0.0F;
        EXPECT_TRUE(n.GetAxis(axis));
        EXPECT_EQ(static_cast<int>(axis) % 360, static_cast<int>(c.axis)) << c.target;
    }
    manager.DeleteMark(Waypoint(route, 0));
    Boat(500, 1030);
    EXPECT_EQ(Target(), "c");
    EXPECT_EQ(n.route, &route);
}

TEST_F(GoTo, TurnsRoundAtTheEndOfARouteOnRequest)
{
    const struct {
        const char* what;
        bool on;
        float y;
        float course;
        bool reversed;
    } cases[] = {
        {"off", false, 900, 180, false},
        {"turned back", true, 900, 170, true},
        {"not far enough", true, 900, 130, false},
        {"the other way round", true, 900, 200, false}, // 200 degrees count as -160
        {"far from the end", true, 500, 170, false},
        {"no course", true, 900, CDataGPSPosition::kNoCourse, false},
    };
    for (const auto& c : cases) {
        CDataGotoMark::auto_reverse = c.on;
        COverlayRoute& route = Route({{0, 0}, {0, 1000}});
        manager.SetFollowRoute(&route);
        Boat(0, c.y);
        Boat(0, c.y, c.course);
        EXPECT_EQ(NamesOf(route), c.reversed ? "ba" : "ab") << c.what;
        EXPECT_EQ(Target(), c.reversed ? "a" : "b") << c.what;
        manager.ClearAll();
    }
}

TEST_F(GoTo, LeavesTheTargetWhereNoLegIs)
{
    COverlayRoute& route = Route({{0, 0}, {0, 2}});
    manager.SetFollowRoute(&route);
    Boat(0, 100);
    EXPECT_EQ(n.target, nullptr);
    EXPECT_FALSE(n.grid.ready());
    float axis = 0.0F;
    EXPECT_FALSE(n.GetAxis(axis));
    EXPECT_EQ(axis, CDataGotoMark::kNoBearing);
}

} // namespace
