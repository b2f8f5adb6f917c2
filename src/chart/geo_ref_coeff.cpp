#include "chart/geo_ref_coeff.h"

#include <cmath>

void Geo_ref_coeff_t::polynomial(double a, double b, double& out1, double& out2, const double (*c)[10])
{
    EvaluateCubic(c[0], a, b, out1);
    EvaluateCubic(c[1], a, b, out2);
}

void Geo_ref_coeff_t::xy_to_latlong(double x, double y, double& lat, double& lon) const
{
    double lat0, lon0, x1, y1;
    polynomial(x, y, lat0, lon0, inverse);
    polynomial(lat0, lon0, x1, y1, forward);
    polynomial(2.0 * x - x1, 2.0 * y - y1, lat, lon, inverse);
}

void Geo_ref_coeff_t::latlong_to_xy(double lat, double lon, double& x, double& y, double centre_lon) const
{
    BringNear(lon, centre_lon);
    polynomial(lat, lon, x, y, forward);
}

double Geo_ref_coeff_t::get_scale(double x, double y) const
{
    return ScaleOfGradient(GradientOfCubic(inverse[0], x, y));
}

CubicGradient GradientOfCubic(const double (&c)[10], double a, double b)
{
    return {c[1] + 2.0 * c[3] * a + c[4] * b + 3.0 * c[6] * a * a + 2.0 * c[7] * a * b + c[8] * b * b,
            c[2] + c[4] * a + 2.0 * c[5] * b + c[7] * a * a + 2.0 * c[8] * a * b + 3.0 * c[9] * b * b};
}

double ScaleOfGradient(const CubicGradient& latitude_by_pixel)
{
    constexpr double kMinutesPerDegree = 60.0;
    const double scale = std::hypot(latitude_by_pixel.by_a, latitude_by_pixel.by_b) * kMinutesPerDegree;
    return std::isfinite(scale) ? scale : 0.0;
}
