#include "core/listener.h"
#include "core/persistant_data.h"
#include "navdata/position_format.h"
#include "navdata/units.h"

#include <cmath>
#include <ctime>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMile = 1852.0;

CUnits Units(CUnits::e_dist_units family)
{
    CUnits units;
    units.set_unit_family(family);
    return units;
}

TEST(UnitTexts, Distances)
{
    const struct {
        CUnits::e_dist_units family;
        double metres;
        const char* text;  ///< with the unit, the small one below a tenth
        const char* value; ///< in the main unit
    } cases[] = {
        {CUnits::kNautical, 30.0, "32.8 yds", "0.0162"},
        {CUnits::kNautical, 0.1 * kMile, "203 yds", "0.1"},
        {CUnits::kNautical, 0.1001 * kMile, "0.10 NM", "0.1"},
        {CUnits::kNautical, 12.34 * kMile, "12.3 NM", "12.3"},
        {CUnits::kNautical, 123.4 * kMile, "123 NM", "123"},
        {CUnits::kNautical, 999.4 * kMile, "999 NM", "999"},
        {CUnits::kNautical, 999.7 * kMile, "1000 NM", "1000"},
        {CUnits::kNautical, 1e5 * kMile, "100000 NM", "100000"},
        {CUnits::kMetric, 1.0, "1.00 m", "0.001"},
        {CUnits::kMetric, 0.9, "0.90 m", "0"},
        {CUnits::kMetric, -5000.0, "-5000.00 m", "0"},
        {CUnits::kStatute, 100.0, "328 ft", "0.0621"},
        {CUnits::kStatute, kNan, "", ""},
        {CUnits::kStatute, kInfinity, "", ""},
    };
    for (const auto& c : cases) {
        const CUnits units = Units(c.family);
        std::string value;
        EXPECT_EQ(units.FormatDistance(c.metres), c.text) << c.metres;
        units.FormatDistanceValue(c.metres, value);
        EXPECT_EQ(value, c.value) << c.metres;
    }
}

TEST(UnitTexts, DepthsNeverPrintAnExponent)
{
    const struct {
        CUnits::e_depth unit;
        double metres;
        const char* text;
        const char* value;
    } cases[] = {
        {CUnits::kDepthMetres, -9999.0, "---", "---"},      {CUnits::kDepthMetres, -99999.0, "---", "---"},
        {CUnits::kDepthMetres, 0.009, "0.0 m", "0"},        {CUnits::kDepthMetres, 1.26, "1.3 m", "1.3"},
        {CUnits::kDepthMetres, 12.6, "13 m", "13"},         {CUnits::kDepthMetres, 99.4, "99 m", "99"},
        {CUnits::kDepthMetres, 99.6, "100 m", "100"},       {CUnits::kDepthMetres, 4321.0, "4321 m", "4321"},
        {CUnits::kDepthMetres, -150.0, "-150.0 m", "-150"}, {CUnits::kDepthFeet, 10.0, "33 ft", "33"},
        {CUnits::kFathoms, 10.0, "5.5 fathom", "5.5"},      {CUnits::kDepthMetres, kNan, "", ""},
    };
    for (const auto& c : cases) {
        CUnits units;
        units.depth = c.unit;
        std::string text, value;
        units.FormatDepth(c.metres, text);
        units.FormatDepthValue(c.metres, value);
        EXPECT_EQ(text, c.text) << c.metres;
        EXPECT_EQ(value, c.value) << c.metres;
    }
}

TEST(UnitTexts, SpeedsAndTemperatures)
{
    CUnits units;
    std::string text;
    units.FormatSpeed(0.994, text);
    EXPECT_EQ(text, "0.99 kts");
    units.speed = CUnits::kMetresPerSecond;
    units.FormatSpeed(10.0, text);
    EXPECT_EQ(text, "5.1 m/s");
    units.speed = CUnits::kKilometresPerHour;
    units.FormatSpeedValue(1e6, text);
    EXPECT_EQ(text, "1852000.0");
    units.FormatSpeed(kNan, text);
    EXPECT_EQ(text, "");

    units.temperature = CUnits::kCelsius;
    units.FormatTemperatureValue(-3.06, text);
    EXPECT_EQ(text + units.GetTemperatureUnit(), "-3.1°C");
    units.temperature = CUnits::kFahrenheit;
    units.FormatTemperatureValue(20.0, text);
    EXPECT_EQ(text + units.GetTemperatureUnit(), "68.0°F");
}

