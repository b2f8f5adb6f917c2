#pragma once

/// A rectangle of longitude and latitude, degrees. Starts empty: the maxima lie below the minima.
struct CBounds {
    double lon_min = 1e300;
    double lon_max = -1e300;
    double lat_min = 1e300;
    double lat_max = -1e300;

    bool empty() const { return lon_max < lon_min || lat_max < lat_min; }
    void add(double lat, double lon)
    {
        if (lon < lon_min) lon_min = lon;
        if (lon > lon_max) lon_max = lon;
        if (lat < lat_min) lat_min = lat;
        if (lat > lat_max) lat_max = lat;
    }
    void add(const CBounds& other)
    {
        if (other.empty()) return;
        add(other.lat_min, other.lon_min);
        add(other.lat_max, other.lon_max);
    }
    bool contains(double lat, double lon) const
    {
        return lat >= lat_min && lat <= lat_max && lon >= lon_min && lon <= lon_max;
    }
    bool overlaps(const CBounds& other) const
    {
        return !empty() && !other.empty() && lon_min <= other.lon_max && other.lon_min <= lon_max &&
               lat_min <= other.lat_max && other.lat_min <= lat_max;
    }
    friend bool operator==(const CBounds&, const CBounds&) = default;
};
