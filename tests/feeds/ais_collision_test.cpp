#include "feeds/ais_world.h"

namespace {

constexpr QRgb kRed = 0xFFFF0000;
constexpr QRgb kYellow = 0xFFDCDC00;
constexpr QRgb kGreen = 0xFF00DC00;
constexpr QRgb kGreenB = 0xFF64C864;

} // namespace

class AisCollision : public CAisWorld {};

TEST_F(AisCollision, WhoIsAThreat)
{
    struct CCase {
        const char* name;
        float own_course;
        float own_knots;
        bool class_b;
        double x, y; ///< metres from the own ship
        double course, knots;
        QRgb colour;
        bool alarmed;
        double cpa;  ///< metres
        double tcpa; ///< seconds
    };
    const CCase cases[] = {
        {"head on", 0.0F, 5.0F, false, 0, 3000, 180.0, 5.0, kRed, true, 0.0, 583.2},
        {"head on, with a course of 360", 360.0F, 5.0F, false, 0, 3000, 180.0, 5.0, kRed, true, 0.0, 583.2},
        {"crossing close ahead", 0.0F, 0.0F, false, -2000, 250, 90.0, 10.0, kRed, true, 250.0, 388.8},
        {"crossing at 500 m is near", 0.0F, 0.0F, false, -2000, 500, 90.0, 10.0, kYellow, false, 500.0, 388.8},
        {"crossing at 700 m is not", 0.0F, 0.0F, false, -2000, 700, 90.0, 10.0, kGreen, false, 700.0, 388.8},
        {"later than the alarm's time", 0.0F, 0.0F, false, -8000, 0, 90.0, 10.0, kYellow, false, 0.0, 1555.1},
        {"later than twice that", 0.0F, 0.0F, false, -20000, 0, 90.0, 10.0, kGreen, false, 0.0, 3887.7},
        {"class B at 150 m is near", 0.0F, 0.0F, true, -2000, 150, 90.0, 10.0, kYellow, false, 150.0, 388.8},
        {"class B at 90 m", 0.0F, 0.0F, true, -2000, 90, 90.0, 10.0, kRed, true, 90.0, 388.8},
        {"abeam, moving away", 0.0F, 0.0F, false, 200, 0, 90.0, 10.0, kGreen, false, 1e10, -38.9},
        {"closing too slowly", 0.0F, 4.4F, false, 0, 300, 0.0, 4.0, kYellow, false, 0.0, 1457.9},
        {"same course and speed", 0.0F, 10.0F, false, 50, 0, 0.0, 10.0, kGreen, false, 1e10, 0.0},
        {"stopped in the way", 0.0F, 10.0F, false, 0, 1000, 0.0, 0.0, kGreen, false, 1e10, 0.0},
    };
    std::uint32_t mmsi = kShip;
    for (const CCase& c : cases) {
        ++mmsi;
        Fix(c.own_course, c.own_knots);
        const CAisMotion motion = At(c.x, c.y, c.course, c.knots);
        Hear(c.class_b ? PositionReportB(mmsi, motion) : PositionReportA(mmsi, 0, motion));
        const CAISTarget& ship = Target(mmsi);
        EXPECT_EQ(ship.colour.rgba(), c.colour) << c.name;
        EXPECT_EQ(ship.alarmed, c.alarmed) << c.name;
        EXPECT_EQ(alarms.shown.count(static_cast<int>(mmsi)) != 0, c.alarmed) << c.name;
        EXPECT_EQ(ship.isCollisionThreat(), c.colour == kRed || c.colour == kYellow) << c.name;
        EXPECT_NEAR(ship.cpa, c.cpa, 2.0) << c.name;
        EXPECT_NEAR(ship.tcpa, c.tcpa, 1.0) << c.name;
        EXPECT_NEAR(ship.range, std::hypot(c.x, c.y), 1.0) << c.name;
    }
    EXPECT_NEAR(Target(kShip + 3).bearing, 277.1F, 0.1F);
}

