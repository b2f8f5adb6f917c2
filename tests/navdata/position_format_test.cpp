#include "navdata/position_format.h"

#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include <GeographicLib/TransverseMercator.hpp>
#include <GeographicLib/UTMUPS.hpp>

#include <gtest/gtest.h>

namespace {

using Format = CUnits::PositionFormatType;

constexpr const char* kAll[] = {"Degrees",         "Deg,Min", "Deg,Min,Sec", "UTM on WGS84",
                                "UTM/WGS84 bands", "MGRS",    "NZTM",        "British National Grid"};
constexpr const char* kOffGrid = "<off grid>";

std::string Text(const char* format, double lat, double lon)
{
    std::string text = "old";
    Format::Find(format)->format(lat, lon, text);
    return text;
}

struct Position {
    double lat = 777.0, lon = 888.0; ///< untouched
};

bool Scan(const char* format, const char* text, Position& position)
{
    return Format::Find(format)->scan(text, position.lat, position.lon);
}

TEST(PositionFormat, AllAreFoundByName)
{
    for (const char* name : kAll) EXPECT_STREQ(Format::Find(name)->name, name);
    EXPECT_EQ(Format::Find("no such"), &pf_dm);
}

TEST(PositionFormat, Texts)
{
    const struct {
        const char* format;
        double lat, lon;
        const char* text;
    } cases[] = {
        {"Degrees", 54.5, -10.25, "54.50000°N, 10.25000°W"},
        {"Degrees", -1.0, 0.0, " 1.00000°S,  0.00000°E"},
        {"Deg,Min", 12 + 59.9996 / 60, -(12 + 59.9994 / 60), "13°00.000'N, 12°59.999'W"},
        {"Deg,Min,Sec", 12 + 59.0 / 60 + 59.96 / 3600, 12 + 58.0 / 60 + 59.94 / 3600, "13°0'00.0\"N, 12°58'59.9\"E"},
        {"Deg,Min,Sec", -33.5, 151.25, "33°30'00.0\"S, 151°15'00.0\"E"},
        {"UTM on WGS84", 0.0, 3.0, "31N 500000E 000000N"},
        {"UTM on WGS84", 0.0, 180.0, "1N 166021E 000000N"},
        {"UTM/WGS84 bands", 0.0, -177.0, "1N 500000E 000000N"},
        {"MGRS", 0.0, 9.0, "32NNF0000000000"},
        {"NZTM", 0.0, 173.0, kOffGrid},
        {"NZTM", 54.0, 10.0, kOffGrid},
        {"British National Grid", 54.0, 10.0, kOffGrid},
        {"British National Grid", -33.0, 151.0, kOffGrid},
    };
    for (const auto& c : cases) EXPECT_EQ(Text(c.format, c.lat, c.lon), c.text) << c.format;

    std::string text = "at ";
    appendPosition(text, 1.5, -2.25, 3);
    EXPECT_EQ(text, "at  1.50000, -2.25000");
}

/// The numbers of a text, one after the other, whatever stands between them.
std::vector<double> Numbers(const std::string& text)
{
    std::vector<double> numbers;
    std::string digits;
    for (const char c : text + " ") {
        if (c >= '0' && c <= '9')
            digits += c;
        else if (!digits.empty())
            numbers.push_back(std::stod(std::exchange(digits, {})));
    }
    return numbers;
}

/// The program's own meridian series is a few metres off the exact projection.
TEST(PositionFormat, ProjectionsAgreeWithAnotherLibrary)
{
    constexpr double kSeries_m = 12.0;
    for (double lat = -79.5; lat < 84.0; lat += 2.3) {
        for (double lon = -179.9; lon < 180.0; lon += 3.7) {
            const int zone = static_cast<int>(std::floor(lon / 6.0)) + 31;
            const bool north = lat >= 0.0;
            int z;
            bool n;
            double x, y;
            GeographicLib::UTMUPS::Forward(lat, lon, z, n, x, y, zone);
            const auto plain = Numbers(Text("UTM on WGS84", lat, lon));
            const auto bands = Numbers(Text("UTM/WGS84 bands", lat, lon));
            ASSERT_EQ(plain, bands);
            ASSERT_EQ(plain.size(), 3U);
            ASSERT_EQ(plain[0], zone);
            ASSERT_NEAR(plain[1], x, 1.0) << lat << " " << lon;
            ASSERT_NEAR(plain[2], y, kSeries_m) << lat << " " << lon;
            ASSERT_EQ(Text("UTM on WGS84", lat, lon).find(north ? "N " : "S "), zone < 10 ? 1U : 2U);
        }
    }
    const GeographicLib::TransverseMercator exact(6378137.0, 1 / 298.257222101, 0.9996);
    for (double lat = -52.0; lat < -30.0; lat += 1.1) {
        for (double lon = 164.0; lon < 184.5; lon += 0.9) {
            double x, y;
            exact.Forward(173.0, lat, lon, x, y);
            const auto grid = Numbers(Text("NZTM", lat, lon > 180.0 ? lon - 360.0 : lon));
            ASSERT_EQ(grid.size(), 2U) << lat << " " << lon;
            ASSERT_NEAR(grid[0], x + 1.6e6, 2.0) << lat << " " << lon;
            ASSERT_NEAR(grid[1], y + 1e7, kSeries_m) << lat << " " << lon;
        }
    }
}

TEST(PositionFormat, LatitudeBands)
{
    const std::string letters = "CDEFGHJKLMNPQRSTUVWX";
    for (std::size_t i = 0; i < letters.size(); ++i) {
        EXPECT_EQ(Text("UTM/WGS84 bands", -79.9 + 8.0 * static_cast<double>(i), 9.0)[2], letters[i]);
    }
    EXPECT_EQ(Text("UTM/WGS84 bands", 83.9, 9.0)[2], 'X');
    EXPECT_EQ(Text("UTM/WGS84 bands", -89.9, 9.0)[2], 'C');
}

/// The example of the Ordnance Survey's guide to coordinate systems in Great Britain: the Caister water tower in both
/// datums. The transformation is good to 5 m, as they state.
TEST(PositionFormat, BritishGridMeetsThePublishedExample)
{
    const std::string text =
        Text("British National Grid", 52 + 39 / 60.0 + 28.723 / 3600, 1 + 42 / 60.0 + 57.787 / 3600);
    EXPECT_EQ(text.substr(0, 3), "TG ");
    const auto grid = Numbers(text);
    ASSERT_EQ(grid.size(), 2U);
    EXPECT_NEAR(grid[0], 51409.903, 5.0);
    EXPECT_NEAR(grid[1], 13177.270, 5.0);
}

TEST(PositionFormat, WhatUsersType)
{
    const struct {
        const char* format;
        const char* text;
        double lat, lon;
    } cases[] = {
        {"Degrees", "54.5, 10.25", 54.5, 10.25},
        {"Degrees", "54.5 -10.25", 54.5, -10.25},
        {"Degrees", " -33.5°,151.25° ", -33.5, 151.25},
        {"Deg,Min", "54°30.6'N, 10°15'W", 54.51, -10.25},
        {"Deg,Min", "54 30.6 s, 10 15 e", -54.51, 10.25},
        {"Deg,Min", "54 30.6N 10 15E", 54.51, 10.25},
        {"Deg,Min", "54 30.6 N 010 15 E", 54.51, 10.25},
        {"Deg,Min", "54 30.6 10 15", 54.51, 10.25},
        {"Deg,Min", "N54° 30.6' W010° 15'", 54.51, -10.25},
        {"Deg,Min", "N 54 30.6, E 10 15", 54.51, 10.25},
        {"Deg,Min", "54°30'.6N, 10°15'.0E", 54.51, 10.25},
        {"Deg,Min", "54d30.6, 10:15", 54.51, 10.25},
        {"Deg,Min", "54\u00ba30.6\u2032N, 10\u00b015\u2019E", 54.51, 10.25},
        {"Deg,Min", "-54 30.6, -10 15", -54.51, -10.25},
        {"Deg,Min,Sec", "54°30'36\"N 10°15'0\"W", 54.51, -10.25},
        {"Deg,Min,Sec", "54-30-36.0N, 10-15-00E", 54.51, 10.25},
        {"UTM on WGS84", "32n 500000 e 0", 0.0, 9.0},
        {"UTM on WGS84", "32 S 500000E 10000000N", 0.0, 9.0},
        {"UTM on WGS84", "32H500000E10000000N", 0.0, 9.0},
        {"UTM/WGS84 bands", "32S 500000 0", 0.0, 9.0},
        {"NZTM", "1600000 10000000", 0.0, 173.0},
        {"MGRS", " 31n aa 66022 00000 ", 5e-6, 0.0},
    };
    for (const auto& c : cases) {
        Position p;
        ASSERT_TRUE(Scan(c.format, c.text, p)) << c.format << ": " << c.text;
        EXPECT_NEAR(p.lat, c.lat, 2e-5) << c.format << ": " << c.text;
        EXPECT_NEAR(p.lon, c.lon, 2e-5) << c.format << ": " << c.text;
    }
}

TEST(PositionFormat, ShortBritishReferencesNameTheCornerOfASquare)
{
    Position whole;
    ASSERT_TRUE(Scan("British National Grid", "TG 51400 13100", whole));
    for (const char* text : {"tg514131", "TG 5140 1310", "\tT G 514\n131\r", "TG5140013100"}) {
        Position p;
        ASSERT_TRUE(Scan("British National Grid", text, p)) << text;
        EXPECT_EQ(p.lat, whole.lat) << text;
        EXPECT_EQ(p.lon, whole.lon) << text;
    }
}

TEST(PositionFormat, RefusesTheRestAndLeavesThePosition)
{
    const struct {
        const char* format;
        std::vector<const char*> texts;
    } cases[] = {
        {"Deg,Min",
         {"",
          " ",
          ",",
          "54",
          "54,",
          ",10",
          "54,5 10,2",
          "89.1, 0",
          "0, 361",
          "12 Main Street, 5 Oak Road",
          "Pier 5, 12",
          "54N, 10N",
          "54E, 10N",
          "54NS, 10E",
          "N54N, 10E",
          "1e2, 0",
          "nan, 0",
          "inf, inf",
          "0x10, 0",
          "1.2.3, 4",
          "54 30 36 1, 10",
          "--5, 3",
          "5, 3 parsecs"}},
        {"UTM on WGS84",
         {"", "32", "32N", "32N 500000", "0N 500000 0", "61N 500000 0", "32I 500000 0", "32N 5e5 0", "1.5N 500000 0",
          "32N -5 0", "32N 1000001 0", "32N 500000 10000001", "32N 500000E 0N 7", "99999999999999999999N 1 1"}},
        {"MGRS", {"", "32", "32U", "32UNF", "INV", "INVALID", "32INF1234512345", "99UNF1212", "32UNF123", "London"}},
        {"NZTM", {"", "1600000", "1600000 5000000 7", "9e9 9e9", "1600000 -1", "99999999999 5000000", "a b"}},
        {"British National Grid",
         {"", "TG", "TG 1", "TG 51 13", "TG 514 13", "TG 514091 131771", "TI 514 131", "ZZ 514 131", "JA 514 131",
          "TG 514131x", "T1 514131", "<off grid>"}},
    };
    for (const auto& [format, texts] : cases) {
        for (const char* text : texts) {
            Position p;
            EXPECT_FALSE(Scan(format, text, p)) << format << ": " << text;
            EXPECT_EQ(p.lat, Position().lat) << text;
            EXPECT_EQ(p.lon, Position().lon) << text;
        }
    }
    for (const char* name : kAll) {
        Position p;
        EXPECT_FALSE(Scan(name, nullptr, p));
        EXPECT_FALSE(Scan(name, std::string(1'000'000, '5').c_str(), p)) << name;
    }
}

/// To 1e-5 degrees, or to the format's last digit.
TEST(PositionFormat, ReadsBackWhatItWrote)
{
    constexpr double kMetresPerDegree = 111'000.0;
    for (const char* name : kAll) {
        int read = 0;
        const bool is_metric = Format::Find(name)->name[0] != 'D';
        for (double lat = -89.0; lat <= 89.0; lat += 1.73) {
            for (double lon = -179.97; lon <= 180.0; lon += 2.9) {
                const std::string text = Text(name, lat, lon);
                Position p;
                if (text == kOffGrid) continue;
                ASSERT_TRUE(Scan(name, text.c_str(), p)) << text;
                ++read;
                const double narrow = std::cos(lat * M_PI / 180.0);
                const double tolerance = std::string(name) == "Deg,Min,Sec" ? 0.051 / 3600 : 1e-5;
                ASSERT_NEAR(p.lat, lat, tolerance) << name << " " << text;
                ASSERT_NEAR(std::remainder(p.lon - lon, 360.0), 0.0,
                            is_metric ? std::max(1e-5, 1.0 / kMetresPerDegree / narrow) : tolerance)
                    << name << " " << text;
                // A reference stays the same however often it is read and written, but where grids meet.
                if (is_metric && std::fabs(lat) < 79.0) {
                    ASSERT_EQ(Text(name, p.lat, p.lon), text);
                }
            }
        }
        EXPECT_GT(read, 10) << name;
    }
}

TEST(PositionFormat, NonsenseIsNoPosition)
{
    for (const char* name : kAll) {
        for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {
            EXPECT_EQ(Text(name, bad, 10.0), "") << name;
            Text(name, 10.0, bad); // any text, without a fault
        }
        for (const double lat : {-90.0, 90.0}) EXPECT_FALSE(Text(name, lat, 0.0).empty()) << name;
    }
}

TEST(PositionFormat, TextsCutAnywhereAreReadToTheirEndOnly)
{
    for (const char* name : kAll) {
        const bool is_british = std::string(name).starts_with("British");
        const std::string whole = is_british ? Text(name, 51.5, -0.1) : Text(name, -41.3, 174.8);
        ASSERT_NE(whole, kOffGrid);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const auto exact = std::make_unique<char[]>(length + 1); // so that a sanitizer sees the byte behind
            std::copy_n(whole.begin(), length, exact.get());
            Position p;
            if (Scan(name, exact.get(), p)) {
                EXPECT_LE(std::fabs(p.lat), 90.0) << whole.substr(0, length);
            }
        }
    }
}

} // namespace
