#include "core/bounds.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kShortestLeg = 3.0; ///< metres
constexpr double kFullTurn = 360.0;  ///< degrees

double Squared(double value)
{
    return value * value;
}

/// The longitude that is nearest to `near_lon` among those of the same meridian, degrees.
double Unwrapped(double lon, double near_lon)
{
    return near_lon + std::remainder(lon - near_lon, kFullTurn);
}

/// Walks along waypoints and gives their places in the plane of a grid. Each leg goes the short way round the
/// antimeridian, however long the whole.
class CPlaneWalk {
public:
    explicit CPlaneWalk(const CSimpleGrid& plane) : grid(plane) {}
    DblPoint PlaceOf(const COverlayMark& mark)
    {
        const double lon = before != nullptr ? grid.origin_lon + (mark.lon - before->lon) : mark.lon;
        DblPoint place;
        grid.latlon_to_xy(mark.lat, lon, place.x, place.y);
        if (before != nullptr) place.x += at.x;
        before = &mark;
        return at = place;
    }

private:
    const CSimpleGrid& grid;
    const COverlayMark* before = nullptr;
    DblPoint at;
};

} // namespace

bool COverlayRoute::segment::init(const DblPoint& start, COverlayMark& end_mark, const DblPoint& end)
{
    to = &end_mark;
    start_x = start.x;
    start_y = start.y;
    end_x = end.x;
    end_y = end.y;
    length = std::hypot(end_x - start_x, end_y - start_y);
    if (!(length > kShortestLeg)) return false;
    dir_x = (end_x - start_x) / length;
    dir_y = (end_y - start_y) / length;
    return true;
}

void COverlayRoute::segment::compute(double x, double y, const segment* previous)
{
    const double b_x = dir_x + (previous != nullptr ? previous->dir_x : 0.0);
    const double b_y = dir_y + (previous != nullptr ? previous->dir_y : 0.0);
    const double along = (end_x - start_x) * b_x + (end_y - start_y) * b_y;
    past_start = along * (b_x * (start_x - x) + b_y * (start_y - y)) <= 0.0;
    if (past_start) perp_squared = Squared((start_y - y) * dir_x - (start_x - x) * dir_y);
}

/// The middle of the route's bounding box, taken across the antimeridian where the route goes.
void COverlayRoute::SetOrigin()
{
    CBounds bounds;
    double lon = 0.0;
    for (const COverlayMark* waypoint : waypoints) {
        if (!waypoint->HasPosition()) continue;
        lon = bounds.empty() ? waypoint->lon : Unwrapped(waypoint->lon, lon);
        bounds.add(waypoint->lat, lon);
    }
    if (bounds.empty()) return;
    grid.SetOrigin((bounds.lat_min + bounds.lat_max) / 2.0,
                   std::remainder((bounds.lon_min + bounds.lon_max) / 2.0, kFullTurn));
}

int COverlayRoute::InitSegments()
{
    segments.clear();
    if (waypoints.size() < 2) return 0;
    SetOrigin();
    CPlaneWalk walk(grid);
    DblPoint from;
    bool begun = false;
    for (COverlayMark* waypoint : waypoints) {
        if (!waypoint->HasPosition()) continue;
        const DblPoint to = walk.PlaceOf(*waypoint);
        segment leg;
        // A waypoint that all but coincides with the one before makes no leg: the next one starts from there.
        const bool usable = begun && leg.init(from, *waypoint, to);
        if (usable) segments.push_back(leg);
        if (usable || !begun) from = to;
        begun = true;
    }
    double remaining = 0.0;
    for (auto leg = segments.rbegin(); leg != segments.rend(); ++leg) {
        leg->remaining = remaining;
        remaining += leg->length;
    }
    return static_cast<int>(segments.size());
}

COverlayMark* COverlayRoute::FirstWaypoint() const
{
    const auto first =
        std::find_if(waypoints.begin(), waypoints.end(), [](const COverlayMark* mark) { return mark->HasPosition(); });
    return first != waypoints.end() ? *first : nullptr;
}

double COverlayRoute::TotalLengthofSegments() const
{
    return segments.empty() ? 0.0 : segments.front().length + segments.front().remaining;
}

double COverlayRoute::getTotalLengthMeters() const
{
    CSimpleGrid plane;
    const COverlayMark* before = nullptr;
    double metres = 0.0;
    for (const COverlayMark* waypoint : waypoints) {
        if (!waypoint->HasPosition()) continue;
        if (before == nullptr) {
            plane.SetOrigin(waypoint->lat, waypoint->lon);
        } else {
            metres += plane.distance(before->lat, before->lon, waypoint->lat, waypoint->lon);
        }
        before = waypoint;
    }
    return metres;
}

double COverlayRoute::getDistanceUpToWaypoint(const COverlayMark& mark)
{
    if (FirstWaypoint() == &mark) return 0.0;
    if (segments.empty()) InitSegments();
    const auto leg =
        std::find_if(segments.begin(), segments.end(), [&mark](const segment& s) { return s.to == &mark; });
    return leg != segments.end() ? TotalLengthofSegments() - leg->remaining : 0.0;
}

bool COverlayRoute::FindNearestLeg(double lat, double lon, CLeg& leg)
{
    leg = {};
    if (segments.empty() && InitSegments() == 0) return false;
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(lat, lon, x, y);
    const segment* previous = nullptr;
    for (segment& s : segments) {
        s.compute(x, y, previous);
        previous = &s;
    }
    double best = Squared(x - segments.front().start_x) + Squared(y - segments.front().start_y);
    std::size_t chosen = segments.size();
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const bool is_here = segments[i].past_start && (i + 1 == segments.size() || !segments[i + 1].past_start);
        if (!is_here || !(segments[i].perp_squared < best)) continue;
        best = segments[i].perp_squared;
        chosen = i;
    }
    const bool before_start = chosen == segments.size();
    const std::size_t next = before_start ? 0 : chosen + 1;
    if (next < segments.size()) leg.after_to = segments[next].to;
    leg.to = before_start ? FirstWaypoint() : segments[chosen].to;
    leg.remaining = before_start ? TotalLengthofSegments() : segments[chosen].remaining;
    if (!before_start) leg.from = chosen == 0 ? FirstWaypoint() : segments[chosen - 1].to;
    return true;
}
