#include "core/polygon.h"

#include <algorithm>

namespace {

/// Twice the signed area of the triangle a, b, c: its sign tells on which side of a-b the point c lies.
double Side(const DblPoint& a, const DblPoint& b, const DblPoint& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether c, known to lie on the line through a and b, lies between them.
bool Between(const DblPoint& a, const DblPoint& b, const DblPoint& c)
{
    return std::min(a.x, b.x) <= c.x && c.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= c.y &&
           c.y <= std::max(a.y, b.y);
}

bool SegmentsTouch(const DblPoint& a, const DblPoint& b, const DblPoint& c, const DblPoint& d)
{
    const double c_side = Side(a, b, c);
    const double d_side = Side(a, b, d);
    const double a_side = Side(c, d, a);
    const double b_side = Side(c, d, b);
    if (((c_side > 0.0 && d_side < 0.0) || (c_side < 0.0 && d_side > 0.0)) &&
        ((a_side > 0.0 && b_side < 0.0) || (a_side < 0.0 && b_side > 0.0)))
        return true;
    return (c_side == 0.0 && Between(a, b, c)) || (d_side == 0.0 && Between(a, b, d)) ||
           (a_side == 0.0 && Between(c, d, a)) || (b_side == 0.0 && Between(c, d, b));
}

double SquaredDistanceToSegment(const DblPoint& a, const DblPoint& b, double x, double y)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length_squared = dx * dx + dy * dy;
    double along = 0.0;
    if (length_squared > 0.0) along = std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length_squared, 0.0, 1.0);
    const double ex = a.x + along * dx - x;
    const double ey = a.y + along * dy - y;
    return ex * ex + ey * ey;
}

} // namespace

bool pointIsNearerThan(const std::vector<DblPoint>& points, double x, double y, double distance_squared)
{
    for (std::size_t i = 1; i < points.size(); ++i)
        if (SquaredDistanceToSegment(points[i - 1], points[i], x, y) < distance_squared) return true;
    return points.size() == 1 && SquaredDistanceToSegment(points[0], points[0], x, y) < distance_squared;
}

bool CPolyline::pointIsNearerThan(double x, double y, double distance_squared) const
{
    return ::pointIsNearerThan(vertices, x, y, distance_squared);
}

bool CPolygon::contains(double x, double y) const
{
    if (vertices.size() < 3) return false;
    bool inside = false;
    const DblPoint* before = &vertices.back();
    for (const DblPoint& v : vertices) {
        if ((v.y > y) != (before->y > y) && x < (before->x - v.x) * (y - v.y) / (before->y - v.y) + v.x)
            inside = !inside;
        before = &v;
    }
    return inside;
}

bool CPolygon::overlaps(const CPolygon& other) const
{
    if (vertices.empty() || other.vertices.empty()) return false;
    if (contains(other.vertices[0].x, other.vertices[0].y) || other.contains(vertices[0].x, vertices[0].y)) return true;
    const DblPoint* before = &vertices.back();
    for (const DblPoint& v : vertices) {
        const DblPoint* other_before = &other.vertices.back();
        for (const DblPoint& w : other.vertices) {
            if (SegmentsTouch(*before, v, *other_before, w)) return true;
            other_before = &w;
        }
        before = &v;
    }
    return false;
}

bool CPolygon::rectDoesOverlap(const FRect& rect) const
{
    CPolygon corners;
    corners.vertices = {
        {rect.left, rect.top}, {rect.right, rect.top}, {rect.right, rect.bottom}, {rect.left, rect.bottom}};
    return overlaps(corners);
}

bool CPolygon::squareDoesOverlap(double x, double y, double side) const
{
    return rectDoesOverlap({x, y, x + side, y + side});
}

CBounds CPolygon::bounds() const
{
    CBounds box;
    for (const DblPoint& v : vertices) box.add(v.y, v.x);
    return box;
}
