#include "navdata/units.h"
#include "overlays/gps_own_ship.h"
#include "support/allocation_counter.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

class OwnShipMotion : public testing::Test {
protected:
    CSettingsKeeper settings;
    COverlayGPSPosition ship;
    CVoyage voyage{ship, 50.0, -1.0};
};

TEST(Direction, IsChosenBySpeedCompassAndAverage)
{
    constexpr struct {
        const char* name;
        float speed, heading, average;
        bool use_average;
        std::uint32_t source;
        float direction, knots;
    } cases[] = {
        {"under_way", 0.4F, 120.0F, 2.0F, true, CDataSpeedDirection::kCourseOverGround, 30.0F, 0.4F},
        {"too_slow_for_a_course", 0.3F, 120.0F, 2.0F, true, CDataSpeedDirection::kCompassHeading, 120.0F, 2.0F},
        {"slow_without_compass", 0.3F, 999.0F, 2.0F, true, CDataSpeedDirection::kAverageCourse, 90.0F, 2.0F},
        {"average_not_wanted", 0.3F, 999.0F, 2.0F, false, CDataSpeedDirection::kNoDirection, 999.0F, 0.0F},
        {"at_rest", 0.0F, 999.0F, 0.1F, true, CDataSpeedDirection::kNoDirection, 999.0F, 0.0F},
        {"heading_of_360_is_north", 0.0F, 360.0F, 0.0F, true, CDataSpeedDirection::kCompassHeading, 0.0F, 0.0F},
        {"absurd_heading_is_none", 0.0F, 9999.0F, 0.0F, true, CDataSpeedDirection::kNoDirection, 999.0F, 0.0F},
    };
    const CSettingsKeeper settings;
    for (const auto& c : cases) {
        CDataSpeedDirection motion;
        CDataSpeedDirection::use_averaged_direction = c.use_average;
        motion.set_course(30.0F, c.speed);
        motion.set_heading(c.heading, 100.0);
        motion.set_average(c.average, 0.0F);
        motion.evaluate_best_direction();
        EXPECT_EQ(motion.best_source, c.source) << c.name;
        EXPECT_EQ(motion.get_heading(), c.direction) << c.name;
        EXPECT_EQ(motion.get_speed(), c.knots) << c.name;
        const bool directed = c.source != CDataSpeedDirection::kNoDirection;
        EXPECT_NEAR(std::hypot(motion.best_sin, motion.best_cos), directed ? 1.0 : 0.0, 1e-3) << c.name;
    }
}

TEST(Direction, AbsurdNumbersNeverReachTheMotion)
{
    CDataSpeedDirection motion;
    motion.set_course(NAN, 5.0F);
    EXPECT_EQ(motion.course, CDataSpeedDirection::kNoCourse);
    EXPECT_EQ(motion.speed, 0.0F);
    motion.set_course(1e9F, INFINITY);
    EXPECT_LE(motion.speed, 1e6F);
    EXPECT_NEAR(std::hypot(motion.course_sin, motion.course_cos), 1.0, 1e-3);
    motion.set_course(10.0F, NAN);
    EXPECT_EQ(motion.speed, 0.0F);
    motion.set_heading(NAN, 1.0);
    EXPECT_EQ(motion.compass.heading, CompassDamping::kNoHeading);
}

TEST(Direction, AClearChangeOfVelocity)
{
    constexpr struct {
        const char* name;
        float course, knots, east, north;
        bool changed;
    } cases[] = {
        {"straight_on", 90.0F, 6.0F, 6.0F, 0.0F, false},   {"tacked", 0.0F, 6.0F, 6.0F, 0.0F, true},
        {"a_little_off", 100.0F, 6.0F, 6.0F, 0.0F, false}, {"stopped_lately", 90.0F, 0.9F, 0.4F, 0.0F, false},
        {"started", 90.0F, 4.0F, 0.0F, 0.0F, true},
    };
    for (const auto& c : cases) {
        CDataSpeedDirection motion;
        motion.set_course(c.course, c.knots);
        motion.set_average(c.east, c.north);
        motion.evaluate_best_direction();
        EXPECT_EQ(motion.hasChangedCourseSpd(), c.changed) << c.name;
    }
}

