#include "chart/rastelle_header.h"
#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/graticule.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

namespace {

std::vector<CChartSheet> AllSheets()
{
    std::vector<CSheetPlan> plans;
    std::string error;
    EXPECT_TRUE(ReadSheetPlans(ZT_SOURCE_DIR "/data/world/charts.tsv", plans, error)) << error;
    return {plans.begin(), plans.end()};
}

} // namespace

TEST(ChartScheme, EveryChartFitsWithinAPixelBothWays)
{
    for (const CChartSheet& sheet : AllSheets()) {
        SCOPED_TRACE(sheet.plan.name);
        const auto fit = sheet.Fit();
        ASSERT_TRUE(fit);
        for (int row = 0; row <= 60; ++row) {
            const double y = sheet.Height() * row / 60.0;
            const double lat = sheet.LatitudeAt(y);
            const double lon = sheet.LongitudeAt(sheet.Width() * 0.9);
            EXPECT_NEAR(sheet.YAt(lat), y, 1e-6);
            double x_found = 0.0;
            double y_found = 0.0;
            fit->coefficients.latlong_to_xy(lat, lon, x_found, y_found, (sheet.West() + sheet.East()) / 2);
            ASSERT_LT(std::hypot(x_found - sheet.Width() * 0.9, y_found - y), 1.0);
            double lat_found = 0.0;
            double lon_found = 0.0;
            fit->coefficients.xy_to_latlong(sheet.Width() * 0.9, y, lat_found, lon_found);
            ASSERT_LT(std::abs(sheet.YAt(lat_found) - y), 1.0);
            ASSERT_LT(std::abs(lon_found - lon) * sheet.PixelsPerDegree(), 1.0);
        }
    }
}

TEST(ChartScheme, SheetsAreWholeTilesAndTheWorldIsOneTurn)
{
    std::set<std::string> names;
    std::set<double> regional_scales;
    int worlds = 0;
    for (const CChartSheet& sheet : AllSheets()) {
        SCOPED_TRACE(sheet.plan.name);
        EXPECT_TRUE(names.insert(sheet.plan.name).second);
        EXPECT_EQ(sheet.Width() % kTileSide, 0);
        EXPECT_EQ(sheet.Height() % kTileSide, 0);
        EXPECT_LE(sheet.West(), sheet.plan.west);
        EXPECT_GE(sheet.East(), sheet.plan.east - 1e-9);
        EXPECT_LE(sheet.South(), sheet.plan.south + 1e-9);
        if (!sheet.plan.IsWorld()) regional_scales.insert(sheet.plan.scale);
        if (!sheet.plan.IsWorld()) continue;
        ++worlds;
        EXPECT_EQ(sheet.West(), -180.0);
        EXPECT_DOUBLE_EQ(sheet.East(), 180.0);
    }
    EXPECT_GE(regional_scales.size(), 3U);
    EXPECT_GE(worlds, 1);
}

TEST(Graticule, NamesPositionsOnBothSidesOfTheDateLine)
{
    const QString degree(QChar(0xB0));
    EXPECT_EQ(CGraticule::LongitudeText(181.5), "178" + degree + "30'W");
    EXPECT_EQ(CGraticule::LongitudeText(180.0), "180" + degree);
    EXPECT_EQ(CGraticule::LongitudeText(-180.0), "180" + degree);
    EXPECT_EQ(CGraticule::LatitudeText(-4.0 - 5.0 / 60), "4" + degree + "05'S");
    EXPECT_EQ(CGraticule::LatitudeText(0.0), "0" + degree);
}
