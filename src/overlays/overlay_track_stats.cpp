#include "overlays/overlay_track.h"

double COverlayTrack::getTimeOfStart() const
{
    const CTrackPoint* const first = FirstPoint();
    return first != nullptr ? first->time : 0.0;
}

double COverlayTrack::getElapsedTime() const
{
    const CTrackPoint* const first = FirstPoint();
    const CTrackPoint* const last = LastPoint();
    return first != nullptr && first->time != 0.0 && last->time != 0.0 ? last->time - first->time : 0.0;
}

double COverlayTrack::getMovingTime()
{
    if (total_distance == 0.0) ComputeStats();
    return moving_time;
}

double COverlayTrack::getStoppedTime()
{
    return getElapsedTime() - getMovingTime();
}

double COverlayTrack::getTotalDistance()
{
    if (total_distance == 0.0) ComputeStats();
    return total_distance;
}

int COverlayTrack::getTotalPoints() const
{
    int points = 0;
    for (const CTrackSection* section : sections) points += points == 0 ? section->count : section->count - 1;
    return points;
}

double COverlayTrack::getStats(double& moving, double& fastest) const
{
    CSimpleGrid plane = grid;
    const CTrackPoint* const last = LastPoint();
    if (!plane.ready() && last != nullptr) plane.SetOrigin(last->lat, last->lon);
    moving = fastest = 0.0;
    double metres = 0.0;
    for (const CTrackSection* section : sections) metres += section->getStats(plane, moving, fastest);
    return metres;
}

void COverlayTrack::ComputeStats()
{
    Grid();
    total_distance = getStats(moving_time, max_speed);
}

void COverlayTrack::ClearStats()
{
    total_distance = moving_time = max_speed = 0.0;
}

const CSimpleGrid& COverlayTrack::Grid()
{
    const CTrackPoint* const last = LastPoint();
    if (!grid.ready() && last != nullptr) grid.SetOrigin(last->lat, last->lon);
    return grid;
}