TEST_F(OwnShipMotion, AveragesFollowTheTrackWithoutAReportedCourse)
{
    CDataSpeedDirection::use_averaged_direction = true;
    voyage.Sail(45.0F, 6.0F, 60, false);
    EXPECT_NEAR(ship.average_speed, 6.0F, 0.05F);
    EXPECT_NEAR(ship.average_course, 45.0F, 1.0F);
    EXPECT_EQ(ship.best_source, CDataSpeedDirection::kAverageCourse);
    float slowest = 0.0F;
    float fastest = 0.0F;
    EXPECT_TRUE(ship.speed_range.GetMinMax(slowest, fastest));
    EXPECT_NEAR(fastest, 6.0F, 0.1F);

    voyage.Sail(0.0F, 0.0F, 60, false);
    EXPECT_EQ(ship.average_speed, 0.0F) << "the history reaches back 45 seconds";
    EXPECT_EQ(ship.average_course, CDataSpeedDirection::kNoCourse);
}

TEST_F(OwnShipMotion, AveragesLookBackOneAndAHalfSpans)
{
    voyage.Sail(90.0F, 4.0F, 120);
    voyage.Sail(90.0F, 8.0F, 10);
    EXPECT_GT(ship.average_speed, 4.5F);
    EXPECT_LT(ship.average_speed, 6.0F);
    voyage.Sail(90.0F, 8.0F, 60);
    EXPECT_NEAR(ship.average_speed, 8.0F, 0.1F);
}

TEST_F(OwnShipMotion, CoarsePositionsAreNotAveraged)
{
    voyage.Sail(0.0F, 5.0F, 60);
    const float before = ship.average_speed;
    ship.accuracy = 15.0F;
    voyage.Sail(0.0F, 10.0F, 60);
    EXPECT_EQ(ship.average_speed, before);
    ship.accuracy = 14.9F;
    voyage.Sail(0.0F, 10.0F, 30);
    EXPECT_NEAR(ship.average_speed, 10.0F, 0.1F) << "what was recorded before the gap has aged away";
}

TEST_F(OwnShipMotion, AJumpIsNoRecord)
{
    voyage.Sail(0.0F, 5.0F, 60);
    ship.set_latlon(ship.latitude + 1.0, ship.longitude);
    voyage.Sail(0.0F, 5.0F, 10);
    EXPECT_GT(ship.average_speed, 200.0F);
    EXPECT_LT(ship.speed_range.GetMax(), 6.0F);
    voyage.Sail(0.0F, 5.0F, 60);
    EXPECT_NEAR(ship.average_speed, 5.0F, 0.1F);
}

TEST_F(OwnShipMotion, AClockThatGoesBackStartsAfresh)
{
    voyage.Sail(0.0F, 5.0F, 300);
    const double metres = ship.odometer();
    voyage.now -= 86400.0;
    voyage.Sail(180.0F, 7.0F, 300);
    EXPECT_NEAR(ship.average_speed, 7.0F, 0.1F);
    EXPECT_NEAR(ship.average_course, 180.0F, 1.0F);
    EXPECT_NEAR(ship.odometer() - metres, 300.0 * 7.0 * 1852.0 / 3600.0, 40.0);
}

TEST_F(OwnShipMotion, OdometerCountsTheTrackAndNotTheNoise)
{
    const double per_knot_second = 1852.0 / 3600.0;
    voyage.Sail(0.0F, 6.0F, 70); // a first leg begins only under way
    const double start = ship.odometer();
    for (const float course : {0.0F, 90.0F, 180.0F, 270.0F}) voyage.Sail(course, 6.0F, 150);
    const double sailed = ship.odometer() - start;
    EXPECT_NEAR(sailed, 600.0 * 6.0 * per_knot_second, 0.04 * sailed) << "a square with its corners";

    const double before = ship.odometer();
    voyage.Sail(270.0F, 0.0F, 120); // ends the leg under way
    const double arrived = ship.odometer();
    EXPECT_LT(arrived - before, 100.0);
    std::mt19937 random(1);
    std::normal_distribution<double> metres(0.0, 2.0);
    const double lat = ship.latitude;
    const double lon = ship.longitude;
    for (int i = 0; i < 1800; ++i) {
        ship.set_latlon(lat + metres(random) / 111120.0, lon + metres(random) / 111120.0);
        voyage.Sail(0.0F, 0.0F, 1);
    }
    EXPECT_LT(ship.odometer() - arrived, 15.0) << "half an hour at anchor";
}