TEST(UnitTexts, BearingsFoldBothWays)
{
    const struct {
        CUnits::e_bearings north;
        float variation;
        double degrees;
        const char* text;
    } cases[] = {
        {CUnits::kTrueNorth, 9.0F, 45.0, "045°T"},      {CUnits::kTrueNorth, 0.0F, 359.6, "000°T"},
        {CUnits::kTrueNorth, 0.0F, 359.5, "359°T"},     {CUnits::kTrueNorth, 0.0F, 360.0, "000°T"},
        {CUnits::kMagneticNorth, 9.0F, 4.0, "355°M"},   {CUnits::kMagneticNorth, -10.0F, 355.0, "005°M"},
        {CUnits::kMagneticNorth, 0.0F, 899.0, "179°M"}, {CUnits::kTrueNorth, 0.0F, -725.0, "355°T"},
        {CUnits::kTrueNorth, 0.0F, -1e-9, "000°T"},     {CUnits::kTrueNorth, 0.0F, 999.0, ""},
        {CUnits::kTrueNorth, 0.0F, kNan, ""},           {CUnits::kTrueNorth, 0.0F, -kInfinity, ""},
        {CUnits::kMagneticNorth, 1e30F, 1.0, nullptr},
    };
    for (const auto& c : cases) {
        CUnits units;
        units.bearings = c.north;
        units.magnetic_variation = c.variation;
        std::string text;
        units.FormatBearing(c.degrees, text);
        if (c.text == nullptr)
            EXPECT_EQ(text.size(), std::string("000°M").size()) << text;
        else
            EXPECT_EQ(text, c.text) << c.degrees;
    }
}

TEST(UnitTexts, ElapsedTimes)
{
    const struct {
        double seconds;
        const char* text;
    } cases[] = {
        {0.0, "0s"},
        {59.4, "59s"},
        {59.6, "1:00"},
        {309.0, "5:09"},
        {3599.6, "1:00:00"},
        {3909.0, "1:05:09"},
        {35999.0, "9:59:59"},
        {36030.0, "10h:00"},
        {36031.0, "10h:01"},
        {43199.0, "12h:00"},
        {86369.0, "23h:59"},
        {86370.0, "23h:59"},
        {86371.0, "1D 0h:00"},
        {86400.0 * 3 + 3600 * 4 + 300, "3D 4h:05"},
        {86400.0 * 2 - 1, "2D 0h:00"},
        {-65.0, "Negative 1:05"},
        {kNan, ""},
        {-kInfinity, ""},
    };
    for (const auto& c : cases) {
        std::string text = "old";
        CUnits::FormatElapsedTime(c.seconds, text);
        EXPECT_EQ(text, c.text) << c.seconds;
    }
    for (double seconds = 0.0; seconds < 4 * 86400.0; seconds += 29.0) {
        std::string text;
        CUnits::FormatElapsedTime(seconds, text);
        ASSERT_EQ(text.find(":60"), std::string::npos) << seconds;
        ASSERT_EQ(text.find("24h"), std::string::npos) << seconds;
    }
}

TEST(UnitTexts, TimesOfTheDayAreLocal)
{
    const struct {
        int hour;
        const char *of_day, *of_24_hours;
    } cases[] = {{0, "12:05am", "00:05:09"},
                 {1, "1:05am", "01:05:09"},
                 {12, "12:05pm", "12:05:09"},
                 {23, "11:05pm", "23:05:09"}};
    for (const auto& c : cases) {
        std::tm local{};
        local.tm_year = 126, local.tm_mon = 6, local.tm_mday = 4;
        local.tm_hour = c.hour, local.tm_min = 5, local.tm_sec = 9;
        local.tm_isdst = -1;
        const double time = static_cast<double>(std::mktime(&local)) + 0.9;
        std::string text;
        CUnits::FormatTimeOfDay(time, text);
        EXPECT_EQ(text, c.of_day);
        CUnits::Get24hTime(time, text);
        EXPECT_EQ(text, c.of_24_hours);
        CUnits::FormatDate(time, text);
        EXPECT_EQ(text, "2026-07-04");
    }
    for (const double nonsense : {kNan, kInfinity, 1e300, -1e300}) {
        std::string text = "old";
        CUnits::FormatTimeOfDay(nonsense, text);
        EXPECT_EQ(text, "");
    }
}

