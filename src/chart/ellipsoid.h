#pragma once

/// An ellipsoid of revolution. Angles are radians, lengths metres. `nu` is the state of the last latitude set: the
/// conversions say whether they use or change it.
class ellipsoid {
public:
    double a = 0.0;  ///< equatorial semi-axis
    double b = 0.0;  ///< polar semi-axis
    double e2 = 0.0; ///< (a² - b²) / a²
    double n = 0.0;  ///< (a - b) / (a + b)
    double nu = 0.0; ///< radius of curvature in the prime vertical at the last latitude set; (a + b) / 2 at first

    void init(double major, double minor);
    void init(double major, double minor, double lat);
    void set_lat(double lat);
    /// Earth-centred coordinates at height 0; uses the stored nu.
    void lat_long_to_XYZ(double lat, double lon, double& X, double& Y, double& Z) const;
    /// One pass of Bowring's formula; uses the stored nu.
    void XYZ_to_lat_long(double X, double Y, double Z, double& lat, double& lon) const;
    /// Iterates to 1e-6 radians, at most 100 times; the last nu stays stored.
    void XYZ_to_lat_long_H(double X, double Y, double Z, double& lat, double& lon, double& height);
    /// Course (degrees true, 0 to below 360) and speed over ground (knots) of an earth-centred velocity in metres per
    /// second. Not defined at a pole.
    static void crs_spd(const double* position, const double* velocity, float& course, float& speed);
};

inline constexpr double kRadiansPerDegree = 0.017453292519943278;
inline constexpr double kDegreesPerRadian = 57.29577951308238;
