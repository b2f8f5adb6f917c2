#pragma once

#include "core/clock.h"
#include "core/folders.h"
#include "core/heartbeat.h"
#include "overlays/gps_position.h"
#include "overlays/track_manager.h"
#include "support/temporary_root.h"

#include <filesystem>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

/// A boat that reports fixes to the manager of tracks, in metres from a place in the Channel.
struct CFixes {
    static constexpr double kLat = 50.0;
    static constexpr double kLon = -3.0;

    CFixes() { plane.SetOrigin(kLat, kLon); }
    CTrackPoint PointAt(double x, double y, double time) const
    {
        CTrackPoint point;
        plane.xy_to_latlon(x, y, point.lat, point.lon);
        point.time = time;
        return point;
    }
    /// A fix, on a steady course unless `turning`.
    void Report(double x, double y, double time, bool turning = false, unsigned status = CDataGPSPosition::kFix)
    {
        const CTrackPoint point = PointAt(x, y, time);
        position.set_latlon(point.lat, point.lon);
        position.time = time;
        position.status = status;
        position.set_average(0.0F, 6.0F);
        position.set_course(turning ? 90.0F : 0.0F, 6.0F);
        position.evaluate_best_direction();
        DispatchToListeners(position);
    }

    CSimpleGrid plane;
    CDataGPSPosition position;
};

/// The program's one manager of tracks, as after a start with empty folders.
class TrackTest : public testing::Test {
protected:
    static constexpr double kStart = 1.7e9;

    TrackTest()
    {
        SetClock([] { return now; });
        SetNow(kStart);
        Forget();
        COverlayTrack& usual = g_track_manager.DefaultTrack();
        static_cast<CLineAppearance&>(usual) = {};
        usual.name = "T#";
        usual.category.clear();
        usual.do_not_sync = false;
        g_track_manager.LoadFromFile();
    }
    ~TrackTest() override
    {
        Forget();
        g_track_manager.Listener<CDataGPSPosition>::Disconnect();
        g_track_manager.Listener<CDataStartTimer>::Disconnect();
        COverlayGPSPosition::theLatestPosition.status = CDataGPSPosition::kNoFix;
        CDataStartTimer::theStartTime = {};
        SetClock(nullptr);
        ClearTimestamp();
    }
    static void SetNow(double time)
    {
        now = time;
        ClearTimestamp();
    }
    /// Ends the program and starts it again.
    static bool Restart(bool save = true)
    {
        if (save) g_track_manager.SaveIfNeeded();
        const bool recording = CTrackManager::doRecordTrack;
        Forget();
        CTrackManager::doRecordTrack = recording;
        return g_track_manager.LoadFromFile();
    }
    static std::string File() { return getAppDirectory() + "/tracks.zttf"; }
    static COverlayTrack* Track() { return g_track_manager.ActiveTrack(); }
    /// A track of its own with `points` points, 10 m and 5 s apart, northward from (x, 0).
    COverlayTrack* MakeTrack(const std::string& name, int points, double x = 0.0, double y = 0.0)
    {
        auto* const track = new COverlayTrack;
        track->name = name;
        for (int i = 0; i < points; ++i) track->addPoint(boat.PointAt(x, y + 10.0 * i, kStart + 5.0 * i), false);
        g_track_manager.AddTrack(track);
        return track;
    }
    static std::vector<CTrackPoint> PointsOf(const COverlayTrack& track)
    {
        std::vector<CTrackPoint> points;
        CTrackCursor cursor(track);
        while (const CTrackPoint* point = cursor.Next()) points.push_back(*point);
        return points;
    }
    /// Whether every section but the first begins with the last point of the one before, and knows its owner.
    static bool IsConnected(const COverlayTrack& track)
    {
        const CTrackSection* before = nullptr;
        for (const CTrackSection* section : track.sections) {
            if (section->track != &track || section->count < 1) return false;
            if (before != nullptr && before->Last() != section->points[0]) return false;
            before = section;
        }
        return true;
    }

    CTemporaryRoot root;
    CFixes boat;

private:
    static void Forget()
    {
        CTrackManager::doRecordTrack = false; // first, so that nothing is written
        g_track_manager.ClearAll();
        g_track_manager.tracks_modified = false;
    }
    static void ClearTimestamp()
    {
        if (Listener<CHeartbeat>::pDatasource != nullptr) Listener<CHeartbeat>::pDatasource->ClearTimestamp();
    }
    static inline double now = 0.0;
};
