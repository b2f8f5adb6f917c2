#include "core/polygon.h"
#include "core/simple_grid.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

TEST(SimpleGrid, DistancesAndBearings)
{
    struct CCase {
        const char* name;
        double lat1, lon1, lat2, lon2;
        double metres;
        float bearing;
    };
    const CCase cases[] = {
        {"one minute north", 0, 0, 1.0 / 60, 0, 1852, 0},
        {"one minute east at the equator", 0, 0, 0, 1.0 / 60, 1852, 90},
        {"one degree south", 10, 20, 9, 20, 111120, 180},
        {"half at 60 north, west", 60, 0, 60, -1.0 / 60, 926, 270},
        {"over the antimeridian eastward", 0, 179.5, 0, -179.5, 111120, 90},
        {"over the antimeridian westward", 0, -179.5, 0, 179.5, 111120, 270},
        {"the same place a turn further", 5, 359, 5, -1, 0, 0},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        CSimpleGrid grid;
        EXPECT_FALSE(grid.ready());
        grid.SetOrigin(c.lat1, c.lon1);
        double metres = 0.0;
        float bearing = 0.0F;
        grid.distance_and_bearing(c.lat1, c.lon1, c.lat2, c.lon2, metres, bearing);
        EXPECT_NEAR(metres, c.metres, 1e-3);
        if (c.metres > 0) {
            EXPECT_NEAR(bearing, c.bearing, 1e-3);
        }
        EXPECT_NEAR(grid.distance(c.lat2, c.lon2), c.metres, 1e-3);
        double x = 0.0;
        double y = 0.0;
        double lat = 0.0;
        double lon = 0.0;
        grid.latlon_to_xy(c.lat2, c.lon2, x, y);
        grid.xy_to_latlon(x, y, lat, lon);
        EXPECT_NEAR(lat, c.lat2, 1e-9);
        EXPECT_NEAR(std::remainder(lon - c.lon2, 360.0), 0.0, 1e-9);
    }
}

TEST(SimpleGrid, FiniteAtThePoles)
{
    for (const double pole : {90.0, -90.0, 89.9999999999}) {
        CSimpleGrid grid;
        grid.SetOrigin(pole, 12.0);
        EXPECT_TRUE(grid.ready());
        double lat = 0.0;
        double lon = 0.0;
        grid.xy_to_latlon(5000.0, pole > 0 ? -5000.0 : 5000.0, lat, lon);
        EXPECT_TRUE(ValidLatLon(lat, lon)) << pole << ": " << lat << ", " << lon;
    }
    EXPECT_FALSE(ValidLatLon(90.001, 0.0));
    EXPECT_FALSE(ValidLatLon(0.0, std::numeric_limits<double>::quiet_NaN()));
}

namespace {

CPolygon Polygon(std::initializer_list<DblPoint> vertices)
{
    CPolygon polygon;
    polygon.vertices = vertices;
    return polygon;
}

} // namespace

TEST(Polygon, SquaresAgainstAnLShape)
{
    const CPolygon shape = Polygon({{0, 0}, {10, 0}, {10, 3}, {3, 3}, {3, 10}, {0, 10}});
    struct CCase {
        const char* name;
        double x, y, side;
        bool overlaps;
    };
    const CCase cases[] = {
        {"inside the foot", 5, 1, 1, true},
        {"in the notch", 5, 5, 2, false},
        {"around everything", -5, -5, 30, true},
        {"across the arm", -1, 6, 1.5, true},
        {"crossing, no corner inside", 1, -5, 20, true},
        {"beside", 11, 0, 5, false},
        {"touching the edge", 10, 0, 5, true},
        {"touching a corner", 10, -5, 5, true},
    };
    for (const CCase& c : cases) EXPECT_EQ(shape.squareDoesOverlap(c.x, c.y, c.side), c.overlaps) << c.name;
    EXPECT_TRUE(shape.contains(1, 9));
    EXPECT_FALSE(shape.contains(5, 5));
    EXPECT_FALSE(Polygon({{0, 0}, {10, 10}}).contains(5, 5));
    EXPECT_FALSE(CPolygon().squareDoesOverlap(0, 0, 1));
}

TEST(Polygon, CrossingWithoutACornerInside)
{
    const CPolygon upright = Polygon({{4, 0}, {6, 0}, {6, 10}, {4, 10}});
    const CPolygon lying = Polygon({{0, 4}, {10, 4}, {10, 6}, {0, 6}});
    EXPECT_TRUE(upright.overlaps(lying));
    EXPECT_FALSE(upright.overlaps(Polygon({{7, 0}, {9, 0}, {9, 10}})));
}

TEST(Polyline, DistanceEndsAtTheEnds)
{
    const std::vector<DblPoint> line = {{0, 0}, {10, 0}, {10, 0}, {10, 10}};
    EXPECT_TRUE(pointIsNearerThan(line, 5, 0.9, 1.0));
    EXPECT_FALSE(pointIsNearerThan(line, 5, 1.0, 1.0));
    EXPECT_FALSE(pointIsNearerThan(line, -0.8, 0.8, 1.0)) << "beyond the first point";
    EXPECT_FALSE(pointIsNearerThan(line, 0.5, 9.5, 1.0)) << "the line is open";
    EXPECT_FALSE(pointIsNearerThan({}, 0, 0, 1.0));
}
