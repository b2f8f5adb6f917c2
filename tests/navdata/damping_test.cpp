#include "core/persistant_data.h"
#include "navdata/compass_damping.h"
#include "navdata/true_wind.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

constexpr double kNow = 1.79e9; ///< seconds

TEST(VelocityDamping, TakesOverByTheShareOfTheTimeConstant)
{
    VelocityDamping wind(10.0F);
    wind.SetXY(0.0F, 10.0F, kNow);
    EXPECT_EQ(wind.direction, 0.0F);
    wind.SetXY(10.0F, 10.0F, kNow + 2.0); // two tenths of the way
    EXPECT_NEAR(wind.x, 2.0, 1e-6);
    EXPECT_NEAR(wind.speed, std::hypot(2.0, 10.0), 1e-5);
    EXPECT_EQ(wind.direction, 11.0F);
    EXPECT_NEAR(wind.sin, 2.0 / std::hypot(2.0, 10.0), 1e-6);

    wind.SetXY(3.0F, 0.0F, kNow + 1.0); // time went back
    EXPECT_EQ(wind.x, 3.0);
    wind.SetXY(0.0F, 4.0F, kNow + 12.0); // a pause longer than the constant
    EXPECT_EQ(wind.y, 4.0);
    EXPECT_EQ(wind.x, 0.0);
}

TEST(VelocityDamping, WindAroundNorthStaysThere)
{
    VelocityDamping wind(10.0F);
    for (int i = 0; i < 200; ++i) wind.Set(i % 2 == 0 ? 350.0F : 10.0F, 12.0F, kNow + i);
    EXPECT_TRUE(wind.direction < 3.0F || wind.direction > 357.0F) << wind.direction;
    EXPECT_NEAR(wind.speed, 11.8, 0.1);
}

TEST(VelocityDamping, ExtremesLeaveNothingBehind)
{
    VelocityDamping wind(0.05F);
    EXPECT_EQ(wind.rate, 10.0);
    wind.SetTimeConstant(4.0F);
    EXPECT_EQ(wind.rate, 0.25);
    wind.Set(45.0F, 0.05F, kNow);
    EXPECT_EQ(wind.direction, 0.0F);
    EXPECT_EQ(wind.sin, 0.0F);
    wind.SetXY(1.0F, 0.0F, kNow + 1.0);
    wind.SetXY(std::nanf(""), 0.0F, kNow + 2.0);
    wind.SetXY(INFINITY, 1.0F, kNow + 2.5);
    wind.SetXY(1.0F, 0.0F, kNow + 3.0);
    EXPECT_TRUE(std::isfinite(wind.speed));
}

TEST(CompassDamping, TurnsTheShortWay)
{
    CompassDamping::default_time_const = 4.0F;
    CompassDamping compass;
    EXPECT_EQ(compass.heading, CompassDamping::kNoHeading);
    compass.Set(350.0F, 1.0); // the first one counts whole, whatever the time
    EXPECT_EQ(compass.heading, 350.0F);
    compass.Set(30.0F, 2.0); // a quarter of 40 degrees
    EXPECT_EQ(compass.heading, 0.0F);
    compass.Set(320.0F, 3.0);
    EXPECT_EQ(compass.heading, 350.0F);
    compass.Set(10.0F, 3.0); // no time passed
    EXPECT_EQ(compass.heading, 10.0F);
    compass.Set(std::nanf(""), 3.5);
    compass.Set(200.0F, 60.0);
    EXPECT_EQ(compass.heading, 200.0F);

    CompassDamping::default_time_const = 0.0F; // undamped
    CompassDamping undamped;
    undamped.Set(100.0F, 1.0);
    undamped.Set(200.0F, 1.1);
    EXPECT_EQ(undamped.heading, 200.0F);
    CompassDamping::default_time_const = 1.0F;
}

TEST(MinMaxRange, SlidesOverTheLastTenBuckets)
{
    MinMaxRange range(100.0F);
    float min, max;
    EXPECT_FALSE(range.GetMinMax(min, max));
    EXPECT_EQ(min, 1e30F);
    EXPECT_EQ(max, -1e30F);
    range.SetValue(5.0F, kNow);
    EXPECT_FALSE(range.GetMinMax(min, max)); // one value is no range
    range.SetValue(9.0F, kNow + 1);
    ASSERT_TRUE(range.GetMinMax(min, max));
    EXPECT_EQ(min, 5.0F);
    EXPECT_EQ(max, 9.0F);

    for (int second = 2; second <= 90; ++second) range.SetValue(6.0F, kNow + second);
    EXPECT_EQ(range.GetMax(), 9.0F) << "kept for nine tenths of the range";
    for (int second = 91; second <= 112; ++second) range.SetValue(6.0F, kNow + second);
    EXPECT_EQ(range.GetMax(), 6.0F) << "forgotten after the whole range";
    range.SetValue(std::nanf(""), kNow + 113);
    EXPECT_EQ(range.GetMax(), 6.0F);
    range.reset();
    EXPECT_EQ(range.GetMin(), 1e30F);
}

TEST(TrueWind, ConstantsComeFromTheSettings)
{
    EXPECT_DOUBLE_EQ(theTrueWind.rate, 0.1);
    CAttributes map;
    map.AddString("CDataTrueWind:time_constant=20.0&CDataTrueWind:avg_wind_time_constant=0.01");
    PersistantData::LoadFrom(map);
    EXPECT_EQ(theTrueWind.time_constant, 20.0F);
    EXPECT_DOUBLE_EQ(theTrueWind.rate, 0.05);
    EXPECT_EQ(theAverageTrueWind.rate, 10.0);
    map.AddString("CDataTrueWind:time_constant=10.0&CDataTrueWind:avg_wind_time_constant=300.0");
    PersistantData::LoadFrom(map);
}

} // namespace