TEST_F(OwnShipMotion, AnotherVoyageKeepsOnlyTheTotal)
{
    voyage.Sail(0.0F, 6.0F, 300);
    const double total = ship.odometer_total;
    ASSERT_GT(ship.odometer(), total) << "a leg is open";
    ship.reset_history();
    EXPECT_EQ(ship.odometer(), total);
    EXPECT_LT(ship.speed_range.GetMax(), 0.0F);
    ship.set_latlon(-30.0, 100.0);
    voyage.now = 1.6e9;
    voyage.Sail(90.0F, 6.0F, 90);
    EXPECT_LT(ship.odometer() - total, 90.0 * 6.0) << "not the way from there to here";
    EXPECT_NEAR(ship.average_speed, 6.0F, 0.1F);
}

struct CChangeLog : Listener<CDataGPSPosition>, Listener<CDataSpeedDirection>, Listener<COverlayObject> {
    explicit CChangeLog(const COverlayObject& of) : watched(&of)
    {
        Listener<CDataGPSPosition>::Connect();
        Listener<CDataSpeedDirection>::Connect();
        Listener<COverlayObject>::Connect();
    }
    void OnUpdate(CDataGPSPosition& position) override
    {
        log += 'P';
        status = position.status;
    }
    void OnUpdate(CDataSpeedDirection&) override { log += 'D'; }
    void OnUpdate(COverlayObject& object) override
    {
        if (&object == watched) log += static_cast<char>('0' + object.action);
    }
    std::string log;
    std::uint32_t status = 99;
    const COverlayObject* watched;
};

TEST_F(OwnShipMotion, SilenceOfFiveSecondsEndsTheFix)
{
    CChangeLog changes(ship);
    voyage.Sail(90.0F, 5.0F, 1);
    EXPECT_EQ(changes.log, "PD0");
    changes.log.clear();
    for (int i = 0; i < 49; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.log, "");
    voyage.Sail(90.0F, 5.0F, 1);
    changes.log.clear();
    for (int i = 0; i < 49; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.log, "") << "an update starts the five seconds anew";
    const double lat = ship.latitude;
    CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.log, "P1");
    EXPECT_EQ(changes.status, CDataGPSPosition::kNoFix);
    EXPECT_EQ(ship.best_source, CDataSpeedDirection::kNoDirection);
    EXPECT_EQ(ship.latitude, lat) << "the position stays";
    for (int i = 0; i < 100; ++i) CHeartbeat::TheHeartbeat.Pulse();
    EXPECT_EQ(changes.log, "P1") << "silence is told once";

    changes.log.clear();
    ship.set_heading(10.0F, 1.0);
    ship.DispatchHeadingUpdate();
    EXPECT_EQ(changes.log, "D1");
    EXPECT_EQ(ship.best_source, CDataSpeedDirection::kCourseOverGround);
}

TEST_F(OwnShipMotion, APlacedCompassPointsWhereItStands)
{
    COverlayGPSPosition::compass_cal.SetText("1,2,3,4,5,6,7,8,9,10,11,-12,");
    constexpr struct {
        const char* name;
        float heading, adjusted;
    } cases[] = {
        {"on_a_step", 30.0F, 32.0F},
        {"between_steps", 45.0F, 47.5F},
        {"north", 0.0F, 1.0F},
        {"north_as_360", 360.0F, 1.0F},
        {"before_north", 359.9F, 360.85667F},
        {"below_zero", -15.0F, 339.5F},
        {"absurd_folds", 9999.0F, 279.0F + 10.3F},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(COverlayGPSPosition::compass_cal.Adjust(c.heading), c.adjusted, 1e-3F) << c.name;
    EXPECT_TRUE(std::isfinite(COverlayGPSPosition::compass_cal.Adjust(NAN)));
}

struct CMappingView : Listener<COverlayObject> {
    CMappingView() { Connect(); }
    void OnUpdate(COverlayObject& object) override
    {
        mapping.clear();
        object.Map(mapping, chart);
        ++mapped;
    }
    CPolynomialProjection chart = FlatChart(50.1, -1.1);
    CMapping mapping;
    int mapped = 0;
};

TEST_F(OwnShipMotion, AStreamOfPositionsAllocatesNothing)
{
    COverlayMovingTarget::num_range_rings = 3;
    COverlayMovingTarget::range_ring_radius = 1.0F;
    CMappingView view;
    CChangeLog changes(ship);
    changes.log.reserve(100000);
    voyage.Sail(90.0F, 5.0F, 10);
    CUnits::Default->bearing_lat += 5.0; // far enough for the magnetic variation to be computed anew
    const CAllocationCounter allocations;
    voyage.Sail(90.0F, 5.0F, 5000);
    EXPECT_EQ(allocations.Count(), 0U);
    EXPECT_EQ(view.mapped, 5010);
}

} // namespace
