#include "chart/utm_proj.h"
#include "core/text.h"
#include "navdata/grid_position.h"
#include "navdata/position_format.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kZones = 60;
constexpr double kSouthernNorthing = 1e7; ///< metres, of the equator as the southern hemisphere counts it
constexpr std::string_view kLatitudeBands = "CDEFGHJKLMNPQRSTUVWX";
constexpr char kFirstNorthernBand = 'N';

int Zone(double lon)
{
    return std::clamp(static_cast<int>(std::floor((186.0 + lon) / 6.0)), 1, kZones);
}

utm_proj Projection(int zone)
{
    utm_proj projection;
    projection.init_WGS84();
    projection.origin_lon = (zone * 6.0 - 183.0) * kRadiansPerDegree;
    return projection;
}

char latband_letter(double lat)
{
    const int band = (static_cast<int>(std::floor(lat)) + 80) / 8;
    return kLatitudeBands[static_cast<std::size_t>(std::clamp(band, 0, static_cast<int>(kLatitudeBands.size()) - 1))];
}

/// Zone, easting and northing with a letter that each kind chooses.
class PosFmtUTM : public CUnits::PositionFormatType {
public:
    using PositionFormatType::PositionFormatType;

    void format(double lat, double lon, std::string& out) const override
    {
        out.clear();
        if (!IsPosition(lat, lon)) return;
        lon = FoldLongitude(lon);
        const int zone = Zone(lon);
        double easting, northing;
        Projection(zone).lat_lon_to_E_N(lat, lon, easting, northing);
        if (northing < 0.0) northing += kSouthernNorthing;
        out = stringprintf("%d%c %06.0fE %06.0fN", zone, Letter(lat), easting, northing);
    }

    bool scan(const char* text, double& lat, double& lon) const override
    {
        double zone, easting, northing;
        char letter;
        CGridScanner scanner(text);
        if (!scanner.Number(zone) || !scanner.Letter(letter) || !scanner.Number(easting)) return false;
        scanner.Skip('E');
        if (!scanner.Number(northing)) return false;
        scanner.Skip('N');
        const bool is_letter = kLatitudeBands.find(letter) != std::string_view::npos;
        if (!scanner.AtEnd() || !is_letter || zone != std::floor(zone) || zone < 1 || zone > kZones) return false;
        if (easting < 0.0 || easting > kWidest || northing < 0.0 || northing > kSouthernNorthing) return false;

        if (!IsNorthern(letter)) northing -= kSouthernNorthing;
        double new_lat, new_lon;
        Projection(static_cast<int>(zone)).E_N_to_lat_lon(easting, northing, new_lat, new_lon);
        if (!IsPosition(new_lat, new_lon)) return false;
        lat = new_lat;
        lon = FoldLongitude(new_lon);
        return true;
    }

protected:
    virtual char Letter(double lat) const = 0;
    virtual bool IsNorthern(char letter) const = 0;

private:
    static constexpr double kWidest = 1e6; ///< metres
};

class CUnitsPositionUTM84 : public PosFmtUTM {
public:
    CUnitsPositionUTM84() : PosFmtUTM("UTM on WGS84") {}

protected:
    char Letter(double lat) const override { return lat < 0.0 ? 'S' : 'N'; }
    /// Other letters can only be bands.
    bool IsNorthern(char letter) const override { return letter != 'S' && letter >= kFirstNorthernBand; }
};

class CUnitsPositionUTM84bands : public PosFmtUTM {
public:
    CUnitsPositionUTM84bands() : PosFmtUTM("UTM/WGS84 bands") {}

protected:
    char Letter(double lat) const override { return latband_letter(lat); }
    bool IsNorthern(char letter) const override { return letter >= kFirstNorthernBand; }
};

const CUnitsPositionUTM84 utm84;
const CUnitsPositionUTM84bands utm84_bands;

} // namespace
