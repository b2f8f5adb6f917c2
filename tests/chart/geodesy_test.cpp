#include "chart/datum_transform.h"
#include "chart/geo_ref_coeff.h"
#include "chart/polynomial_projection.h"
#include "chart/utm_proj.h"
#include "core/files.h"
#include "decoder_support.h"
#include "support/chart_samples.h"
#include "support/temporary_root.h"

#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

CPolynomialProjection Projection(const Geo_ref_coeff_t& geo, int width, int height, double lat_shift = 0.0,
                                 double lon_shift = 0.0)
{
    CPolynomialProjection projection;
    projection.init(geo.forward, geo.inverse, width, height, lat_shift, lon_shift);
    return projection;
}

/// Coefficients without any pattern: every term counts.
Geo_ref_coeff_t RandomGeo(std::mt19937& random)
{
    Geo_ref_coeff_t geo;
    for (auto* cubics : {geo.forward, geo.inverse}) {
        for (int i = 0; i < 20; ++i) cubics[i / 10][i % 10] = static_cast<double>(random()) / 4e9 - 0.5;
    }
    return geo;
}

TEST(Cubic, TakesItsTermsInOrder)
{
    for (int term = 0; term < 10; ++term) {
        double c[2][10] = {};
        c[0][term] = 1.0;
        const double expected[10] = {1, 2, 3, 4, 6, 9, 8, 12, 18, 27};
        double first, second;
        Geo_ref_coeff_t::polynomial(2.0, 3.0, first, second, c);
        EXPECT_EQ(first, expected[term]) << term;
        EXPECT_EQ(second, 0.0);
        const CubicGradient gradient = GradientOfCubic(c[0], 2.0, 3.0);
        const double by_a[10] = {0, 1, 0, 4, 3, 0, 12, 12, 9, 0}, by_b[10] = {0, 0, 1, 0, 2, 6, 0, 4, 12, 27};
        EXPECT_EQ(gradient.by_a, by_a[term]) << term;
        EXPECT_EQ(gradient.by_b, by_b[term]) << term;
    }
}

TEST(PolynomialProjection, AgreesWithTheFilesBlockToTheBitWithoutShifts)
{
    std::mt19937 random(4);
    for (int round = 0; round < 100; ++round) {
        const Geo_ref_coeff_t geo = RandomGeo(random);
        const CPolynomialProjection projection = Projection(geo, 640, 480);
        double lat, lon, lat2, lon2, x, y, x2, y2;
        geo.xy_to_latlong(320, 240, lat, lon);
        projection.xy_to_latlong(320, 240, lat2, lon2);
        geo.latlong_to_xy(0.5, 9.0, x, y, projection.centre_lon);
        projection.latlong_to_xy(0.5, 9.0, x2, y2);
        EXPECT_TRUE(lat == lat2 && lon == lon2 && x == x2 && y == y2 && lon == projection.centre_lon);
    }
}

TEST(PolynomialProjection, CorrectsTheInverseOnce)
{
    // Forward is off by a tenth: one step moves the pixel back by as much, and no second one follows.
    Geo_ref_coeff_t geo = AffineGeoreferencing(100, 100, 1, 0, 0, 1);
    geo.forward[0][0] += 10.0;
    double lat, lon;
    geo.xy_to_latlong(50, 50, lat, lon);
    EXPECT_NEAR(lon, 0.4, 1e-12);
    EXPECT_NEAR(lat, 0.5, 1e-12);
}

struct WrapCase {
    const char* name;
    double centre, lon, x;
};

const WrapCase kWraps[] = {
    {"over_the_antimeridian_eastwards", 179, -179, 181},
    {"over_the_antimeridian_westwards", -179, 179, -181},
    {"exactly_opposite_stays", 0, 180, 180},
    {"exactly_opposite_stays_in_the_west", 10, -170, -170},
    {"just_beyond_goes_round", 0, 180.5, -179.5},
};

TEST(PolynomialProjection, TakesLongitudesToItsSideOfTheWorld)
{
    Geo_ref_coeff_t geo = {};
    geo.forward[0][2] = 1.0; // x is the longitude
    geo.forward[1][1] = 1.0;
    geo.inverse[0][2] = 1.0;
    geo.inverse[1][1] = 1.0;
    for (const WrapCase& c : kWraps) {
        geo.inverse[1][0] = c.centre;
        geo.forward[0][0] = 0.0;
        CPolynomialProjection projection = Projection(geo, 0, 0);
        projection.centre_lon = c.centre;
        double x, y;
        projection.latlong_to_xy(5.0, c.lon, x, y);
        EXPECT_DOUBLE_EQ(x, c.x) << c.name;
    }
}

