#pragma once

/// The local plane of all short-range geometry: metres east (x) and north (y) of an origin, on a sphere on which one
/// minute of latitude is 1852 m. Longitudes go the short way round the antimeridian; everything stays finite at the
/// poles.
class CSimpleGrid {
public:
    double origin_lat = 0.0; ///< degrees
    double origin_lon = 0.0; ///< degrees
    double scale = 0.0;      ///< cosine of the origin's latitude; 0 until an origin is set, which is how callers ask

    void SetOrigin(double lat, double lon);
    bool ready() const { return scale != 0.0; }
    void latlon_to_xy(double lat, double lon, double& x, double& y) const;
    void xy_to_latlon(double x, double y, double& lat, double& lon) const;
    /// Metres from the origin.
    double distance(double lat, double lon) const;
    double distance_squared(double lat, double lon) const;
    /// Metres between two positions, measured on this grid.
    double distance(double lat1, double lon1, double lat2, double lon2) const;
    /// Metres and degrees true (0 to below 360) from the first position to the second.
    void distance_and_bearing(double lat1, double lon1, double lat2, double lon2, double& metres, float& bearing) const;
    /// Plane coordinates of a point `metres` away from the origin on `bearing` degrees true.
    static void polar_to_xy(double metres, double bearing, double& x, double& y);
};

/// Whether the pair is a position: finite, latitude -90 to 90, longitude -360 to 360.
bool ValidLatLon(double lat, double lon);
