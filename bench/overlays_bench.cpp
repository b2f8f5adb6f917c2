#include "overlays/mark_manager.h"
#include "ratio.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kWaypoints = 1000;

/// A winding route, and a boat half way along it.
struct CLongRoute {
    CLongRoute()
    {
        const COverlayMark::CCreatingRoute as_waypoints;
        for (int i = 0; i < kWaypoints; ++i) {
            auto* const waypoint = new COverlayMark;
            waypoint->lat = 50.0 + 0.01 * i;
            waypoint->lon = -4.0 + 0.2 * std::sin(0.1 * i);
            route.InsertWaypoint(waypoint, nullptr);
        }
        boat_lat = 50.0 + 0.01 * (kWaypoints / 2);
        route.InitSegments();
    }

    /// The plainest thing that can be done with them: which waypoint is nearest.
    double NearestWaypoint() const
    {
        CSimpleGrid plane;
        plane.SetOrigin(boat_lat, boat_lon);
        double best = 1e300;
        for (const COverlayMark* waypoint : route.waypoints)
            best = std::min(best, plane.distance_squared(waypoint->lat, waypoint->lon));
        return best;
    }

    COverlayRoute route;
    double boat_lat = 0.0;
    double boat_lon = -4.0;
};

CLongRoute& LongRoute()
{
    static CLongRoute route;
    return route;
}

const bool registered = [] {
    RegisterRatio(
        "routes/find_nearest_leg_of_1000",
        [] {
            COverlayRoute::CLeg leg;
            LongRoute().route.FindNearestLeg(LongRoute().boat_lat, LongRoute().boat_lon, leg);
            asm volatile("" ::"x"(leg.remaining) : "memory");
        },
        "distance to each waypoint",
        [] {
            const double nearest = LongRoute().NearestWaypoint();
            asm volatile("" ::"x"(nearest) : "memory");
        });
    return true;
}();

} // namespace