TEST(PolynomialProjection, BatchesAreTheSingleFormToTheBit)
{
    std::mt19937 random(6);
    for (const InstructionSet set : {InstructionSet::portable, InstructionSet::avx2}) {
        const CWithInstructionSet with(set);
        for (std::size_t count = 0; count < 40; ++count) {
            CPolynomialProjection projection = Projection(RandomGeo(random), 640, 480, 0.1, -0.2);
            projection.centre_lon = static_cast<double>(random() % 360) - 180.0;
            std::vector<GeoPoint> positions(count);
            for (auto& p : positions)
                p = {static_cast<double>(random() % 18000) / 100 - 90,
                     static_cast<double>(random() % 72000) / 100 - 360};
            if (count > 3) positions[count / 2] = {kNan, 1e300};
            std::vector<DblPoint> points(count + 1, {7.0, 7.0});
            projection.latlong_to_xy(positions, points);
            for (std::size_t i = 0; i < count; ++i) {
                double x, y;
                projection.latlong_to_xy(positions[i].lat, positions[i].lon, x, y);
                const bool both_undefined = std::isnan(x) && std::isnan(points[i].x);
                EXPECT_TRUE(both_undefined || (x == points[i].x && y == points[i].y)) << count << " " << i;
            }
            EXPECT_EQ(points[count], (DblPoint{7.0, 7.0}));
        }
    }
}

TEST(PolynomialProjection, TellsUnusableAndOutlyingPoints)
{
    const CPolynomialProjection projection = Projection(AffineGeoreferencing(100, 50, 1, 0, 0, 2), 100, 50);
    FPoint point;
    EXPECT_TRUE(projection.latlong_to_xy(0.5, 1.0, point));
    EXPECT_EQ(point, (FPoint{50.0F, 25.0F}));
    for (const double bad : {1e12, kNan}) {
        EXPECT_FALSE(projection.latlong_to_xy(bad, 1.0, point));
        EXPECT_EQ(point, (FPoint{-1.0F, -1.0F}));
    }
    POINT pixel;
    EXPECT_TRUE(projection.latlong_to_xy_clipped(0.99, 1.97, pixel));
    EXPECT_EQ(pixel.y, 1);
    EXPECT_FALSE(projection.latlong_to_xy_clipped(0.5, 1.995, pixel)) << "rounds to the first pixel outside";
    EXPECT_FALSE(projection.latlong_to_xy_clipped(kNan, 1.0, pixel));
}

TEST(PolynomialProjection, ScaleAndRotationFollowNorth)
{
    const CPolynomialProjection north_up = Projection(AffineGeoreferencing(60, 60, 1, 0, 0, 1), 60, 60);
    float first, second;
    EXPECT_NEAR(north_up.get_scale(30, 30), 1.0, 1e-12);
    north_up.get_rotation(30, 30, first, second);
    EXPECT_FLOAT_EQ(first, 1.0F);
    EXPECT_FLOAT_EQ(second, 0.0F);
    Geo_ref_coeff_t east_up = {};
    east_up.inverse[0][1] = -0.5; // latitude falls to the right
    const CPolynomialProjection turned = Projection(east_up, 60, 60);
    EXPECT_NEAR(turned.get_scale(0, 0), 30.0, 1e-12);
    turned.get_rotation(0, 0, first, second);
    EXPECT_FLOAT_EQ(first, 0.0F);
    EXPECT_FLOAT_EQ(second, -1.0F);
    Geo_ref_coeff_t none = {};
    EXPECT_EQ(none.get_scale(1, 1), 0.0);
    none.inverse[0][1] = kNan;
    EXPECT_EQ(none.get_scale(1, 1), 0.0);
    Projection(none, 60, 60).get_rotation(0, 0, first, second);
    EXPECT_EQ(first, 1.0F);
}

TEST(WorldFile, GivesAnExactPairOrNothing)
{
    CTemporaryRoot root;
    const std::string path = root.file("map.wld");
    CPolynomialProjection projection;
    ASSERT_TRUE(write_to_file(path, "0.01\n0.002\n-0.001\n -0.02\r\n10.5 50.25\n"));
    ASSERT_TRUE(projection.ReadGeoWorldFile(path.c_str(), 400, 300));
    double lat, lon, x, y;
    projection.xy_to_latlong(100, 200, lat, lon);
    EXPECT_NEAR(lat, 50.25 - 0.1 - 4.0, 1e-9);
    EXPECT_NEAR(lon, 10.5 + 1.0 + 0.4, 1e-9);
    projection.latlong_to_xy(lat, lon, x, y);
    EXPECT_NEAR(x, 100.0, 1e-7);
    EXPECT_NEAR(y, 200.0, 1e-7);
    EXPECT_NEAR(projection.centre_lon, 10.5 + 2.0 + 0.3, 1e-9);
    for (const char* bad : {"", "1 2 3 4 5", "1 2 3 4 5 north", "1 1 1 1 0 0", "nan 2 3 4 5 6"}) {
        write_to_file(path, bad);
        EXPECT_FALSE(projection.ReadGeoWorldFile(path.c_str(), 9, 9)) << bad;
        EXPECT_FALSE(projection.valid);
        EXPECT_EQ(projection.width, 400);
    }
}

