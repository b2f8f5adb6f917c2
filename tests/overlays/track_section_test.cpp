#include "core/bounds.h"
#include "gps_own_ship.h"
#include "overlays/overlay_views.h"
#include "overlays/polyline_vertex.h"
#include "support/allocation_counter.h"
#include "track_world.h"

#include <cmath>

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

namespace {

TEST_F(TrackTest, SectionsOverlapByOnePoint)
{
    constexpr struct {
        const char* name;
        int points;
        std::size_t sections;
        int in_last;
    } cases[] = {
        {"one_point", 1, 1, 1}, {"a_full_section", 64, 1, 64},
        {"one_more", 65, 2, 2}, {"two_full_sections", 127, 2, 64},
        {"and_one", 128, 3, 2},
    };
    for (const auto& c : cases) {
        const COverlayTrack& track = *MakeTrack(c.name, c.points);
        EXPECT_EQ(track.sections.size(), c.sections) << c.name;
        EXPECT_EQ(track.sections.back()->count, c.in_last) << c.name;
        EXPECT_TRUE(IsConnected(track)) << c.name;
        EXPECT_EQ(track.getTotalPoints(), c.points) << c.name;
        EXPECT_EQ(PointsOf(track).size(), static_cast<std::size_t>(c.points)) << c.name;
        EXPECT_EQ(track.modified, std::max(kStart, kStart + 5.0 * (c.points - 1))) << c.name;
    }
}

TEST_F(TrackTest, OnlyWhatIsWorthKeepingIsNotTrivial)
{
    constexpr struct {
        const char* name;
        int points;
        bool trivial;
    } cases[] = {
        {"none", 0, true},       {"two", 2, true}, {"three", 3, false}, {"several_sections", 100, false},
        {":chunk 7", 100, true},
    };
    for (const auto& c : cases) EXPECT_EQ(MakeTrack(c.name, c.points)->isTrivial(), c.trivial) << c.name;
}

/// A point of a path: seconds from the one before, metres from it.
struct Step {
    double seconds, metres;
};

COverlayTrack& MakePath(const CFixes& boat, double start, const std::vector<Step>& steps)
{
    auto* const track = new COverlayTrack;
    g_track_manager.AddTrack(track);
    double time = start;
    double y = 0.0;
    track->addPoint(boat.PointAt(0.0, y, time), false);
    for (const Step& step : steps) track->addPoint(boat.PointAt(0.0, y += step.metres, time += step.seconds), false);
    return *track;
}

TEST_F(TrackTest, StatisticsLeaveOutSpikesAndStops)
{
    std::vector<Step> steps(10, {5.0, 20.0});                // 4 m/s
    steps.insert(steps.end(), {{1.0, 40.0}, {5.0, 20.0}});   // a spike of 40 m/s
    steps.insert(steps.end(), {{100.0, 40.0}, {0.05, 1.0}}); // lying still; two fixes of one moment
    COverlayTrack& track = MakePath(boat, kStart, steps);
    EXPECT_NEAR(track.getTotalDistance(), 200.0 + 60.0 + 41.0, 1e-3);
    EXPECT_NEAR(track.getMovingTime(), 50.0 + 6.0, 1e-6);
    EXPECT_NEAR(track.max_speed, 4.0, 1e-3);
    EXPECT_NEAR(track.getElapsedTime(), 156.05, 1e-6);
    EXPECT_NEAR(track.getStoppedTime(), 100.05, 1e-6);
}

TEST_F(TrackTest, ALongTrackAddsUpLikeItsPoints)
{
    COverlayTrack& track = *MakeTrack("long", 0);
    std::vector<DblPoint> path;
    for (int i = 0; i < 1000; ++i) {
        path.push_back({300.0 * std::cos(0.01 * i), 5.0 * i + 2.0 * std::sin(i)});
        track.addPoint(boat.PointAt(path.back().x, path.back().y, kStart + 7.0 * i), false);
    }
    double metres = 0.0;
    for (std::size_t i = 1; i < path.size(); ++i)
        metres += std::hypot(path[i].x - path[i - 1].x, path[i].y - path[i - 1].y);
    // The plane of the track lies at its last point, five kilometres further north.
    EXPECT_NEAR(track.getTotalDistance(), metres, 1e-3 * metres);
    double sum = 0.0;
    for (const CTrackSection* section : track.sections) sum += section->getDistance(track.Grid());
    EXPECT_DOUBLE_EQ(sum, track.getTotalDistance());
    CBounds bounds;
    track.getLonLatBounds(bounds);
    EXPECT_NEAR(bounds.lat_max - bounds.lat_min, (path.back().y - path[1].y) / 111120.0, 1e-4);
}

TEST_F(TrackTest, APlaceOnATrackHasItsPointSpeedAndDistance)
{
    COverlayTrack& track = MakePath(boat, kStart, {{10.0, 30.0}, {10.0, 50.0}, {0.0, 20.0}});
    const CTrackSection& section = *track.sections.front();
    EXPECT_NEAR(section.getDistanceToPoint(track.Grid(), 2), 80.0, 1e-3);
    EXPECT_NEAR(section.SpeedAtPoint(track.Grid(), 0), 3.0, 1e-3);
    EXPECT_NEAR(section.SpeedAtPoint(track.Grid(), 1), 4.0, 1e-3);
    EXPECT_EQ(section.SpeedAtPoint(track.Grid(), 3), 0.0);
    EXPECT_EQ(section.SpeedAtPoint(track.Grid(), 4), 0.0);
    const CTrackPoint near_second = boat.PointAt(3.0, 31.0, 0.0);
    double squared = 1e100;
    EXPECT_EQ(section.FindClosestPoint(track.Grid(), near_second.lat, near_second.lon, squared), 1);
    EXPECT_NEAR(squared, 10.0, 0.01);
    EXPECT_EQ(section.FindClosestPoint(track.Grid(), near_second.lat, near_second.lon, squared = 9.0), -1);
}

TEST(PolylineVertex, IsOnALineThatRunsPastItNearEnough)
{
    constexpr struct {
        const char* name;
        double x, y;
        bool on_line;
    } cases[] = {
        {"between_and_near", 50.0, 2.0, true},    {"between_and_far", 50.0, 2.1, false},
        {"near_the_start", -1.9, 0.5, true},      {"before_the_start", -2.1, 0.0, false},
        {"just_before_the_end", 99.9, 0.0, true}, {"beyond_the_end", 100.1, 0.0, false},
    };
    for (const auto& c : cases) EXPECT_EQ((Vertex{c.x, c.y}.IsOnLine({}, {100.0, 0.0}, 4.0)), c.on_line) << c.name;
    EXPECT_FALSE((Vertex{5.0, 0.0}.IsOnLine({}, {}, 4.0))) << "a line of no length";
}

TEST(PolylineVertex, ThinningKeepsEndsAndCorners)
{
    constexpr struct {
        const char* name;
        std::vector<int> (*kept)();
        std::size_t points;
        double corner_x;
    } cases[] = {
        {"straight",
         [] {
             return std::vector<int>{0, 40};
         },
         41, 400.0},
        {"an_even_number",
         [] {
             return std::vector<int>{0, 41};
         },
         42, 410.0},
        {"a_corner",
         [] {
             return std::vector<int>{0, 20, 40};
         },
         41, 200.0},
        {"two_points",
         [] {
             return std::vector<int>{0, 1};
         },
         2, 400.0},
        {"none", [] { return std::vector<int>{}; }, 0, 0.0},
    };
    for (const auto& c : cases) {
        std::vector<Vertex> line;
        for (std::size_t i = 0; i < c.points; ++i) {
            const double along = 10.0 * static_cast<double>(i);
            line.push_back({std::min(along, c.corner_x), std::max(along - c.corner_x, 0.0), static_cast<int>(i)});
        }
        EXPECT_EQ(ThinVertices(line, 1.0), c.points > 2) << c.name;
        std::vector<int> kept;
        for (const Vertex& vertex : line) kept.push_back(vertex.index);
        EXPECT_EQ(kept, c.kept()) << c.name;
    }
}

TEST_F(TrackTest, AThinnedTrackIsPackedAnewAndKeepsItsShape)
{
    COverlayTrack& track = *MakeTrack("zigzag", 0);
    const auto x_of = [](int i) { return std::abs(i % 200 - 100) * 5.0; }; // a turn every 100 points
    for (int i = 0; i < 1000; ++i) track.addPoint(boat.PointAt(x_of(i), 5.0 * i, kStart + i), false);
    const double before = track.getTotalDistance();
    const auto first = *track.FirstPoint();
    const auto last = *track.LastPoint();
    EXPECT_TRUE(track.CompactData(4.0));
    EXPECT_LE(track.getTotalPoints(), 40);
    EXPECT_EQ(track.sections.size(), 1U);
    EXPECT_TRUE(IsConnected(track));
    EXPECT_EQ(*track.FirstPoint(), first);
    EXPECT_EQ(*track.LastPoint(), last);
    EXPECT_NEAR(track.getTotalDistance(), before, 0.01 * before);
}

TEST_F(TrackTest, SectionsMapToTheScreenWithoutAllocating)
{
    const COverlayTrack& track = *MakeTrack("track", 64);
    const CPolynomialProjection chart = FlatChart(CFixes::kLat, CFixes::kLon);
    const CTrackSection& section = *track.sections.front();
    CMapping mapping;
    section.Map(mapping, chart);
    CViewParams params;
    params.view_rect = {-1e6, -1e6, 1e6, 1e6};
    ASSERT_TRUE(mapping.map_to_screen(params));
    EXPECT_EQ(mapping.kind, CMapping::kPolyline);
    EXPECT_EQ(mapping.count, 64);
    EXPECT_NEAR(mapping.bounds.height(), 630.0 / 11.112, 0.01);
    const CAllocationCounter counter;
    mapping.move_screen();
    mapping.map_to_screen(params);
    EXPECT_EQ(counter.Count(), 0U);
    mapping.clear();
    section.Map(mapping, chart);
    EXPECT_EQ(counter.Count(), 0U);

    CMapping none;
    MakeTrack("one point", 1)->sections.front()->Map(none, chart);
    EXPECT_EQ(none.kind, CMapping::kNone);
}

/// The views hold one track as the selected one.
struct CSelected : IOverlayViews {
    explicit CSelected(const COverlayTrack* track) : selected(track) { SetOverlayViews(this); }
    ~CSelected() override { SetOverlayViews(nullptr); }
    bool IsSelected(const COverlayObject&) const override { return false; }
    bool IsSelected(const COverlayTrack& track) const override { return &track == selected; }
    const COverlayTrack* selected;
};

TEST_F(TrackTest, TheSelectedTrackHasAnUnderStroke)
{
    COverlayTrack& track = *MakeTrack("track", 2);
    track.colour = {1.0F, 0.0F, 0.0F};
    track.line_width = 4.0F;
    CMapping mapping;
    mapping.screen_points = {{0.0, 20.5}, {40.0, 20.5}};
    const auto drawn = [&](int y) {
        QImage image(40, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        track.sections.front()->Draw(&painter, {}, mapping);
        return QColor(image.pixel(20, y));
    };
    EXPECT_EQ(drawn(20), QColor(255, 0, 0));
    EXPECT_EQ(drawn(23), QColor(Qt::white));
    const CSelected selected(&track);
    EXPECT_EQ(drawn(20), QColor(255, 0, 0));
    EXPECT_LT(drawn(23).lightness(), 255);
    EXPECT_EQ(drawn(25), QColor(Qt::white));
}

} // namespace
