#include "overlays/polyline_vertex.h"

#include <cstddef>

bool Vertex::IsOnLine(const Vertex& a, const Vertex& b, double tolerance_squared) const
{
    const double px = x - a.x;
    const double py = y - a.y;
    if (px * px + py * py <= tolerance_squared) return true;
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length_squared = dx * dx + dy * dy;
    const double along = px * dx + py * dy;
    if (!(length_squared > 0.0) || along < 0.0 || along > length_squared) return false;
    const double cross = px * dy - py * dx;
    return cross * cross <= tolerance_squared * length_squared;
}

namespace {

/// One pass, from the vertices to the front of the same vector.
void ThinOnce(std::vector<Vertex>& vertices, double tolerance_squared)
{
    std::size_t kept = 0;
    std::size_t i = 0;
    for (; i + 2 < vertices.size(); i += 2) {
        const Vertex middle = vertices[i + 1];
        vertices[kept++] = vertices[i];
        if (!middle.IsOnLine(vertices[kept - 1], vertices[i + 2], tolerance_squared)) vertices[kept++] = middle;
    }
    for (; i < vertices.size(); ++i) vertices[kept++] = vertices[i];
    vertices.resize(kept);
}

} // namespace

bool ThinVertices(std::vector<Vertex>& vertices, double tolerance_squared)
{
    const std::size_t before = vertices.size();
    for (std::size_t last = before + 1; vertices.size() < last && vertices.size() > 2;) {
        last = vertices.size();
        ThinOnce(vertices, tolerance_squared);
    }
    return vertices.size() < before;
}
