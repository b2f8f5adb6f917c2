#include "mark_fixture.h"

#include "gps_own_ship.h"
#include "overlays/overlay_track.h"
#include "overlays/track_manager.h"

namespace {

class RouteEditing : public CMarksTest {
protected:
    /// Taps on the map, as the view hands it on.
    void Tap(COverlayRoute& route, double lat, double lon) { route.onTap(views.View(), {}, {lon, lat}); }
    COverlayRoute& NewRoute()
    {
        manager.CreateNewRoute({});
        return *manager.routes.back();
    }
};

TEST_F(RouteEditing, EveryTapAddsAWaypointUntilDone)
{
    COverlayRoute& route = NewRoute();
    EXPECT_EQ(route.name, "R1");
    EXPECT_EQ(messages.hints.size(), 1U);
    Tap(route, 50.0, 1.0);
    Tap(route, 50.0, 1.1);
    EXPECT_EQ(NamesOf(route), "R1P0R1P1");
    EXPECT_EQ(views.selected, route.waypoints.back());
    EXPECT_EQ(messages.status.rfind("Total distance: ", 0), 0U) << messages.status;
    CMapping mapping;
    route.Map(mapping, FlatChart(50.0, 1.0));
    EXPECT_EQ(mapping.kind, CMapping::kAlways);

    PressDoneButton();
    EXPECT_EQ(messages.status, "");
    EXPECT_EQ(manager.route_being_edited, nullptr);
    Tap(route, 50.0, 1.2);
    EXPECT_EQ(route.waypoints.size(), 2U);
    mapping.clear();
    route.Map(mapping, FlatChart(50.0, 1.0));
    EXPECT_EQ(mapping.kind, CMapping::kNone);
    EXPECT_EQ(mapping.image_points.size(), 2U);

    NewRoute();
    EXPECT_EQ(messages.hints.size(), 1U) << "shown once";
}

TEST_F(RouteEditing, WaypointsGoWhereTheyWereAskedFor)
{
    const struct {
        const char* what;
        int behind; ///< index; -1: no waypoint
        const char* names;
        bool goes_on;
    } cases[] = {
        {"behind the first", 0, "aXbc", false},
        {"inside", 1, "abXc", false},
        {"behind the last", 2, "abcX", true},
        {"behind none", -1, "abcX", true},
    };
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute("R", {{1, 50}, {2, 50}, {3, 50}});
        route.InsertWPAfter(c.behind >= 0 ? Waypoint(route, c.behind) : nullptr);
        manager.DefaultWaypoint().name = "X";
        Tap(route, 51.0, 1.0);
        std::string names = NamesOf(route);
        std::erase(names, '3'); // the number
        EXPECT_EQ(names, c.names) << c.what;
        EXPECT_EQ(manager.route_being_edited == &route, c.goes_on) << c.what;
        EXPECT_EQ(messages.status.empty(), !c.goes_on) << c.what;
        manager.ClearAll();
    }
}

TEST_F(RouteEditing, NothingOutlivesWhatWaypointsAreAddedTo)
{
    const struct {
        const char* what;
        void (*change)(COverlayRoute& route);
        bool goes_on;
    } cases[] = {
        {"the next waypoint goes", [](COverlayRoute& r) { r.DeleteWaypoint(Waypoint(r, 1)); }, true},
        {"reversed", [](COverlayRoute& r) { r.ReverseWaypoints(); }, false},
        {"split", [](COverlayRoute& r) { r.SplitRoute(Waypoint(r, 1)); }, false},
        {"deleted", [](COverlayRoute& r) { g_mark_manager.DeleteRoute(&r); }, false},
        {"all deleted", [](COverlayRoute&) { g_mark_manager.ClearAll(); }, false},
        {"a mark made", [](COverlayRoute&) { g_mark_manager.CreateNewMark(nullptr, 1, 1); }, false},
        {"files read", [](COverlayRoute&) { g_mark_manager.LoadFromFile(); }, false},
        {"another route made", [](COverlayRoute&) { g_mark_manager.CreateNewRoute({}); }, false},
    };
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute("R", {{1, 50}, {2, 50}, {3, 50}});
        route.InsertWPAfter(route.waypoints.front());
        c.change(route);
        EXPECT_EQ(manager.route_being_edited == &route, c.goes_on) << c.what;
        if (c.goes_on) {
            manager.DefaultWaypoint().name = "X";
            Tap(route, 51.0, 1.0);
            EXPECT_EQ(NamesOf(route), "aX2c");
        }
        PressDoneButton();
        EXPECT_EQ(manager.insert_before, nullptr) << c.what;
        manager.ClearAll();
    }
}

