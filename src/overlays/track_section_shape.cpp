#include "overlays/polyline_vertex.h"
#include "overlays/track_section.h"

#include <algorithm>
#include <vector>

// Thinning, splitting, packing.

void CTrackSection::splitSection(int index, CTrackSection& other)
{
    other.count = 0;
    other.length = length = -1.0;
    if (index < 0 || index >= count) return;
    other.count = count - index;
    std::copy(points + index, points + count, other.points);
    count = index + 1;
}

std::vector<Vertex> CTrackSection::Thinned(const CSimpleGrid& grid, double tolerance_squared) const
{
    std::vector<Vertex> vertices(Points().size());
    for (int i = 0; i < count; ++i) {
        Vertex& vertex = vertices[static_cast<std::size_t>(i)];
        vertex.index = i;
        grid.latlon_to_xy(points[i].lat, points[i].lon, vertex.x, vertex.y);
    }
    ThinVertices(vertices, tolerance_squared);
    return vertices;
}

bool CTrackSection::CompactData(const CSimpleGrid& grid, double tolerance_squared)
{
    const std::vector<Vertex> vertices = Thinned(grid, tolerance_squared);
    if (vertices.size() == Points().size()) return false;
    count = 0;
    for (const Vertex& vertex : vertices) points[count++] = points[vertex.index];
    length = -1.0;
    return true;
}

void CTrackSection::repackageSections(std::list<CTrackSection*>& sections)
{
    if (sections.empty()) return;
    COverlayTrack* const owner = sections.front()->track;
    std::list<CTrackSection*> packed;
    for (CTrackSection* section : sections) {
        // The first point of a later section is the last one of the section before it.
        for (int i = packed.empty() ? 0 : 1; i < section->count; ++i) {
            if (packed.empty()) packed.push_back(new CTrackSection(owner));
            if (packed.back()->addPoint(section->points[i], false)) continue;
            const CTrackPoint shared = packed.back()->Last();
            packed.push_back(new CTrackSection(owner));
            packed.back()->addPoint(shared, false);
            packed.back()->addPoint(section->points[i], false);
        }
        delete section;
    }
    sections.swap(packed);
}
