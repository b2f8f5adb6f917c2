#include "chart/polynomial_projection.h"

#include "chart/geo_ref_coeff.h"
#include "chart/map_points.h"

#include <algorithm>
#include <cmath>
#include <cstring>

void CPolynomialProjection::init(const double (*new_forward)[10], const double (*new_inverse)[10], int new_width,
                                 int new_height, double new_lat_shift, double new_lon_shift)
{
    std::memcpy(forward, new_forward, sizeof(forward));
    std::memcpy(inverse, new_inverse, sizeof(inverse));
    lat_shift = new_lat_shift;
    lon_shift = new_lon_shift;
    FinishInit(new_width, new_height);
}

void CPolynomialProjection::FinishInit(int new_width, int new_height)
{
    width = new_width;
    height = new_height;
    double lat;
    xy_to_latlong(width / 2, height / 2, lat, centre_lon);
    valid = true;
}

void CPolynomialProjection::xy_to_latlong(double x, double y, double& lat, double& lon) const
{
    double lat0, lon0, x1, y1;
    Geo_ref_coeff_t::polynomial(x, y, lat0, lon0, inverse);
    Geo_ref_coeff_t::polynomial(lat0, lon0, x1, y1, forward);
    Geo_ref_coeff_t::polynomial(2.0 * x - x1, 2.0 * y - y1, lat, lon, inverse);
    lat += lat_shift;
    lon += lon_shift;
}

void CPolynomialProjection::latlong_to_xy(double lat, double lon, double& x, double& y) const
{
    lat -= lat_shift;
    lon -= lon_shift;
    BringNear(lon, centre_lon);
    Geo_ref_coeff_t::polynomial(lat, lon, x, y, forward);
}

bool CPolynomialProjection::latlong_to_xy(double lat, double lon, FPoint& point) const
{
    constexpr double kUnusable = 4e18; // squared pixels
    double x, y;
    latlong_to_xy(lat, lon, x, y);
    const bool usable = x * x + y * y < kUnusable; // false for a result that is not a number, too
    point = usable ? FPoint{static_cast<float>(x), static_cast<float>(y)} : FPoint{-1.0F, -1.0F};
    return usable;
}

void CPolynomialProjection::latlong_to_xy(std::span<const GeoPoint> positions, std::span<DblPoint> out) const
{
    MapPoints(*this, positions.first(std::min(positions.size(), out.size())), out.data());
}

bool CPolynomialProjection::latlong_to_xy_clipped(double lat, double lon, POINT& point) const
{
    double x, y;
    latlong_to_xy(lat, lon, x, y);
    x = std::round(x);
    y = std::round(y);
    if (!(x >= 0.0 && x < width && y >= 0.0 && y < height)) return false;
    point = {static_cast<int>(x), static_cast<int>(y)};
    return true;
}

double CPolynomialProjection::get_scale(double x, double y) const
{
    return ScaleOfGradient(GradientOfCubic(inverse[0], x, y));
}

void CPolynomialProjection::get_rotation(double x, double y, float& first, float& second) const
{
    const CubicGradient gradient = GradientOfCubic(inverse[0], x, y);
    const double length = std::hypot(gradient.by_a, gradient.by_b);
    const bool defined = length > 0.0 && std::isfinite(length);
    first = defined ? static_cast<float>(-gradient.by_b / length) : 1.0F;
    second = defined ? static_cast<float>(gradient.by_a / length) : 0.0F;
}
