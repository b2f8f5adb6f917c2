#include "core/simple_grid.h"
#include "core/nautical_mile.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kMetresPerDegree = 60.0 * kMetresPerNauticalMile;
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
/// The least scale of an origin: at a pole the meridians meet, and a division by their spacing would not be finite.
constexpr double kLeastScale = 1e-9;

/// The difference of two longitudes, degrees, the short way round: -180 to 180.
double ShortWay(double difference)
{
    return difference >= -180.0 && difference <= 180.0 ? difference : std::remainder(difference, 360.0);
}

} // namespace

void CSimpleGrid::SetOrigin(double lat, double lon)
{
    origin_lat = lat;
    origin_lon = lon;
    scale = std::max(std::cos(lat * kRadiansPerDegree), kLeastScale);
}

void CSimpleGrid::latlon_to_xy(double lat, double lon, double& x, double& y) const
{
    x = ShortWay(lon - origin_lon) * kMetresPerDegree * scale;
    y = (lat - origin_lat) * kMetresPerDegree;
}

void CSimpleGrid::xy_to_latlon(double x, double y, double& lat, double& lon) const
{
    lat = origin_lat + y / kMetresPerDegree;
    lon = origin_lon + (scale > kLeastScale ? x / (kMetresPerDegree * scale) : 0.0);
    if (lon < -180.0 || lon > 180.0) lon = ShortWay(lon);
}

double CSimpleGrid::distance(double lat, double lon) const
{
    return std::sqrt(distance_squared(lat, lon));
}

double CSimpleGrid::distance_squared(double lat, double lon) const
{
    double x = 0.0;
    double y = 0.0;
    latlon_to_xy(lat, lon, x, y);
    return x * x + y * y;
}

double CSimpleGrid::distance(double lat1, double lon1, double lat2, double lon2) const
{
    const double x = ShortWay(lon2 - lon1) * kMetresPerDegree * scale;
    const double y = (lat2 - lat1) * kMetresPerDegree;
    return std::sqrt(x * x + y * y);
}

void CSimpleGrid::distance_and_bearing(double lat1, double lon1, double lat2, double lon2, double& metres,
                                       float& bearing) const
{
    const double x = ShortWay(lon2 - lon1) * kMetresPerDegree * scale;
    const double y = (lat2 - lat1) * kMetresPerDegree;
    metres = std::sqrt(x * x + y * y);
    const auto degrees = static_cast<float>(std::atan2(x, y) / kRadiansPerDegree);
    bearing = degrees < 0.0F ? degrees + 360.0F : degrees;
    if (bearing >= 360.0F) bearing = 0.0F;
}

void CSimpleGrid::polar_to_xy(double metres, double bearing, double& x, double& y)
{
    x = metres * std::sin(bearing * kRadiansPerDegree);
    y = metres * std::cos(bearing * kRadiansPerDegree);
}

bool ValidLatLon(double lat, double lon)
{
    return std::isfinite(lat) && std::isfinite(lon) && std::abs(lat) <= 90.0 && std::abs(lon) <= 360.0;
}
