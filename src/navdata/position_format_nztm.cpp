#include "chart/utm_proj.h"
#include "core/text.h"
#include "navdata/grid_position.h"
#include "navdata/position_format.h"

#include <cmath>

namespace {

/// Degrees: where the grid is used, from the Kermadecs to the sub-Antarctic islands, the series holds to a metre.
constexpr double kWidest = 11.5; ///< from the central meridian
constexpr double kSouthernmost = -60.0, kNorthernmost = -25.0;
constexpr double kCentralMeridian = 173.0;
/// Metres on either side of the false easting.
constexpr double kWidestEasting = 1.4e6;
constexpr double kFalseNorthing = 1e7, kFalseEasting = 1.6e6; ///< metres

utm_proj Projection()
{
    utm_proj projection;
    projection.init_WGS84();
    projection.false_northing = kFalseNorthing;
    projection.false_easting = kFalseEasting;
    projection.origin_lon = kCentralMeridian * kRadiansPerDegree;
    return projection;
}

/// New Zealand Transverse Mercator: easting and northing.
class CUnitsNZTM : public CUnits::PositionFormatType {
public:
    CUnitsNZTM() : PositionFormatType("NZTM") {}

    void format(double lat, double lon, std::string& out) const override
    {
        out.clear();
        if (!IsPosition(lat, lon)) return;
        // On this side of the antimeridian longitudes go on beyond 180.
        const double east_of_meridian = FoldLongitude(lon - kCentralMeridian);
        if (std::fabs(east_of_meridian) > kWidest || lat < kSouthernmost || lat > kNorthernmost) {
            out = kOffGrid;
            return;
        }
        double easting, northing;
        Projection().lat_lon_to_E_N(lat, kCentralMeridian + east_of_meridian, easting, northing);
        out = stringprintf("%06.0f %06.0f", easting, northing);
    }

    bool scan(const char* text, double& lat, double& lon) const override
    {
        double easting, northing, new_lat, new_lon;
        CGridScanner scanner(text);
        if (!scanner.Number(easting) || !scanner.Number(northing) || !scanner.AtEnd()) return false;
        if (std::fabs(easting - kFalseEasting) > kWidestEasting) return false;
        if (northing < 0.0 || northing > 2 * kFalseNorthing) return false;
        Projection().E_N_to_lat_lon(easting, northing, new_lat, new_lon);
        if (!IsPosition(new_lat, new_lon)) return false;
        lat = new_lat;
        lon = FoldLongitude(new_lon);
        return true;
    }
};

const CUnitsNZTM nztm;

} // namespace
