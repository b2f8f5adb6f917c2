#include "mark_fixture.h"

#include "core/bounds.h"

#include <cmath>

namespace {

constexpr double kMetre = 1.0 / (60.0 * 1852.0); ///< degrees of latitude, and of longitude at the equator

std::vector<DblPoint> Metres(const std::vector<DblPoint>& places)
{
    std::vector<DblPoint> degrees;
    for (const DblPoint& place : places) degrees.push_back({place.x * kMetre, place.y * kMetre});
    return degrees;
}

TEST_F(CMarksTest, ALegFollowsFromTheBoatsPlaceAlone)
{
    // North, east, south: a to b to c to d. One route for all places, in any order.
    COverlayRoute& route = AddRoute("R", Metres({{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}}));
    const struct {
        const char* what;
        double x, y; ///< metres
        const char* from;
        const char* to;
        const char* after;
        double remaining; ///< metres
    } cases[] = {
        {"before the start", -10, -300, "", "a", "b", 3000},
        {"on the first leg", 30, 500, "a", "b", "c", 2000},
        {"before the bisector of the turn", -10, 990, "a", "b", "c", 2000},
        {"behind the bisector", 20, 1010, "b", "c", "d", 1000},
        {"joins half way", 600, 1040, "b", "c", "d", 1000},
        {"has skipped a waypoint", 980, 500, "c", "d", "", 0},
        {"has gone back to an earlier leg", 10, 400, "a", "b", "c", 2000},
        {"beyond the end", 1000, -400, "c", "d", "", 0},
    };
    const auto name = [](const COverlayMark* mark) { return mark != nullptr ? mark->name : std::string(); };
    for (const auto& c : cases) {
        COverlayRoute::CLeg leg;
        ASSERT_TRUE(route.FindNearestLeg(c.y * kMetre, c.x * kMetre, leg)) << c.what;
        EXPECT_EQ(name(leg.from), c.from) << c.what;
        EXPECT_EQ(name(leg.to), c.to) << c.what;
        EXPECT_EQ(name(leg.after_to), c.after) << c.what;
        EXPECT_NEAR(leg.remaining, c.remaining, 0.01) << c.what;
    }
    EXPECT_EQ(route.getDistanceUpToWaypoint(*Waypoint(route, 0)), 0.0);
    EXPECT_NEAR(route.getDistanceUpToWaypoint(*Waypoint(route, 2)), 2000.0, 0.01);
    EXPECT_EQ(route.getDistanceUpToWaypoint(manager.DefaultMark()), 0.0);
    EXPECT_EQ(route.getWaypointBefore(*Waypoint(route, 0)), nullptr);
    EXPECT_EQ(route.getWaypointAfter(*Waypoint(route, 0)), Waypoint(route, 1));
    EXPECT_EQ(route.getWaypointAfter(*Waypoint(route, 3)), nullptr);
    EXPECT_EQ(route.getWaypointAfter(manager.DefaultMark()), nullptr);
}

TEST_F(CMarksTest, WaypointsThatCoincideMakeNoLeg)
{
    const struct {
        const char* what;
        std::vector<DblPoint> places; ///< metres
        int legs;
        double length; ///< metres, over the legs
    } cases[] = {
        {"none", {}, 0, 0},
        {"one", {{0, 0}}, 0, 0},
        {"two, near", {{0, 0}, {0, 2.9}}, 0, 0},
        {"two, just far enough", {{0, 0}, {0, 3.1}}, 1, 3.1},
        {"a near one between", {{0, 0}, {0, 2}, {0, 100}}, 1, 100},
        {"creeping away", {{0, 0}, {0, 2}, {0, 4}, {0, 6}}, 1, 4},
        {"there and back", {{0, 0}, {0, 100}, {0, 0}}, 2, 200},
    };
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute("R", Metres(c.places));
        EXPECT_EQ(route.InitSegments(), c.legs) << c.what;
        EXPECT_NEAR(route.TotalLengthofSegments(), c.length, 1e-6) << c.what;
        COverlayRoute::CLeg leg;
        EXPECT_EQ(route.FindNearestLeg(50.0 * kMetre, 0.0, leg), c.legs > 0) << c.what;
    }
}

TEST_F(CMarksTest, RoutesGoTheShortWayRoundTheEarth)
{
    const struct {
        const char* what;
        std::vector<DblPoint> places; ///< degrees
        double length;                ///< degrees
        double boat_lon;
        const char* to;
    } cases[] = {
        {"east over the antimeridian", {{179, 0}, {-179, 0}, {-177, 0}}, 4, -179.5, "b"},
        {"west over it", {{-179, 0}, {179, 0}, {177, 0}}, 4, 178, "c"},
        {"longitudes of another turn", {{179, 0}, {181, 0}, {-177, 0}}, 4, 180, "b"},
        {"most of the way round", {{-170, 0}, {-60, 0}, {60, 0}, {170, 0}}, 340, 100, "d"},
    };
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute("R", c.places);
        EXPECT_NEAR(route.getTotalLengthMeters(), c.length / kMetre, 1.0) << c.what;
        EXPECT_EQ(route.InitSegments(), static_cast<int>(c.places.size()) - 1) << c.what;
        EXPECT_NEAR(route.TotalLengthofSegments(), c.length / kMetre, 1.0) << c.what;
        COverlayRoute::CLeg leg;
        ASSERT_TRUE(route.FindNearestLeg(0.01, c.boat_lon, leg));
        EXPECT_EQ(leg.to->name, c.to) << c.what;
    }
}

TEST_F(CMarksTest, ChangedWaypointsAreMeasuredAnew)
{
    COverlayRoute& route = AddRoute("R", Metres({{0, 0}, {0, 1000}}));
    route.InitSegments();
    COverlayMark& end = *Waypoint(route, 1);
    end.lat = 2000.0 * kMetre;
    end.Dispatch(COverlayObject::kChanged);
    EXPECT_NEAR(route.getDistanceUpToWaypoint(end), 2000.0, 0.01);
    CBounds bounds;
    route.getLonLatBounds(bounds);
    EXPECT_EQ(bounds.lat_max, end.lat);
}

} // namespace
