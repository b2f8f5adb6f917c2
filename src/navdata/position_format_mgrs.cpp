#include "navdata/grid_position.h"
#include "navdata/position_format.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include <GeographicLib/MGRS.hpp>
#include <GeographicLib/UTMUPS.hpp>

namespace {

constexpr int kMetrePrecision = 5;
constexpr std::size_t kLongestReference = 100;

/// The military grid, to a metre: "32UNF6419285021".
class CUnitsMGRS : public CUnits::PositionFormatType {
public:
    CUnitsMGRS() : PositionFormatType("MGRS") {}

    void format(double lat, double lon, std::string& out) const override
    {
        out.clear();
        if (!IsPosition(lat, lon)) return;
        try {
            int zone;
            bool north;
            double x, y;
            GeographicLib::UTMUPS::Forward(lat, FoldLongitude(lon), zone, north, x, y);
            GeographicLib::MGRS::Forward(zone, north, x, y, lat, kMetrePrecision, out);
        } catch (const std::exception&) {
            out = kOffGrid;
        }
    }

    /// References to 10 km or finer; the position is the middle of the square.
    bool scan(const char* text, double& lat, double& lon) const override
    {
        if (text == nullptr || strnlen(text, kLongestReference) == kLongestReference) return false;
        std::string reference = text;
        std::erase_if(reference, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
        const auto is_part = [](unsigned char c) { return std::isalnum(c) != 0; };
        if (!std::all_of(reference.begin(), reference.end(), is_part)) return false; // spares the library's exception
        try {
            int zone, precision;
            bool north;
            double x, y, new_lat, new_lon;
            GeographicLib::MGRS::Reverse(reference, zone, north, x, y, precision);
            if (precision < 1 || zone == GeographicLib::UTMUPS::INVALID) return false;
            GeographicLib::UTMUPS::Reverse(zone, north, x, y, new_lat, new_lon);
            if (!IsPosition(new_lat, new_lon)) return false;
            lat = new_lat;
            lon = new_lon;
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }
};

const CUnitsMGRS mgrs;

} // namespace