TEST(Ellipsoid, EarthCentredCoordinatesReturn)
{
    ellipsoid wgs84;
    wgs84.init(6378137.0, 6356752.3141);
    for (const double degrees : {-89.0, -45.0, 0.0, 10.0, 60.0}) {
        const double lat = degrees * kRadiansPerDegree, lon = 2.0;
        double X, Y, Z, back_lat, back_lon, height;
        wgs84.set_lat(lat);
        wgs84.lat_long_to_XYZ(lat, lon, X, Y, Z);
        wgs84.XYZ_to_lat_long(X, Y, Z, back_lat, back_lon);
        EXPECT_NEAR(back_lat, lat, 1e-9);
        EXPECT_NEAR(back_lon, lon, 1e-12);
        wgs84.XYZ_to_lat_long_H(X * 1.001, Y * 1.001, Z * 1.001, back_lat, back_lon, height);
        EXPECT_NEAR(back_lat, lat, 1e-5);
        EXPECT_NEAR(height, 6370.0, 15.0);
    }
    double lat, lon, height;
    wgs84.XYZ_to_lat_long_H(kNan, 0, 0, lat, lon, height); // ends
}

TEST(Ellipsoid, CourseAndSpeedComeFromEarthCentredVelocity)
{
    constexpr double kMetresPerSecondPerKnot = 0.5144444;
    const double at_equator[3] = {6378137.0, 0.0, 0.0};
    const struct {
        double velocity[3];
        float course, speed;
    } cases[] = {
        {{5.0, 0.0, kMetresPerSecondPerKnot * 10}, 0.0F, 10.0F}, // what goes up takes no part
        {{0.0, kMetresPerSecondPerKnot * 10, 0.0}, 90.0F, 10.0F},
        {{0.0, -kMetresPerSecondPerKnot * 3, -kMetresPerSecondPerKnot * 3}, 225.0F, 4.2426F},
    };
    for (const auto& c : cases) {
        float course, speed;
        ellipsoid::crs_spd(at_equator, c.velocity, course, speed);
        EXPECT_NEAR(course, c.course, 1e-3);
        EXPECT_NEAR(speed, c.speed, 1e-3);
    }
}

TEST(DatumTransform, GoesThereAndBack)
{
    Helmert there, back;
    there.init_WGS84_to_OSGB36();
    back.init_OSGB36_to_WGS84();
    double X = 3980000.0, Y = -10000.0, Z = 4960000.0;
    there.transform(X, Y, Z);
    EXPECT_NEAR(X, 3980000.0 - 446.448 + 3980000.0 * 20.4894e-6 - 4.082616e-6 * 10000.0 - 1.1974898e-6 * 4960000.0,
                0.01);
    back.transform(X, Y, Z);
    EXPECT_NEAR(X, 3980000.0, 0.02);
    EXPECT_NEAR(Y, -10000.0, 0.02);
    EXPECT_NEAR(Z, 4960000.0, 0.02);
    Molodensky airy(6377563.396, 6356256.91, 375, -111, 431);
    double lat = 0.9, lon = -0.03;
    airy.ToWGS84(lat, lon);
    EXPECT_GT(std::hypot(lat - 0.9, lon + 0.03), 1e-6);
    airy.FromWGS84(lat, lon);
    EXPECT_NEAR(lat, 0.9, 1e-9);
    EXPECT_NEAR(lon, -0.03, 1e-9);
}

TEST(TransverseMercator, OriginsAndRoundTrips)
{
    utm_proj national, zone31;
    national.init_OSGB();
    zone31.init_WGS84();
    zone31.origin_lon = 3.0 * kRadiansPerDegree;
    double easting, northing, lat, lon;
    national.lat_lon_to_E_N(49.0, -2.0, easting, northing);
    EXPECT_NEAR(easting, 400000.0, 1e-6);
    EXPECT_NEAR(northing, -100000.0, 1e-6);
    zone31.lat_lon_to_E_N(0.0, 3.0, easting, northing);
    EXPECT_NEAR(easting, 500000.0, 1e-6);
    EXPECT_NEAR(northing, 0.0, 1e-6);
    for (const double degrees : {-70.0, -10.0, 5.0, 52.0, 75.0}) {
        zone31.lat_lon_to_E_N(degrees, 5.25, easting, northing);
        zone31.E_N_to_lat_lon(easting, northing, lat, lon);
        EXPECT_NEAR(lat, degrees, 2e-5) << "the series of the two directions differ by metres";
        EXPECT_NEAR(lon, 5.25, 2e-5);
    }
    zone31.E_N_to_lat_lon(kNan, kNan, lat, lon); // ends
    zone31.E_N_to_lat_lon(1e300, -1e300, lat, lon);
}

} // namespace