TEST(Units, FamiliesTakeTheirOwnAndLeaveTheRest)
{
    CUnits units = Units(CUnits::kMetric);
    EXPECT_EQ(units.depth, CUnits::kDepthMetres);
    EXPECT_EQ(units.temperature, CUnits::kCelsius);
    EXPECT_EQ(units.speed, CUnits::kKilometresPerHour);
    units.set_unit_family(CUnits::kStatute);
    EXPECT_EQ(units.depth, CUnits::kDepthFeet);
    EXPECT_EQ(units.temperature, CUnits::kFahrenheit);
    units.depth = CUnits::kFathoms;
    units.set_unit_family(CUnits::kNautical);
    EXPECT_EQ(units.depth, CUnits::kFathoms);
    EXPECT_EQ(units.temperature, CUnits::kFahrenheit);
    EXPECT_EQ(units.small_dist, CUnits::kYards);
}

/// Brings the program's units back after a test.
class UnitsSettings : public testing::Test {
protected:
    ~UnitsSettings() override { static_cast<CUnits&>(CDefaultUnits::u) = before; }
    static void Load(const char* pairs)
    {
        CAttributes map;
        map.AddString(pairs);
        PersistantData::LoadFrom(map);
    }

    const CUnits before;
};

TEST_F(UnitsSettings, AreSavedAndLoaded)
{
    CUnits& units = *CUnits::Default;
    units.set_unit_family(CUnits::kMetric);
    units.position_format = CUnits::PositionFormatType::Find("MGRS");
    std::string family, format;
    ASSERT_TRUE(PersistantData::GetValue("CDefaultUnits:units", family));
    ASSERT_TRUE(PersistantData::GetValue("CDefaultUnits:posnfmt", format));
    EXPECT_EQ(format, "MGRS");
    units.set_unit_family(CUnits::kStatute);
    units.position_format = &pf_dm;
    ASSERT_TRUE(PersistantData::SetValue("CDefaultUnits:units", family));
    ASSERT_TRUE(PersistantData::SetValue("CDefaultUnits:posnfmt", format));
    EXPECT_EQ(units.dist, CUnits::kMetric);
    EXPECT_EQ(units.small_dist, CUnits::kMetres);
    EXPECT_EQ(units.position_format->name, format);
    EXPECT_EQ(CUnits().FormatDistance(1500.0), "1.50 km") << "other units start as a copy";
}

TEST_F(UnitsSettings, NonsenseInTheFileKeepsWhatIsThere)
{
    Load("CDefaultUnits:units=0x63&CDefaultUnits:speed=0xffffffff&CDefaultUnits:depth=3&CDefaultUnits:bearings=2&"
         "CDefaultUnits:temperature=9&CDefaultUnits:posnfmt=Runes");
    const CUnits& units = *CUnits::Default;
    EXPECT_EQ(units.dist, before.dist);
    EXPECT_EQ(units.speed, before.speed);
    EXPECT_EQ(units.depth, before.depth);
    EXPECT_EQ(units.bearings, before.bearings);
    EXPECT_EQ(units.temperature, before.temperature);
    EXPECT_EQ(units.position_format, &pf_dm);
}

TEST_F(UnitsSettings, ChangesArePublished)
{
    struct CListener : Listener<CUnits> {
        int heard = 0;
        void OnUpdate(CUnits& units) override { heard += &units == CUnits::Default ? 1 : 100; }
    } listener;
    listener.Connect();
    CUnits::Default->Changed();
    CUnits own;
    own.Changed();
    EXPECT_EQ(listener.heard, 1);
}

TEST_F(UnitsSettings, VariationIsComputedAnewAfterADegree)
{
    constexpr double kTime = 1.79e9; // 2026
    CUnits units;
    units.magnetic_variation = 77.0F;
    units.bearing_lat = units.bearing_lon = 999.0;
    units.ChangedBearingUnits();
    EXPECT_EQ(units.magnetic_variation, 77.0F) << "no place yet: the last one stays";
    units.SetBearingLocation(54.0, 10.0, kTime);
    const float at_first = units.magnetic_variation;
    EXPECT_GT(at_first, 3.0F); // the western Baltic lies between 4 and 5 degrees east in these years
    EXPECT_LT(at_first, 6.0F);
    units.magnetic_variation = 77.0F;
    units.SetBearingLocation(54.7, 10.7, kTime);
    units.SetBearingLocation(kNan, 10.0, kTime);
    EXPECT_EQ(units.magnetic_variation, 77.0F);
    EXPECT_EQ(units.bearing_lat, 54.0);
    units.ChangedBearingUnits();
    EXPECT_EQ(units.magnetic_variation, at_first);
    units.SetBearingLocation(53.0, 10.0, kTime);
    EXPECT_EQ(units.bearing_lat, 53.0);
    EXPECT_NE(units.magnetic_variation, at_first);
}

} // namespace
