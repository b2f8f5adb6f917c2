#include "core/persistant_data.h"
#include "overlays/polyline_vertex.h"
#include "support/allocation_counter.h"
#include "tools/voyage/voyage.h"
#include "track_world.h"

#include <cmath>

namespace {

TEST_F(TrackTest, AFixIsRecordedByDistanceIntervalAndChange)
{
    constexpr struct {
        const char* name;
        double metres, seconds;
        bool turning, recorded;
    } cases[] = {
        {"steady_and_due", 20.1, 20.0, false, true},
        {"steady_and_too_soon", 60.0, 19.9, false, false},
        {"steady_and_too_near", 19.9, 60.0, false, false},
        {"turning", 3.0, 2.0, true, true},
        {"turning_within_the_noise", 2.8, 5.0, true, false},
        {"turning_too_soon", 9.0, 1.8, true, false},
        {"the_clock_went_back_an_hour", 100.0, -3600.0, true, false},
        {"a_receiver_at_rest", 0.0, 3600.0, false, false},
    };
    for (const auto& c : cases) {
        g_track_manager.ClearAll();
        CTrackManager::doRecordTrack = true;
        boat.Report(0.0, 0.0, kStart);
        boat.Report(0.0, c.metres, kStart + c.seconds, c.turning);
        ASSERT_EQ(g_track_manager.size(), 1U) << c.name;
        EXPECT_EQ(Track()->getTotalPoints(), c.recorded ? 2 : 1) << c.name;
    }
}

TEST_F(TrackTest, ALongGapToEitherSideBeginsANewTrack)
{
    constexpr struct {
        const char* name;
        double gap;
        std::size_t tracks;
    } cases[] = {
        {"seven_hours", 25200.0, 2},
        {"six_hours", 21600.0, 1},
        {"back_by_six_hours", -21600.0, 1},
        {"back_by_seven_hours", -25200.0, 2},
    };
    for (const auto& c : cases) {
        g_track_manager.ClearAll();
        CTrackManager::doRecordTrack = true;
        boat.Report(0.0, 0.0, kStart);
        boat.Report(0.0, 500.0, kStart + c.gap);
        EXPECT_EQ(g_track_manager.size(), c.tracks) << c.name;
        EXPECT_EQ(Track()->name, c.tracks == 2 ? "T2" : "T1") << c.name;
    }
}

TEST_F(TrackTest, WhatIsNoFixIsNotRecorded)
{
    CTrackManager::doRecordTrack = true;
    boat.Report(0.0, 0.0, kStart, false, CDataGPSPosition::kNoFix);
    boat.position.status = CDataGPSPosition::kFix;
    boat.position.latitude = 999.0;
    DispatchToListeners(boat.position);
    boat.position.latitude = 50.0;
    boat.position.time = std::nan("");
    DispatchToListeners(boat.position);
    EXPECT_TRUE(g_track_manager.empty());
    boat.Report(0.0, 0.0, kStart);
    EXPECT_EQ(g_track_manager.size(), 1U);
}

TEST_F(TrackTest, EveryFixPublishesTheActiveTrack)
{
    struct Items : Listener<COverlayTrack> {
        Items() { Connect(); }
        void OnUpdate(COverlayTrack& track) override { seen.push_back(&track); }
        std::vector<const COverlayTrack*> seen;
    } items;
    CTrackManager::doRecordTrack = true;
    boat.Report(0.0, 0.0, kStart);
    boat.Report(0.0, 1.0, kStart + 1.0); // not recorded
    CTrackManager::doRecordTrack = false;
    boat.Report(0.0, 2.0, kStart + 2.0);
    EXPECT_EQ(items.seen, std::vector<const COverlayTrack*>(3, Track()));
}

/// Metres from the position to the nearest piece of the track.
double DistanceTo(const std::vector<DblPoint>& line, const DblPoint& at)
{
    double nearest = 1e300;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const DblPoint& a = line[i - 1];
        const DblPoint& b = line[i];
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        const double length = dx * dx + dy * dy;
        const double along = std::clamp(((at.x - a.x) * dx + (at.y - a.y) * dy) / length, 0.0, 1.0);
        nearest = std::min(nearest, std::hypot(a.x + along * dx - at.x, a.y + along * dy - at.y));
    }
    return nearest;
}

