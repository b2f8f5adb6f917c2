#include "nmea/data_connection.h"
#include "overlays/gps_position.h"
#include "overlays/track_manager.h"

#include <algorithm>
#include <cmath>

// Which fixes become points of a track.

namespace {

constexpr double kLongestGap = 21600.0; ///< seconds, to either side; a longer one begins a new track
constexpr double kLeastDistance = 2.9;  ///< metres; less is the receiver's noise
constexpr double kLeastInterval = 1.9;  ///< seconds
// On a steady course a point comes when both of these have gone by.
constexpr double kSteadyDistance = 20.0; ///< metres
constexpr double kSteadyInterval = 20.0; ///< seconds

constexpr double kLongStep = 10.0; ///< seconds; over a longer step its own speed counts, not the receiver's
constexpr double kMetresPerSecondOfKnot = 0.5144444444444445;

bool IsUsable(const CDataGPSPosition& position)
{
    return position.status != CDataGPSPosition::kNoFix && ValidLatLon(position.latitude, position.longitude) &&
           std::isfinite(position.time);
}

CTrackPoint PointOf(const CDataGPSPosition& position)
{
    constexpr float kAltitudeUnknown = -99999.0F;
    const bool has_altitude = std::isfinite(position.altitude) && position.altitude > kAltitudeUnknown;
    return {position.latitude, position.longitude, position.time, has_altitude ? position.altitude : 0.0F};
}

bool IsWorthRecording(const CDataGPSPosition& position, double dt, double metres)
{
    if (metres < kLeastDistance || dt < kLeastInterval) return false;
    return position.hasChangedCourseSpd() || (dt >= kSteadyInterval && metres >= kSteadyDistance);
}

} // namespace

void CTrackManager::OnUpdate(CDataGPSPosition& position)
{
    if (doRecordTrack && IsUsable(position)) Record(position);
    if (COverlayTrack* track = ActiveTrack()) DispatchToListeners(*track);
}

void CTrackManager::Record(const CDataGPSPosition& position)
{
    const CTrackPoint point = PointOf(position);
    const bool simulated = position.status == CDataGPSPosition::kSimulated;
    COverlayTrack* track = ActiveTrack();
    if (track == nullptr || next_point == NextPoint::kBeginsTrack) track = &NewTrack(simulated);

    double dt = 0.0;
    double metres = 0.0;
    const CTrackPoint* const last = track->LastPoint();
    if (last != nullptr && next_point != NextPoint::kJoins && last->time != 0.0) {
        dt = point.time - last->time;
        if (std::abs(dt) > kLongestGap) {
            track = &NewTrack(simulated);
            dt = 0.0;
        } else {
            metres = track->Grid().distance(last->lat, last->lon, point.lat, point.lon);
            if (!IsWorthRecording(position, dt, metres)) return;
        }
    } else if (last != nullptr) {
        metres = track->Grid().distance(last->lat, last->lon, point.lat, point.lon);
    } else if (simulated) { // begun before it was known what the positions would be
        track->do_not_sync = true;
        simulation_track = track;
    }
    next_point = NextPoint::kFollowsRule;
    AddRecorded(*track, point, dt, metres, position.speed);
}

void CTrackManager::AddRecorded(COverlayTrack& track, const CTrackPoint& point, double dt, double metres, float knots)
{
    if (track.total_distance == 0.0) track.ComputeStats();
    track.total_distance += metres;
    const double speed = dt > kLongStep ? metres / dt : static_cast<double>(knots) * kMetresPerSecondOfKnot;
    if (speed > CTrackSection::kLeastMovingSpeed) {
        track.moving_time += dt;
        track.max_speed = std::max(track.max_speed, speed);
    }
    track.addPoint(point, true);
}

void CTrackManager::ResumeOrPauseRecording()
{
    if (doRecordTrack) {
        stopTrackRecording();
        return;
    }
    COverlayTrack* const track = ActiveTrack();
    if (track == nullptr) {
        startTrackRecording();
        return;
    }
    const CDataGPSPosition& position = COverlayGPSPosition::theLatestPosition;
    if (IsUsable(position)) {
        track->addPoint(PointOf(position), true);
        track->ClearStats();
        next_point = NextPoint::kFollowsRule;
    } else {
        next_point = NextPoint::kJoins;
    }
    SetRecording(true);
    DispatchToListeners(*this);
    CDataConnection::UpdatedBackgroundSettings();
}

void CTrackManager::StartSimulation()
{
    CloseSimulation();
    next_point = NextPoint::kBeginsTrack;
}

void CTrackManager::EndSimulation()
{
    CloseSimulation();
    next_point = NextPoint::kBeginsTrack;
}

void CTrackManager::CloseSimulation()
{
    const auto simulated = std::find(begin(), end(), simulation_track);
    if (simulated != end() && (*simulated)->isTrivial()) Destroy(simulated);
    simulation_track = nullptr;
}
