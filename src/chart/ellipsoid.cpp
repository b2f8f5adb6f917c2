#include "chart/ellipsoid.h"

#include <cmath>

void ellipsoid::init(double major, double minor)
{
    a = major;
    b = minor;
    e2 = (a * a - b * b) / (a * a);
    n = (a - b) / (a + b);
    nu = (a + b) / 2.0;
}

void ellipsoid::init(double major, double minor, double lat)
{
    init(major, minor);
    set_lat(lat);
}

void ellipsoid::set_lat(double lat)
{
    const double sine = std::sin(lat);
    nu = a / std::sqrt(1.0 - e2 * sine * sine);
}

void ellipsoid::lat_long_to_XYZ(double lat, double lon, double& X, double& Y, double& Z) const
{
    X = nu * std::cos(lat) * std::cos(lon);
    Y = nu * std::cos(lat) * std::sin(lon);
    Z = (1.0 - e2) * nu * std::sin(lat);
}

void ellipsoid::XYZ_to_lat_long(double X, double Y, double Z, double& lat, double& lon) const
{
    const double p = std::hypot(X, Y);
    const double t = std::atan2(Z, (1.0 - e2) * p);
    lat = std::atan2(Z + e2 * nu * std::sin(t), p);
    lon = std::atan2(Y, X);
}

void ellipsoid::XYZ_to_lat_long_H(double X, double Y, double Z, double& lat, double& lon, double& height)
{
    constexpr double kPrecision = 1e-6; // radians
    constexpr int kMostSteps = 100;
    const double p = std::hypot(X, Y);
    double t = std::atan2(Z, (1.0 - e2) * p);
    for (int step = 0; step < kMostSteps; ++step) {
        set_lat(t);
        const double before = t;
        t = std::atan2(Z + nu * e2 * std::sin(before), p);
        if (std::fabs(before - t) <= kPrecision) break;
    }
    lat = t;
    lon = std::atan2(Y, X);
    height = p / std::cos(t) - nu;
}

void ellipsoid::crs_spd(const double* position, const double* velocity, float& course, float& speed)
{
    constexpr double kKnotsPerMetrePerSecond = 1.9438444924406046;
    const double x = position[0], y = position[1], z = position[2];
    const double vx = velocity[0], vy = velocity[1], vz = velocity[2];
    const double p = std::hypot(x, y);
    const double r = std::hypot(x, y, z);
    const double east = (vy * x - vx * y) / p;
    const double outward = (vy * y + vx * x) / p;
    const double north = (vz * p - outward * z) / r;
    const double degrees = std::atan2(east, north) * kDegreesPerRadian;
    course = static_cast<float>(degrees < 0.0 ? degrees + 360.0 : degrees);
    speed = static_cast<float>(std::hypot(east, north) * kKnotsPerMetrePerSecond);
}
