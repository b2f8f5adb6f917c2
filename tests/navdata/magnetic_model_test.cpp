#include "navdata/magnetic_model.h"

#include "navdata/magnetic_declination.h"
#include "support/temporary_root.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include <GeographicLib/MagneticModel.hpp>
#include <QFile>
#include <gtest/gtest.h>

namespace {

/// Test values of the reports on the World Magnetic Model 2020 and 2025 (NOAA NCEI, BGS), table of the "high-precision
/// numerical examples": places (kilometres, degrees) and dates with the field's components (nanotesla, degrees).
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

WMM_MagneticModel Read(const char* path)
{
    WMM_MagneticModel model{};
    EXPECT_TRUE(WMM_readMagneticModel(path, model)) << path;
    return model;
}

WMM_Elements Compute(const WMM_MagneticModel& model, double year, const WMM_Geodetic& place)
{
    WMM_MagneticModel at_date{};
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
        const WMM_Elements e = Compute(Read(v.path), v.year, {v.lat, v.lon, v.height});
        const auto where = testing::Message() << v.year << " " << v.height << " " << v.lat << " " << v.lon;
        EXPECT_NEAR(e.x, v.x, 0.06) << where;
        EXPECT_NEAR(e.y, v.y, 0.06) << where;
        EXPECT_NEAR(e.z, v.z, 0.06) << where;
        EXPECT_NEAR(e.declination, v.declination, 0.0051) << where;
    }
}

/// The coefficients in the files of another library, which then computes with them.
class CSecondOpinion {
public:
    explicit CSecondOpinion(const WMM_MagneticModel& model)
    {
        std::ofstream text(root.file("test.wmm"));
        text << "WMMF-1\nName test\nRadius 6371200\nEpoch " << model.epoch << "\nMinTime " << model.epoch
             << "\nMaxTime " << model.epoch + 5 << "\nMinHeight -1000\nMaxHeight 850000\nID TESTTEST\n";
        std::ofstream binary(root.file("test.wmm.cof"), std::ios::binary);
        binary << "TESTTEST";
        WriteSet(binary, model.g, model.h);
        WriteSet(binary, model.g_dot, model.h_dot);
    }
    GeographicLib::MagneticModel Model() const { return GeographicLib::MagneticModel("test", root.path()); }

private:
    using Coefficients = std::array<double, kWMMCoefficients>;
    static void WriteColumns(std::ostream& out, const Coefficients& values, int first_order)
    {
        for (int m = first_order; m <= kWMMDegree; ++m) {
            for (int n = m; n <= kWMMDegree; ++n) {
                out.write(reinterpret_cast<const char*>(&values[WMM_MagneticModel::Index(n, m)]), sizeof(double));
            }
        }
    }
    static void WriteSet(std::ostream& out, const Coefficients& cosines, const Coefficients& sines)
    {
        const std::int32_t sizes[] = {kWMMDegree, kWMMDegree};
        out.write(reinterpret_cast<const char*>(sizes), sizeof sizes);
        WriteColumns(out, cosines, 0);
        WriteColumns(out, sines, 1);
    }

    CTemporaryRoot root;
};

TEST(MagneticModel, AgreesWithAnotherLibraryAllOverTheWorld)
{
    for (const char* path : {k2020, k2025}) {
        const WMM_MagneticModel model = Read(path);
        const CSecondOpinion opinion(model);
        const GeographicLib::MagneticModel other = opinion.Model();
        for (double lat = -89.9; lat <= 90.0; lat += 7.1) {
            for (double lon = -180.0; lon <= 180.0; lon += 11.0) {
                const double year = model.epoch + 2.5 + lat / 90.0 * 2.5;
                const WMM_Elements e = Compute(model, year, {lat, lon, 0.1});
                double east, north, up;
                other(year, lat, lon, 100.0, east, north, up);
                ASSERT_NEAR(e.x, north, 1e-3) << lat << " " << lon;
                ASSERT_NEAR(e.y, east, 1e-3) << lat << " " << lon;
                ASSERT_NEAR(e.z, -up, 1e-3) << lat << " " << lon;
                const double apart = e.declination - std::atan2(east, north) * 180.0 / M_PI;
                ASSERT_NEAR(std::remainder(apart, 360.0), 0.0, 0.01) << lat << " " << lon;
            }
        }
    }
}

