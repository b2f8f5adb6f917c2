#include "navdata/magnetic_model.h"

#include "chart/ellipsoid.h"

#include <cmath>
#include <new>

namespace {

struct SinCos {
    double sin;
    double cos;
};

SinCos SinCosOf(double degrees)
{
    return {std::sin(degrees * kRadiansPerDegree), std::cos(degrees * kRadiansPerDegree)};
}

/// One order m of the Schmidt semi-normalised Legendre functions of sin(lat), by degree n. For m above 0 they are
/// divided by cos(lat), which is what keeps the east component defined at the poles.
struct Order {
    std::array<double, kWMMDegree + 1> p{};
    std::array<double, kWMMDegree + 1> dp{}; ///< by latitude, radians; of the undivided function
};

/// P(m, m) divided by cos(lat)^m.
double SectoralFactor(int m)
{
    double factor = 1.0;
    for (int k = 2; k <= m; ++k) factor *= std::sqrt((2.0 * k - 1.0) / (2.0 * k));
    return factor;
}

/// What the functions of an order were divided by.
double Divisor(int m, const SinCos& lat)
{
    return m == 0 ? 1.0 : lat.cos;
}

Order LegendreOrder(int m, const SinCos& lat)
{
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    Order order;
    order.p[at(m)] = m == 0 ? 1.0 : SectoralFactor(m) * std::pow(lat.cos, m - 1);
    order.dp[at(m)] = -m * lat.sin * order.p[at(m)];
    for (int n = m + 1; n <= kWMMDegree; ++n) {
        const double next = 2.0 * n - 1.0;
        const double before = std::sqrt((n - 1.0) * (n - 1.0) - m * m);
        const double scale = 1.0 / std::sqrt(static_cast<double>(n * n - m * m));
        const auto step = [&](const auto& row) {
            const double two_below = n - 2 >= m ? row[at(n - 2)] : 0.0;
            return (next * lat.sin * row[at(n - 1)] - before * two_below) * scale;
        };
        order.p[at(n)] = step(order.p);
        order.dp[at(n)] = step(order.dp) + next * lat.cos * Divisor(m, lat) * order.p[at(n - 1)] * scale;
    }
    return order;
}

struct Field {
    double x = 0.0, y = 0.0, z = 0.0; ///< spherical north, east, down
};

void AddOrder(int m, const SinCos& lat, double lon, double ratio, const WMM_MagneticModel& model, Field& field)
{
    const Order order = LegendreOrder(m, lat);
    const SinCos turned = SinCosOf(m * lon);
    for (int n = m < 1 ? 1 : m; n <= kWMMDegree; ++n) {
        const std::size_t i = WMM_MagneticModel::Index(n, m);
        const auto row = static_cast<std::size_t>(n);
        const double power = std::pow(ratio, n + 2);
        const double along = model.g[i] * turned.cos + model.h[i] * turned.sin;
        const double across = model.g[i] * turned.sin - model.h[i] * turned.cos;
        field.x -= power * along * order.dp[row];
        field.y += power * across * m * order.p[row];
        field.z -= power * along * (n + 1) * order.p[row] * Divisor(m, lat);
    }
}

} // namespace

std::unique_ptr<WMM_MagneticModel> WMM_AllocateModelMemory()
{
    return std::unique_ptr<WMM_MagneticModel>(new (std::nothrow) WMM_MagneticModel{});
}

void WMM_FreeMagneticModelMemory(std::unique_ptr<WMM_MagneticModel>& model)
{
    model.reset();
}

void WMM_SetDefaults(WMM_Ellipsoid& ellipsoid)
{
    constexpr double kFlattening = 1.0 / 298.257223563;
    ellipsoid = {6378.137, kFlattening * (2.0 - kFlattening), 6371.2};
}

void WMM_GeodeticToSpherical(const WMM_Ellipsoid& ellipsoid, const WMM_Geodetic& geodetic, WMM_Spherical& spherical)
{
    const SinCos lat = SinCosOf(geodetic.lat);
    const double prime_vertical = ellipsoid.a / std::sqrt(1.0 - ellipsoid.e2 * lat.sin * lat.sin);
    const double p = (prime_vertical + geodetic.height) * lat.cos;
    const double z = (prime_vertical * (1.0 - ellipsoid.e2) + geodetic.height) * lat.sin;
    spherical = {std::atan2(z, p) * kDegreesPerRadian, geodetic.lon, std::hypot(p, z)};
}

void WMM_TimelyModifyMagneticModel(double year, const WMM_MagneticModel& model, WMM_MagneticModel& at_date)
{
    at_date = model;
    const double years = year - model.epoch;
    for (std::size_t i = 0; i < at_date.g.size(); ++i) {
        at_date.g[i] += years * model.g_dot[i];
        at_date.h[i] += years * model.h_dot[i];
    }
}

void WMM_Geomag(const WMM_Ellipsoid& ellipsoid, const WMM_Spherical& spherical, const WMM_Geodetic& geodetic,
                const WMM_MagneticModel& at_date, WMM_Elements& elements)
{
    Field field;
    const SinCos lat = SinCosOf(spherical.lat);
    const double ratio = ellipsoid.re / spherical.r;
    for (int m = 0; m <= kWMMDegree; ++m) AddOrder(m, lat, spherical.lon, ratio, at_date, field);

    const SinCos tilt = SinCosOf(spherical.lat - geodetic.lat);
    elements.x = field.x * tilt.cos - field.z * tilt.sin;
    elements.y = field.y;
    elements.z = field.x * tilt.sin + field.z * tilt.cos;
    elements.declination = std::atan2(elements.y, elements.x) * kDegreesPerRadian;
    elements.grid_variation = 0.0;
}

void WMM_CalculateGridVariation(const WMM_Geodetic& geodetic, WMM_Elements& elements)
{
    constexpr double kPolarLatitude = 55.0;
    if (std::fabs(geodetic.lat) < kPolarLatitude) return;
    const double grid = geodetic.lat > 0.0 ? elements.declination - geodetic.lon : elements.declination + geodetic.lon;
    elements.grid_variation = std::remainder(grid, 360.0);
}
