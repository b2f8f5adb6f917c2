#pragma once

#include "chart/ellipsoid.h"

/// Transverse Mercator by Redfearn's series in the form that uses n = (a - b) / (a + b). Positions are degrees;
/// eastings and northings metres.
class utm_proj : public ellipsoid {
public:
    double false_northing = 0.0; ///< metres
    double false_easting = 0.0;  ///< metres
    double scale = 1.0;          ///< on the central meridian
    double origin_lat = 0.0;     ///< radians
    double origin_lon = 0.0;     ///< radians

    void init_OSGB();
    /// The origin is left at 0 for the caller to set.
    void init_NAD27();
    /// The origin is left at 0 for the caller to set.
    void init_WGS84();

    void lat_lon_to_E_N(double lat, double lon, double& easting, double& northing) const;
    /// Iterates the footpoint latitude to a tenth of a micrometre, at most 100 times.
    void E_N_to_lat_lon(double easting, double northing, double& lat, double& lon) const;

private:
    struct Curvature; // radii at one latitude
    Curvature CurvatureAt(double lat) const;
    double MeridianDistance(double lat) const;
    void Set(double major, double minor, double northing, double easting, double on_meridian);
};
