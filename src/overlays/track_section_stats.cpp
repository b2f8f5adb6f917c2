#include "core/bounds.h"
#include "overlays/track_section.h"

#include <algorithm>

namespace {

constexpr double kShortestStep = 0.1;    ///< seconds
constexpr double kSpikeFactor = 1.25;    ///< of the running average; a faster step is a spike of the receiver
constexpr double kShareOfNewSpeed = 0.5; ///< in the running average

double StepLength(const CSimpleGrid& grid, const CTrackPoint& from, const CTrackPoint& to)
{
    return grid.distance(from.lat, from.lon, to.lat, to.lon);
}

} // namespace

double CTrackSection::getDistance(const CSimpleGrid& grid) const
{
    if (length < 0.0) length = getDistanceToPoint(grid, count - 1);
    return length;
}

double CTrackSection::getDistanceToPoint(const CSimpleGrid& grid, int index) const
{
    double metres = 0.0;
    for (int i = 1; i <= std::min(index, count - 1); ++i) metres += StepLength(grid, points[i - 1], points[i]);
    return metres;
}

double CTrackSection::getStats(const CSimpleGrid& grid, double& moving_time, double& max_speed) const
{
    double metres = 0.0;
    double average = 0.0;
    for (int i = 1; i < count; ++i) {
        const double step = StepLength(grid, points[i - 1], points[i]);
        const double dt = points[i].time - points[i - 1].time;
        metres += step;
        if (!(dt > kShortestStep)) continue;
        const double speed = step / dt;
        if (speed > kLeastMovingSpeed) moving_time += dt;
        if (speed < kSpikeFactor * average) max_speed = std::max(max_speed, speed);
        average = kShareOfNewSpeed * speed + (1.0 - kShareOfNewSpeed) * average;
    }
    length = metres;
    return metres;
}

double CTrackSection::SpeedAtPoint(const CSimpleGrid& grid, int index) const
{
    if (index < 0 || index >= count) return 0.0;
    const int first = std::max(index - 1, 0);
    const int last = std::min(index + 1, count - 1);
    const double dt = points[last].time - points[first].time;
    if (points[first].time == 0.0 || points[last].time == 0.0 || !(dt > kShortestStep)) return 0.0;
    double metres = 0.0;
    for (int i = first + 1; i <= last; ++i) metres += StepLength(grid, points[i - 1], points[i]);
    return metres / dt;
}

int CTrackSection::FindClosestPoint(const CSimpleGrid& grid, double lat, double lon, double& distance_squared) const
{
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(lat, lon, x, y);
    int closest = -1;
    for (int i = 0; i < count; ++i) {
        double px = 0.0;
        double py = 0.0;
        grid.latlon_to_xy(points[i].lat, points[i].lon, px, py);
        const double squared = (px - x) * (px - x) + (py - y) * (py - y);
        if (squared >= distance_squared) continue;
        distance_squared = squared;
        closest = i;
    }
    return closest;
}

void CTrackSection::ExpandLonLatBounds(CBounds& bounds) const
{
    for (const CTrackPoint& point : Points()) bounds.add(point.lat, point.lon);
}
