#include "navdata/units.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

TEST(FormatScale, BarFitsAndIsNeverShort)
{
    for (const auto family : {CUnits::kStatute, CUnits::kNautical, CUnits::kMetric}) {
        CUnits units;
        units.set_unit_family(family);
        for (double scale = 1e-12; scale < 1e12; scale *= 1.037) {
            for (const double longest : {40.0, 160.0, 250.0}) {
                std::string text;
                const double width = units.format_scale(scale, text, longest);
                ASSERT_LE(width, longest) << scale << " " << family;
                ASSERT_GE(width, 0.4 * longest * (1 - 1e-9)) << scale << " " << family;
                ASSERT_EQ(text.find('e'), std::string::npos) << text;
                ASSERT_FALSE(text.empty());
            }
        }
    }
}

TEST(FormatScale, TextsAndBounds)
{
    const struct {
        const char* name;
        CUnits::e_dist_units family;
        double scale;
        double longest;
        const char* text;
        double width;
    } cases[] = {
        {"exact_fit", CUnits::kNautical, 0.01, 100.0, "1 NM", 100.0},
        {"two", CUnits::kNautical, 0.01, 499.0, "2 NM", 200.0},
        {"tenth_stays_in_the_main_unit", CUnits::kNautical, 0.001, 100.0, "0.1 NM", 100.0},
        {"below_a_tenth_in_yards", CUnits::kNautical, 0.00099, 100.0, "200 yds", 200 / 1.0936000347137451 / 1.83348},
        {"kilometres", CUnits::kMetric, 1.0, 250.0, "200 km", 200 / 1.0000000474974513 / 1.852},
        {"large_without_exponent", CUnits::kMetric, 1e9, 250.0, "200000000000 km", 200 / 1.0000000474974513 / 1.852},
        {"nothing", CUnits::kNautical, 0.0, 250.0, "", 0.0},
        {"too_large", CUnits::kNautical, 2e20, 250.0, "", 0.0},
        {"not_a_number", CUnits::kNautical, std::nan(""), 250.0, "", 0.0},
        {"no_room", CUnits::kNautical, 1.0, 0.0, "", 0.0},
    };
    for (const auto& c : cases) {
        CUnits units;
        units.set_unit_family(c.family);
        std::string text = "old";
        EXPECT_NEAR(units.format_scale(c.scale, text, c.longest), c.width, c.width * 1e-3) << c.name;
        EXPECT_EQ(text, c.text) << c.name;
    }
}

} // namespace
