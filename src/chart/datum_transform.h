#pragma once

#include "chart/ellipsoid.h"

/// A seven-parameter similarity transformation of earth-centred coordinates, small-angle form.
struct Helmert {
    double tx = 0.0, ty = 0.0, tz = 0.0; ///< metres
    double rx = 0.0, ry = 0.0, rz = 0.0; ///< radians
    double s = 1.0;                      ///< scale factor

    /// Ordnance Survey's published parameters between WGS84 and OSGB36.
    void init_WGS84_to_OSGB36();
    void init_OSGB36_to_WGS84();
    void transform(double& X, double& Y, double& Z) const;
};

/// A three-parameter datum shift through earth-centred coordinates (not the abridged formulas). Angles are radians.
class Molodensky {
public:
    ellipsoid local;
    ellipsoid wgs84;
    double dx, dy, dz; ///< metres, from the local to the WGS84 centre

    /// `a`, `b`: semi-axes of the local ellipsoid, metres.
    Molodensky(double a, double b, double shift_x, double shift_y, double shift_z);
    void ToWGS84(double& lat, double& lon);
    void FromWGS84(double& lat, double& lon);
};
