#include "chart/rastelle.h"

#include <algorithm>
#include <cstring>

int CRastelle::getBoundaryPolygon(CPolygon& polygon)
{
    polygon.vertices.clear();
    if (header == nullptr) return 0;
    if (header->outline_count >= 1 && header->outline != 0) {
        AddOutline(polygon);
    } else {
        // Corners go without the datum shift where outlines take it; the catalogue does the same.
        const double corners[4][2] = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
        for (const auto& [right, bottom] : corners) {
            double lat, lon;
            header->georeferencing.xy_to_latlong(right * width_px, bottom * height_px, lat, lon);
            polygon.add(lon, lat);
        }
    }
    return static_cast<int>(polygon.vertices.size());
}

void CRastelle::AddOutline(CPolygon& polygon)
{
    double lat, centre;
    header->georeferencing.xy_to_latlong(header->width * 32.0, header->height * 32.0, lat, centre);
    BlockReader reader(*this);
    const auto bytes = reader.Bytes(header->outline);
    constexpr std::size_t kPointBytes = 2 * sizeof(double);
    const std::size_t points = std::min(static_cast<std::size_t>(header->outline_count), bytes.size() / kPointBytes);
    for (std::size_t i = 0; i < points; ++i) {
        double point[2]; // latitude, longitude
        std::memcpy(point, bytes.data() + i * kPointBytes, kPointBytes);
        if (point[1] - centre < -180.0) {
            point[1] += 360.0;
        } else if (point[1] - centre > 180.0) {
            point[1] -= 360.0;
        }
        polygon.add(point[1] + datum_lon_shift, point[0] + datum_lat_shift);
    }
}

bool CRastelle::doesContain(double lat, double lon)
{
    if (!boundary) getBoundaryPolygon(boundary.emplace());
    return boundary->contains(lon, lat);
}