TEST_F(RouteEditing, ATappedMarkBecomesAWaypoint)
{
    const struct {
        const char* name;
        bool locked;
        const char* waypoint;
    } cases[] = {{"Harbour", false, "Harbour"}, {"P12", false, "R1P0"}, {"Pier", true, "Pier"}, {"", false, "R1P0"}};
    for (const auto& c : cases) {
        COverlayMark& mark = AddMark(c.name, 50.0, 1.0);
        mark.comment = "deep";
        mark.locked = c.locked;
        COverlayRoute& route = NewRoute();
        EXPECT_EQ(mark.onMouseDown(views.View(), {}, {}), 0) << "or the tap would not come";
        EXPECT_EQ(mark.onTap(views.View(), {}, {}), 1);
        EXPECT_EQ(NamesOf(route), c.waypoint);
        EXPECT_EQ(route.waypoints.front()->lat, 50.0);
        EXPECT_EQ(route.waypoints.front()->comment, "deep");
        EXPECT_EQ(mark.deleted, !c.locked) << c.name;
        COverlayMark& end = AddMark("End", 51.0, 1.0);
        route.InsertWPAfter(nullptr);
        end.onTap(views.View(), {}, {});
        EXPECT_EQ(route.name, std::string(c.waypoint) + " to End");
        PressDoneButton();
        manager.ClearAll();
    }
}

TEST_F(RouteEditing, ReversesWithItsName)
{
    constexpr struct {
        const char* name;
        const char* reversed;
    } cases[] = {
        {"A to B", "B to A"}, {"A to B to C", "B to C to A"}, {"Tour", "Tour"}, {"to A", "to A"}, {" to ", " to "}};
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute(c.name, {{1, 50}, {2, 50}, {3, 50}});
        route.name = c.name;
        SetNow(now + 10.0);
        route.ReverseWaypoints();
        EXPECT_EQ(route.name, c.reversed);
        EXPECT_EQ(NamesOf(route), "cba");
        EXPECT_EQ(route.modified, now);
    }
}

TEST_F(RouteEditing, SplitsAndJoins)
{
    const struct {
        int at;
        const char* first;
        const char* rest;
        const char* joined; ///< the first waypoint of the rest is left out
    } cases[] = {{0, "a", "abcd", "abcd"}, {1, "ab", "bcd", "abcd"}, {3, "abcd", "d", "abcd"}};
    for (const auto& c : cases) {
        COverlayRoute& route = AddRoute("Trip", {{1, 50}, {2, 50}, {3, 50}, {4, 50}});
        route.line_width = 5.0F;
        route.category = "trips";
        route.do_not_sync = true;
        COverlayMark* const at = Waypoint(route, c.at);
        route.SplitRoute(at);
        ASSERT_EQ(manager.routes.size(), 2U);
        COverlayRoute& rest = *manager.routes.back();
        EXPECT_EQ(NamesOf(route), c.first);
        EXPECT_EQ(NamesOf(rest), c.rest);
        EXPECT_EQ(rest.name + rest.category, "Trip-splittrips");
        EXPECT_EQ(rest.line_width, 5.0F);
        EXPECT_TRUE(rest.do_not_sync) << "what is private stays private";
        EXPECT_NE(rest.waypoints.front(), at);
        EXPECT_EQ(rest.waypoints.front()->lon, at->lon);

        manager.SetFollowRoute(&rest);
        route.JoinRoute(&route);
        route.JoinRoute(&rest);
        EXPECT_EQ(NamesOf(route), c.joined);
        EXPECT_TRUE(rest.deleted && rest.waypoints.empty());
        EXPECT_EQ(manager.navigation.route, nullptr);
        manager.ClearAll();
    }
}