TEST_F(TrackTest, AVoyageIsFollowedWithFewPoints)
{
    COverlayGPSPosition ship;
    CBoatModel model = SolentVoyage();
    CSimpleGrid plane;
    plane.SetOrigin(model.State().lat, model.State().lon);
    std::vector<DblPoint> sailed;
    double log = 0.0;
    g_track_manager.startTrackRecording();
    while (model.Step()) {
        const CBoatState& state = model.State();
        ship.set_latlon(state.lat, state.lon);
        ship.time = kStart + state.seconds;
        ship.status = CDataGPSPosition::kFix;
        const double speed = std::hypot(state.ground.east, state.ground.north);
        ship.set_course(static_cast<float>(std::atan2(state.ground.east, state.ground.north) * 180.0 / M_PI),
                        static_cast<float>(speed));
        ship.DispatchPositionUpdate();
        DblPoint at;
        plane.latlon_to_xy(state.lat, state.lon, at.x, at.y);
        if (!sailed.empty()) log += std::hypot(at.x - sailed.back().x, at.y - sailed.back().y);
        sailed.push_back(at);
    }
    ASSERT_EQ(g_track_manager.size(), 1U);
    COverlayTrack& track = *Track();
    std::vector<DblPoint> line;
    for (const CTrackPoint& point : PointsOf(track)) {
        line.emplace_back();
        plane.latlon_to_xy(point.lat, point.lon, line.back().x, line.back().y);
    }
    EXPECT_TRUE(IsConnected(track));
    EXPECT_LT(line.size(), sailed.size() / 2);
    double farthest = 0.0;
    for (std::size_t i = 0; i < sailed.size(); i += 7) farthest = std::max(farthest, DistanceTo(line, sailed[i]));
    EXPECT_LT(farthest, 80.0);
    // At anchor the boat swings without leaving a track.
    EXPECT_NEAR(track.getTotalDistance(), log, 0.03 * log);
    // What recording kept up is what the points give.
    const double kept = track.total_distance;
    double moving = 0.0;
    double fastest = 0.0;
    EXPECT_NEAR(track.getStats(moving, fastest), kept, 1e-6 * kept);
}

TEST_F(TrackTest, StatisticsAreKeptWhileRecording)
{
    CTrackManager::doRecordTrack = true;
    boat.Report(0.0, 0.0, kStart);
    boat.Report(0.0, 100.0, kStart + 25.0);        // 4 m/s, over a long step by itself
    boat.Report(0.0, 130.0, kStart + 30.0, true);  // a short step goes by the receiver's 6 knots
    boat.Report(0.0, 160.0, kStart + 130.0, true); // 0.3 m/s: lying still
    EXPECT_NEAR(Track()->total_distance, 160.0, 1e-3);
    EXPECT_DOUBLE_EQ(Track()->getMovingTime(), 30.0);
    EXPECT_NEAR(Track()->max_speed, 4.0, 1e-4);
    EXPECT_DOUBLE_EQ(Track()->getStoppedTime(), 100.0);
}

TEST_F(TrackTest, StoppingDropsATrivialTrackAndSaves)
{
    for (const int points : {0, 2, 3}) {
        g_track_manager.startTrackRecording();
        for (int i = 0; i < points; ++i) boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
        g_track_manager.stopTrackRecording();
        EXPECT_EQ(g_track_manager.size(), points == 3 ? 1U : 0U) << points;
        EXPECT_FALSE(CTrackManager::doRecordTrack);
    }
    Restart(false);
    EXPECT_EQ(g_track_manager.size(), 1U);
}

TEST_F(TrackTest, RecordingGoesOnAfterARestart)
{
    PersistantData::LoadAll("zentara");
    g_track_manager.startTrackRecording();
    for (int i = 0; i < 70; ++i) boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
    const auto before = PointsOf(*Track());
    Restart();
    CTrackManager::doRecordTrack = false;
    PersistantData::LoadAll("zentara");
    PersistantData::appname.clear();
    EXPECT_TRUE(CTrackManager::doRecordTrack);
    boat.Report(0.0, 3000.0, kStart + 7200.0);
    ASSERT_EQ(g_track_manager.size(), 1U);
    EXPECT_EQ(Track()->getTotalPoints(), static_cast<int>(before.size()) + 1);
    EXPECT_TRUE(IsConnected(*Track()));
}

TEST_F(TrackTest, AResumedTrackGoesOnWhateverTheGap)
{
    COverlayTrack* const old = MakeTrack("old", 5);
    MakeTrack("newer", 5, 500.0);
    CDataGPSPosition& latest = COverlayGPSPosition::theLatestPosition;
    for (const bool has_fix : {false, true}) {
        latest = boat.position;
        latest.set_latlon(50.1, -3.0);
        latest.time = kStart + 90000.0;
        latest.status = has_fix ? CDataGPSPosition::kFix : CDataGPSPosition::kNoFix;
        const int before = old->getTotalPoints();
        g_track_manager.ResumeRecording(old);
        EXPECT_EQ(g_track_manager.back(), old);
        EXPECT_TRUE(old->isRecording());
        EXPECT_EQ(old->getTotalPoints(), before + (has_fix ? 1 : 0));
        boat.Report(0.0, 12000.0 + before * 1000.0, kStart + 90000.0 + 100.0 * before);
        EXPECT_EQ(old->getTotalPoints(), before + (has_fix ? 2 : 1));
        EXPECT_EQ(g_track_manager.size(), 2U);
        g_track_manager.ResumeOrPauseRecording();
        EXPECT_FALSE(CTrackManager::doRecordTrack);
    }
    // The figures take the gap in.
    double moving = 0.0;
    double fastest = 0.0;
    EXPECT_NEAR(old->getTotalDistance(), old->getStats(moving, fastest), 1e-3);
}

