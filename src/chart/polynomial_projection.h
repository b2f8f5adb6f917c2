#pragma once

#include "core/geometry.h"

#include <span>

/// A position, degrees, north and east positive.
struct GeoPoint {
    double lat = 0.0;
    double lon = 0.0;
    friend bool operator==(const GeoPoint&, const GeoPoint&) = default;
};

/// The georeferencing of the chart in view: a copy of its cubics (see Geo_ref_coeff_t) with the chart's datum shift and
/// size. A plain value; any thread may use its own copy.
class CPolynomialProjection {
public:
    bool valid = false;
    double forward[2][10] = {}; ///< (latitude, longitude) to x, to y
    double inverse[2][10] = {}; ///< (x, y) to latitude, to longitude
    double lat_shift = 0.0;     ///< degrees, added to what leaves the cubics
    double lon_shift = 0.0;     ///< degrees
    double centre_lon = 0.0;    ///< degrees; positions are taken on this side of the antimeridian
    int width = 0;              ///< pixels
    int height = 0;             ///< pixels

    void init(const double (*new_forward)[10], const double (*new_inverse)[10], int new_width, int new_height,
              double new_lat_shift, double new_lon_shift);
    void xy_to_latlong(double x, double y, double& lat, double& lon) const;
    void latlong_to_xy(double lat, double lon, double& x, double& y) const;
    /// False, with (-1, -1), when the result is too large or not a number.
    bool latlong_to_xy(double lat, double lon, FPoint& point) const;
    /// Many positions at once, bit for bit what the single form gives. `out` has at least the size of `positions`.
    void latlong_to_xy(std::span<const GeoPoint> positions, std::span<DblPoint> out) const;
    /// Whether the rounded pixel lies on the chart.
    bool latlong_to_xy_clipped(double lat, double lon, POINT& point) const;
    /// Nautical miles per pixel; 0 when the coefficients give no finite scale.
    double get_scale(double x, double y) const;
    /// Direction of north at a pixel, as cosine and sine; (1, 0) is north up. (1, 0) too where there is no gradient.
    void get_rotation(double x, double y, float& first, float& second) const;
    /// Takes the affine georeferencing of a world file: six numbers, of which at most 255 bytes are read. False, and
    /// not valid, when the file does not hold six finite numbers or they cannot be inverted.
    bool ReadGeoWorldFile(const char* path, int new_width, int new_height);

    friend bool operator==(const CPolynomialProjection&, const CPolynomialProjection&) = default;

private:
    void FinishInit(int new_width, int new_height);
};
