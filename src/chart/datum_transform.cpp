#include "chart/datum_transform.h"

void Helmert::init_WGS84_to_OSGB36()
{
    *this = {-446.448,    125.157, -542.06, -7.281901490265223e-07, -1.1974897923405526e-06, -4.082616008623398e-06,
             1.0000204894};
}

void Helmert::init_OSGB36_to_WGS84()
{
    init_WGS84_to_OSGB36();
    *this = {-tx, -ty, -tz, -rx, -ry, -rz, 0.9999795106};
}

void Helmert::transform(double& X, double& Y, double& Z) const
{
    const double x = X, y = Y, z = Z;
    X = tx + s * x - rz * y + ry * z;
    Y = ty + rz * x + s * y - rx * z;
    Z = tz - ry * x + rx * y + s * z;
}

namespace {

void ShiftDatum(ellipsoid& from, ellipsoid& to, double dx, double dy, double dz, double& lat, double& lon)
{
    double X, Y, Z;
    from.set_lat(lat);
    from.lat_long_to_XYZ(lat, lon, X, Y, Z);
    to.set_lat(lat);
    to.XYZ_to_lat_long(X + dx, Y + dy, Z + dz, lat, lon);
}

} // namespace

Molodensky::Molodensky(double a, double b, double shift_x, double shift_y, double shift_z)
    : dx(shift_x), dy(shift_y), dz(shift_z)
{
    local.init(a, b);
    wgs84.init(6378137.0, 6356752.3141);
}

void Molodensky::ToWGS84(double& lat, double& lon)
{
    ShiftDatum(local, wgs84, dx, dy, dz, lat, lon);
}

void Molodensky::FromWGS84(double& lat, double& lon)
{
    ShiftDatum(wgs84, local, -dx, -dy, -dz, lat, lon);
}