TEST_F(TrackTest, ASimulationIsATrackOfItsOwn)
{
    CTrackManager::doRecordTrack = true;
    for (int i = 0; i < 4; ++i) boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
    const auto simulate = [&](int points) {
        g_track_manager.StartSimulation();
        for (int i = 0; i < points; ++i) boat.Report(60.0, 30.0 * i, kStart + 30.0 * i, false, 3);
    };
    simulate(2);
    EXPECT_EQ(Track()->name, "Simulation");
    EXPECT_TRUE(Track()->do_not_sync);
    simulate(5); // the one before was trivial and has gone
    EXPECT_EQ(g_track_manager.size(), 2U);
    EXPECT_EQ(Track()->getTotalPoints(), 5);
    simulate(1);
    EXPECT_EQ(g_track_manager.size(), 3U);
    g_track_manager.EndSimulation();
    EXPECT_EQ(g_track_manager.size(), 2U);
    boat.Report(0.0, 150.0, kStart + 150.0);
    EXPECT_EQ(Track()->name, "T2");
    EXPECT_FALSE(Track()->do_not_sync);
    EXPECT_EQ(g_track_manager.front()->getTotalPoints(), 4);
}

TEST_F(TrackTest, ARaceStartBeginsATrackOfItsOwn)
{
    constexpr struct {
        const char* name;
        bool wanted;
        double ahead; // seconds; 0: no start
        bool recording_before, starts, recording_after;
    } cases[] = {
        {"start_in_five_minutes", true, 300.0, true, true, true},
        {"start_in_five_minutes_not_recording", true, 300.0, false, true, true},
        {"not_wanted", false, 300.0, true, false, true},
        {"too_far_ahead", true, 3601.0, false, false, false},
        {"long_past", true, -1.0, false, false, false},
        {"start_called_off", true, 0.0, true, false, false},
        {"called_off_but_not_wanted", false, 0.0, true, false, true},
    };
    for (const auto& c : cases) {
        g_track_manager.ClearAll();
        if (c.recording_before) g_track_manager.startTrackRecording();
        for (int i = 0; i < 4; ++i) boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
        CDataStartTimer& timer = CDataStartTimer::theStartTime;
        timer.new_track_at_start = c.wanted;
        timer.time_of_start = c.ahead != 0.0 ? kStart + c.ahead : 0.0;
        CDataStartTimer::Changed();
        EXPECT_EQ(CTrackManager::doRecordTrack, c.recording_after) << c.name;
        EXPECT_EQ(g_track_manager.size(), (c.recording_before ? 1U : 0U) + (c.starts ? 1U : 0U)) << c.name;
        EXPECT_EQ(Track() != nullptr && Track()->name.starts_with("Start at "), c.starts) << c.name;
    }
}

TEST_F(TrackTest, DeletingTheTrackUnderWayEndsTheRecording)
{
    MakeTrack("other", 5);
    g_track_manager.startTrackRecording();
    g_track_manager.DeleteTrack(g_track_manager.front());
    EXPECT_TRUE(CTrackManager::doRecordTrack);
    g_track_manager.DeleteTrack(Track());
    EXPECT_FALSE(CTrackManager::doRecordTrack);
    EXPECT_EQ(Track(), nullptr);
    CTrackManager::doRecordTrack = true;
    boat.Report(0.0, 0.0, kStart);
    EXPECT_EQ(g_track_manager.size(), 3U) << "the tombstone takes no points";
}

TEST_F(TrackTest, ARecordedPointAllocatesNothing)
{
    CTrackManager::doRecordTrack = true;
    boat.Report(0.0, 0.0, kStart);
    for (int i = 1; i < CTrackSection::kMostPoints; ++i) {
        boat.Report(0.0, 30.0 * i - 1.0, kStart + 30.0 * i - 1.0); // not recorded
        const CAllocationCounter counter;
        boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
        ASSERT_EQ(counter.Count(), 0U) << i;
    }
    EXPECT_EQ(Track()->getTotalPoints(), CTrackSection::kMostPoints);
    EXPECT_EQ(Track()->sections.size(), 1U);
}

} // namespace
