#include "chart/polynomial_projection.h"
#include "overlays/mapping.h"

#include <gtest/gtest.h>

namespace {

TEST(ViewParams, OffsetsLandOnWholeScreenPixels)
{
    constexpr struct {
        const char* name;
        int level;
        double sx, x, offset;
    } cases[] = {
        {"level_0_rounds_to_image_pixels", 0, 100, 250.4, 150.0},
        {"magnified_rounds_to_image_pixels_too", -2, 101, 250.0, 225.0},
        {"reduced_rounds_to_screen_pixels", 2, 100, 1001.0, 600.0},
        {"reduced_keeps_fractions_of_a_screen_pixel_out", 3, 10.25, 803.0, 720.0},
        {"negative_offsets", 1, 300, 100.0, -500.0},
    };
    for (const auto& c : cases) {
        CViewParams params;
        params.SetLevel(c.level);
        params.AdjustOffset(c.sx, c.sx, c.x, c.x);
        EXPECT_EQ(params.offset_x, c.offset) << c.name;
        EXPECT_EQ(params.offset_y, c.offset) << c.name;
    }
}

TEST(ViewParams, ScrollTellsTheDeltaReallyApplied)
{
    constexpr struct {
        const char* name;
        int level;
        double asked, applied;
    } cases[] = {
        {"whole", 0, 7.0, 7.0},
        {"fraction_is_lost", 0, 7.4, 7.0},
        {"magnified_moves_by_whole_image_pixels", -2, 6.1, 8.0},
        {"magnified_below_half_does_not_move", -2, 1.9, 0.0},
        {"reduced_moves_by_screen_pixels", 3, -3.2, -3.0},
    };
    for (const auto& c : cases) {
        CViewParams params;
        params.SetLevel(c.level);
        params.AdjustOffset(0, 0, 1000, 2000);
        const double before = params.offset_x;
        double dx = c.asked;
        double dy = -c.asked;
        params.ApplyDelta(dx, dy);
        EXPECT_EQ(dx, c.applied) << c.name;
        EXPECT_EQ((before - params.offset_x) * params.scale, c.applied) << c.name;
    }
}

CMapping MappingOf(int kind, int count)
{
    CMapping mapping;
    mapping.kind = kind;
    mapping.count = count;
    mapping.image_points = {{100, 100}, {200, 100}, {300, 100}};
    mapping.set_bounds();
    return mapping;
}

TEST(Mapping, HitsByKind)
{
    constexpr struct {
        const char* name;
        int kind, count;
        float x, y;
        bool hit;
    } cases[] = {
        {"point", CMapping::kPoints, 3, 205, 100, true},
        {"exactly_the_radius_away", CMapping::kPoints, 3, 209, 100, false},
        {"point_beyond_the_count", CMapping::kPoints, 2, 300, 100, false},
        {"count_above_the_points", CMapping::kPoints, 9, 300, 100, true},
        {"negative_count", CMapping::kPoints, -1, 100, 100, false},
        {"between_points", CMapping::kPoints, 3, 150, 100, false},
        {"between_points_of_a_line", CMapping::kPolyline, 0, 150, 105, true},
        {"beside_a_line", CMapping::kPolyline, 0, 150, 120, false},
        {"nothing_mapped", CMapping::kNone, 3, 100, 100, false},
        {"always", CMapping::kAlways, 0, 5000, 5000, true},
    };
    CViewParams params;
    params.view_rect = {0, 0, 1000, 1000};
    for (const auto& c : cases) {
        CMapping mapping = MappingOf(c.kind, c.count);
        EXPECT_TRUE(mapping.map_to_screen(params)) << c.name;
        EXPECT_EQ(mapping.HitTest_mapped(c.x, c.y, 81.0), c.hit) << c.name;
    }
}

TEST(Mapping, DrawsOnlyWhatTheViewMeets)
{
    CViewParams params;
    params.view_rect = {400, 0, 1000, 1000};
    CMapping mapping = MappingOf(CMapping::kPolyline, 0);
    EXPECT_FALSE(mapping.map_to_screen(params));
    mapping.kind = CMapping::kAlways;
    EXPECT_TRUE(mapping.map_to_screen(params));
    mapping.clear();
    EXPECT_FALSE(mapping.map_to_screen(params)) << "inverted bounds meet nothing";
    mapping.set_bounds();
    EXPECT_EQ(mapping.bounds, FRect()) << "no points";
}

/// 4096 pixels for 360 degrees.
CPolynomialProjection WorldProjection()
{
    CPolynomialProjection projection;
    double forward[2][10] = {};
    double inverse[2][10] = {};
    const double per_degree = 4096.0 / 360.0;
    forward[0][0] = 2048.0;
    forward[0][2] = per_degree;
    forward[1][0] = 1024.0;
    forward[1][1] = -per_degree;
    inverse[0][0] = 90.0;
    inverse[0][2] = -1.0 / per_degree;
    inverse[1][0] = -180.0;
    inverse[1][1] = 1.0 / per_degree;
    projection.init(forward, inverse, 4096, 2048, 0.0, 0.0);
    return projection;
}

TEST(Mapping, LineAcrossTheAntimeridianStaysShort)
{
    const CPolynomialProjection projection = WorldProjection();
    CMapping mapping;
    mapping.wrap_width = 4096.0;
    for (const double lon : {170.0, 178.0, -178.0, -170.0, 178.0}) mapping.AddPosition(projection, 0.0, lon);
    mapping.set_bounds();
    EXPECT_LT(mapping.bounds.width(), 300.0);
    EXPECT_NEAR(mapping.image_points[2].x, 4096.0 + 2.0 * 4096.0 / 360.0, 1e-6);

    CMapping regional;
    regional.AddPosition(projection, 0.0, 178.0);
    regional.AddPosition(projection, 0.0, -178.0);
    EXPECT_NEAR(regional.image_points[1].x, 2.0 * 4096.0 / 360.0, 1e-6) << "a chart that does not repeat";
}

} // namespace
