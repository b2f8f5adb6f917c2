#include "navdata/magnetic_model.h"

#include "navdata/magnetic_declination.h"

#include <gtest/gtest.h>

namespace {

/// Test values as published with the model's reports: places and dates with the field's components.
struct PublishedValue {
    const char* path;
    double year, height, lat, lon;
    double x, y, z, declination;
};

constexpr const char* k2020 = ":/wmm/WMM_COF_2020.txt";
constexpr const char* k2025 = ":/wmm/WMM_COF_2025.txt";

constexpr PublishedValue kPublished[] = {
    {k2020, 2020.0, 0, 80, 0, 6570.4, -146.3, 54606.0, -1.28},
    {k2020, 2020.0, 0, 0, 120, 39624.3, 109.9, -10932.5, 0.16},
    {k2020, 2020.0, 0, -80, 240, 5940.6, 15772.1, -52480.8, 69.36},
    {k2020, 2020.0, 100, 80, 0, 6261.8, -185.5, 52429.1, -1.70},
    {k2020, 2020.0, 100, 0, 120, 37636.7, 104.9, -10474.8, 0.16},
    {k2020, 2020.0, 100, -80, 240, 5744.9, 14799.5, -49969.4, 68.78},
    {k2020, 2022.5, 0, 80, 0, 6529.9, 1.1, 54713.4, 0.01},
    {k2020, 2022.5, 0, 0, 120, 39684.7, -42.2, -10809.5, -0.06},
    {k2020, 2022.5, 0, -80, 240, 6016.5, 15776.7, -52251.6, 69.13},
    {k2025, 2025.0, 0, 80, 0, 6521.6, 145.9, 54791.5, 1.28},
    {k2025, 2025.0, 0, 0, 120, 39677.8, -109.6, -10580.2, -0.16},
    {k2025, 2025.0, 0, -80, 240, 6117.5, 15751.9, -52022.5, 68.78},
};

WMM_Elements Compute(const char* path, double year, const WMM_Geodetic& place)
{
    WMM_MagneticModel model{}, at_date{};
    EXPECT_TRUE(WMM_readMagneticModel(path, model)) << path;
    WMM_Ellipsoid ellipsoid;
    WMM_Spherical spherical;
    WMM_Elements elements{};
    WMM_SetDefaults(ellipsoid);
    WMM_GeodeticToSpherical(ellipsoid, place, spherical);
    WMM_TimelyModifyMagneticModel(year, model, at_date);
    WMM_Geomag(ellipsoid, spherical, place, at_date, elements);
    WMM_CalculateGridVariation(place, elements);
    return elements;
}

TEST(MagneticModel, PublishedValues)
{
    for (const auto& v : kPublished) {
        const WMM_Elements e = Compute(v.path, v.year, {v.lat, v.lon, v.height});
        const auto where = testing::Message() << v.year << " " << v.height << " " << v.lat << " " << v.lon;
        EXPECT_NEAR(e.x, v.x, 0.06) << where;
        EXPECT_NEAR(e.y, v.y, 0.06) << where;
        EXPECT_NEAR(e.z, v.z, 0.06) << where;
        EXPECT_NEAR(e.declination, v.declination, 0.0051) << where;
    }
}

} // namespace
