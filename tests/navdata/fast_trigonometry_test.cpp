#include "navdata/fast_trigonometry.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double kRadians = 3.14159265358979323846 / 180.0;

TEST(FastTrigonometry, TableHoldsTheSines)
{
    for (std::size_t i = 0; i < lookup_sin.size(); ++i) {
        EXPECT_EQ(lookup_sin[i], static_cast<float>(std::sin(static_cast<double>(i) * kRadians))) << i;
    }
}

TEST(FastTrigonometry, SineAndCosineAreThoseOfTheNearestDegree)
{
    for (float degrees = -1000.0F; degrees < 1000.0F; degrees += 0.37F) {
        float sine, cosine;
        fast_sin_cos(degrees, sine, cosine);
        const double nearest = std::round(static_cast<double>(degrees)) * kRadians;
        ASSERT_NEAR(sine, std::sin(nearest), 2e-7) << degrees;
        ASSERT_NEAR(cosine, std::cos(nearest), 2e-7) << degrees;
    }
}

TEST(FastTrigonometry, CornersAndNonsense)
{
    const struct {
        float degrees, sine, cosine;
    } cases[] = {
        {360.0F, 0, 1},        {-90.0F, -1, 0},
        {90.5F, 1, 0},         {89.5F, 1, 0},
        {270.5F, -1, 0},       {269.5F, -1, 0},
        {0.49999997F, 0, 1},   {359.7F, 0, 1},
        {-1e-30F, 0, 1},       {450.0F, 1, 0},
        {3.6e9F, 0, 1}, // ten million turns
        {std::nanf(""), 0, 1}, {std::numeric_limits<float>::infinity(), 0, 1},
    };
    for (const auto& c : cases) {
        float sine = 5, cosine = 5;
        fast_sin_cos(c.degrees, sine, cosine);
        EXPECT_EQ(sine, c.sine) << c.degrees;
        EXPECT_EQ(cosine, c.cosine) << c.degrees;
    }
    for (float huge = 1.0F; std::isfinite(huge); huge *= -1.7F) {
        float sine, cosine;
        fast_sin_cos(huge, sine, cosine);
        ASSERT_NEAR(sine * sine + cosine * cosine, 1.0F, 1e-6F) << huge;
    }
}

TEST(FastTrigonometry, ArctangentFindsTheDegreeBack)
{
    for (int degrees = 0; degrees < 360; ++degrees) {
        float sine, cosine;
        fast_sin_cos(static_cast<float>(degrees), sine, cosine);
        EXPECT_EQ(fast_atan2(cosine, sine), static_cast<float>(degrees));
        const double between = (degrees + 0.5) * kRadians;
        const float found = fast_atan2(static_cast<float>(std::cos(between)), static_cast<float>(std::sin(between)));
        EXPECT_NEAR(found, degrees + 0.5, 0.51) << degrees;
        EXPECT_EQ(found, std::floor(found));
    }
}

TEST(FastTrigonometry, Folding)
{
    const struct {
        float degrees, circle, difference;
    } cases[] = {
        {0, 0, 0},        {359.5F, 359.5F, -0.5F}, {360, 0, 0},         {-10, 350, -10},
        {190, 190, -170}, {180, 180, 180},         {-180, 180, -180},   {540, 180, 180},
        {725, 5, 5},      {9999, 279, -81},        {-1e-9F, 0, -1e-9F}, {std::nanf(""), 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fold_degrees(c.degrees), c.circle) << c.degrees;
        EXPECT_EQ(fold_difference(c.degrees), c.difference) << c.degrees;
    }
}

} // namespace
