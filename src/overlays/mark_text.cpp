#include "overlays/mark_text.h"

#include "navdata/units.h"

std::string DistanceAndBearingText(const CSimpleGrid& reader, double lat, double lon)
{
    if (!reader.ready()) return {};
    double metres = 0.0;
    float degrees = 0.0F;
    reader.distance_and_bearing(reader.origin_lat, reader.origin_lon, lat, lon, metres, degrees);
    std::string bearing;
    CUnits::Default->FormatBearing(static_cast<double>(degrees), bearing);
    return CUnits::Default->FormatDistance(metres) + " " + bearing;
}