TEST_F(RouteEditing, LosesWaypointsDownToTwo)
{
    COverlayRoute& route = AddRoute("R", {{1, 50}, {2, 50}, {3, 50}});
    COverlayRoute& other = AddRoute("O", {{1, 50}, {2, 50}, {3, 50}});
    route.DeleteWaypoint(other.waypoints.front());
    EXPECT_EQ(NamesOf(other), "abc") << "not one of its own";
    route.GetObjectID();
    manager.DeleteMark(Waypoint(route, 1));
    EXPECT_EQ(NamesOf(route), "ac");
    EXPECT_FALSE(route.deleted);
    manager.DeleteMark(Waypoint(route, 0));
    EXPECT_TRUE(route.deleted);
    EXPECT_TRUE(route.waypoints.empty() && route.name.empty());
    EXPECT_EQ(manager.Find(&route), &route) << "as a tombstone";
}

TEST_F(RouteEditing, NamesAllWaypointsByATemplate)
{
    COverlayRoute& route = AddRoute("Tour", {{1, 50}, {2, 50}});
    COverlayMark like;
    like.name = "%R #";
    like.SetIcon("X", {1.0F, 1.0F, 0.0F});
    route.SetAllWaypointsLike(like);
    EXPECT_EQ(NamesOf(route), "Tour 1Tour 2");
    like.name.clear();
    like.icon_name = "Dot";
    route.SetAllWaypointsLike(like);
    EXPECT_EQ(NamesOf(route), "Tour 1Tour 2");
    EXPECT_EQ(route.waypoints.back()->icon_name, "Dot");
}

TEST_F(RouteEditing, FindsTheNearestEnd)
{
    COverlayRoute& here = AddRoute("here", {{0, 0}, {1, 0}});
    COverlayRoute& near = AddRoute("near", {{1.0001, 0}, {2, 0}});
    COverlayRoute& hidden = AddRoute("hidden", {{1, 0}, {2, 0}});
    hidden.visible = false;
    AddRoute("empty", {});
    AddRoute("far", {{1.001, 0}, {3, 0}});
    EXPECT_EQ(manager.FindRouteStartingAt(0, 1, 50.0 * 50.0), &near);
    EXPECT_EQ(manager.FindRouteStartingAt(0, 1, 10.0 * 10.0), nullptr);
    EXPECT_EQ(manager.FindRouteStartingAt(0, 1, 500.0 * 500.0, &near)->name, "far");
    EXPECT_EQ(manager.FindRouteEndingAt(0, 1.0001, 50.0 * 50.0), &here);
    EXPECT_EQ(manager.FindRouteEndingAt(0, 1.0001, 50.0 * 50.0, &here), nullptr);
}

TEST_F(RouteEditing, BecomesATrackWithoutTimes)
{
    COverlayRoute& route = AddRoute("Tour", {{1, 50}, {2, 50}, {3, 50}});
    const std::size_t before = g_track_manager.size();
    route.ConvertToTrack();
    ASSERT_EQ(g_track_manager.size(), before + 1);
    COverlayTrack* const track = g_track_manager.back();
    EXPECT_EQ(track->name, "Tour-converted");
    EXPECT_EQ(track->getTotalPoints(), 3);
    EXPECT_EQ(track->FirstPoint()->time, 0.0);
    EXPECT_FALSE(route.visible);
    g_track_manager.ClearAll();
}

} // namespace