TEST_F(AisCollision, AnAlarmFromItsBeginningToItsEnd)
{
    Fix(0.0F, 0.0F);
    CAisShip ship;
    ship.mmsi = kShip;
    Hear(PositionReportA(kShip, 0, At(-2000, 220.5, 90.0, 10.0)));
    EXPECT_EQ(alarms.shown[kShip], "AIS collision alert, Class A: Unknown name, CPA 220 m, 6 min");
    ship.name = "ANNA";
    ship.to_bow = 180;
    ship.to_stern = 20;
    Hear(StaticDataA(ship));
    EXPECT_EQ(alarms.shown[kShip], "AIS collision alert, Class A: ANNA, CPA 20 m, 6 min");
    ship.to_stern = 60;
    Hear(StaticDataA(ship));
    EXPECT_EQ(Target().cpa, 0.0001F) << "her length covers the distance";

    Hear(PositionReportA(kShip, 0, At(10, 220, 90.0, 10.0)));
    EXPECT_FALSE(Target().alarmed) << "she has passed";
    EXPECT_TRUE(alarms.shown.empty());
    EXPECT_EQ(Target().colour.rgba(), kGreen);

    Hear(PositionReportA(kShip, 0, At(-2000, 220, 90.0, 10.0)));
    ASSERT_EQ(alarms.shown.size(), 1U);
    Hear(PositionReportA(kShip, 0, At(-2000, 220, 90.0, 0.0)));
    EXPECT_TRUE(alarms.shown.empty()) << "she has stopped";
    EXPECT_TRUE(Target().alarmed);
}

TEST_F(AisCollision, WithoutSound)
{
    CAISTargetManager::alarm_beep = false;
    Fix(0.0F, 0.0F);
    Hear(PositionReportB(kShip, At(-2000, 0, 90.0, 10.0)));
    EXPECT_TRUE(alarms.shown.empty());
    EXPECT_EQ(Target().colour.rgba(), kRed);
    EXPECT_TRUE(Target().alarmed);
}

TEST_F(AisCollision, WhatIsNotKnownWarnsOfNothing)
{
    const CAisMotion coming = At(-2000, 0, 90.0, 10.0);
    Hear(PositionReportB(kShip, coming));
    EXPECT_EQ(Target().colour.rgba(), kGreenB) << "the own position was never known";
    Fix(0.0F, 0.0F);
    own_ship().status = CDataGPSPosition::kNoFix; // and the place is that of the last fix
    own_ship().DispatchPositionUpdate();
    Hear(PositionReportB(kShip, coming));
    EXPECT_EQ(Target().colour.rgba(), kGreenB) << "the fix is lost";

    Fix(0.0F, 0.0F);
    CAisBits no_course;
    no_course.Unsigned(18, 6);
    no_course.Unsigned(0, 2);
    no_course.Unsigned(kShip, 30);
    no_course.Unsigned(0, 8);
    no_course.Unsigned(100, 10);
    no_course.Unsigned(0, 1);
    const CAisMotion south = At(0, -2000);
    no_course.Signed(static_cast<std::int32_t>(south.lon * 600000), 28);
    no_course.Signed(static_cast<std::int32_t>(south.lat * 600000), 27);
    no_course.Unsigned(3600, 12);
    Hear(no_course);
    EXPECT_EQ(Target().colour.rgba(), kGreenB) << "without a course she is not coming north";
    EXPECT_EQ(Target().cpa, 1e10F);
}

TEST_F(AisCollision, AManOverboardFarAwayIsAnOrdinaryTarget)
{
    Fix(0.0F, 0.0F);
    Hear(PositionReportA(972000001, 14, At(0, 10100)));
    EXPECT_FALSE(Target(972000001).alarmed);
    EXPECT_TRUE(alarms.shown.empty());
}
