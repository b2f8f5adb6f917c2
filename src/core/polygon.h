#pragma once

#include "core/bounds.h"
#include "core/geometry.h"

#include <vector>

/// An open line of vertices. Plane units: pixels, or degrees as (longitude, latitude); the use says which.
class CPolyline {
public:
    std::vector<DblPoint> vertices;

    void add(double x, double y) { vertices.push_back({x, y}); }
    bool empty() const { return vertices.empty(); }
    /// Whether some point of the line lies nearer to (x, y) than sqrt(distance_squared).
    bool pointIsNearerThan(double x, double y, double distance_squared) const;
};

/// A closed polygon, the last vertex joined to the first; even-odd rule.
class CPolygon : public CPolyline {
public:
    /// Whether (x, y) lies inside; false with fewer than three vertices.
    bool contains(double x, double y) const;
    /// Whether the square (x, y, x + side, y + side) and the polygon share a point.
    bool squareDoesOverlap(double x, double y, double side) const;
    /// Whether the rectangle and the polygon share a point.
    bool rectDoesOverlap(const FRect& rect) const;
    /// Whether the two areas share a point.
    bool overlaps(const CPolygon& other) const;
    /// The vertices' rectangle, with x as longitude and y as latitude.
    CBounds bounds() const;
};

/// Whether a segment of the open line through `points` passes (x, y) at less than sqrt(distance_squared).
bool pointIsNearerThan(const std::vector<DblPoint>& points, double x, double y, double distance_squared);