TEST(MagneticModel, DefinedAtThePoles)
{
    const WMM_MagneticModel model = Read(k2025);
    for (const double pole : {-90.0, 90.0}) {
        const double beside = std::copysign(89.99999, pole);
        for (double lon = 0.0; lon < 360.0; lon += 60.0) {
            const WMM_Elements at = Compute(model, 2026.0, {pole, lon, 0.0});
            const WMM_Elements near = Compute(model, 2026.0, {beside, lon, 0.0});
            EXPECT_NEAR(at.x, near.x, 0.1);
            EXPECT_NEAR(at.y, near.y, 0.1);
            // From the meridian of Greenwich, which all meridians share at a pole.
            const WMM_Elements greenwich = Compute(model, 2026.0, {pole, 0.0, 0.0});
            EXPECT_NEAR(std::remainder(at.grid_variation - greenwich.grid_variation, 360.0), 0.0, 0.01);
        }
    }
}

std::string Coefficients()
{
    QFile resource(k2025);
    EXPECT_TRUE(resource.open(QIODevice::ReadOnly));
    return resource.readAll().toStdString();
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(MagneticModel, DamagedFilesAreRefused)
{
    const CTemporaryRoot root;
    const std::string good = Coefficients();
    int files = 0;
    const auto declination = [&](const std::string& text) {
        const std::string path = root.file("model" + std::to_string(++files));
        std::ofstream(path, std::ios::binary) << text;
        return get_magnetic_declination(path.c_str(), 54.0, 10.0, 100.0, 1.79e9);
    };
    const float right = declination(good);
    EXPECT_GT(right, 3.0F);
    EXPECT_EQ(declination(Replaced(good, "\n", "\r\n")), right);
    EXPECT_EQ(declination(good + "anything behind the end\n"), right);

    const std::string first_line = good.substr(0, good.find('\n') + 1);
    const struct {
        const char* name;
        std::string text;
    } damaged[] = {
        {"empty", ""},
        {"no_numbers", "hello\nworld\n"},
        {"no_epoch", Replaced(good, "2025.0 ", "soon   ")},
        {"degree_too_high", Replaced(good, "\n 12 12", "\n 13 12")},
        {"order_above_degree", Replaced(good, "\n  1  1", "\n  1  2")},
        {"order_below_zero", Replaced(good, "\n  1  1", "\n  1 -1")},
        {"index_that_wraps", Replaced(good, "\n 12 12", "\n 4294967308 12")},
        {"coefficient_twice", Replaced(good, "\n  2  2", "\n  2  1")},
        {"not_a_number", Replaced(good, "-29351.8", "     nan")},
        {"absurd_number", Replaced(good, "-29351.8", "-29351e9")},
        {"field_missing", Replaced(good, "12.0        0.0\n", "12.0\n")},
        {"head_only", first_line + "9999\n"},
        {"line_too_long", Replaced(good, "-29351.8", "-29351.8" + std::string(60, ' '))},
        {"too_large", good + std::string(200'000, '\n')},
    };
    for (const auto& [name, text] : damaged) EXPECT_EQ(declination(text), 0.0F) << name;
    const std::size_t end = good.find("9999");
    for (std::size_t cut = 0; cut < end; cut += 37) EXPECT_EQ(declination(good.substr(0, cut)), 0.0F) << cut;

    EXPECT_EQ(get_magnetic_declination(root.file("none").c_str(), 54.0, 10.0, 100.0, 1.79e9), 0.0F);
    EXPECT_EQ(get_magnetic_declination(nullptr, 54.0, 10.0, 100.0, 1.79e9), 0.0F);
    EXPECT_EQ(get_magnetic_declination("", 54.0, 10.0, 100.0, 1.79e9), 0.0F);
    for (const double bad : {999.0, std::nan(""), HUGE_VAL}) {
        EXPECT_EQ(get_magnetic_declination(k2025, bad, 10.0, 100.0, 1.79e9), 0.0F);
        EXPECT_EQ(get_magnetic_declination(k2025, 10.0, bad, 100.0, 1.79e9), 0.0F);
    }
}

TEST(MagneticModel, TheDateChoosesTheEpoch)
{
    const struct {
        double year;
        const char* path;
    } cases[] = {{1990.0, k2020}, {2020.5, k2020}, {2024.9, k2020}, {2025.1, k2025}, {2029.9, k2025}, {2060.0, k2025}};
    for (const auto& c : cases) EXPECT_STREQ(MagneticModelFile((c.year - 1970.0) * 3.14712e7), c.path) << c.year;
}

} // namespace
