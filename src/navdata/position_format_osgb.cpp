#include "chart/datum_transform.h"
#include "chart/utm_proj.h"
#include "core/text.h"
#include "navdata/grid_position.h"
#include "navdata/position_format.h"

#include <cmath>

namespace {

constexpr int kSquare = 100'000; ///< metres
constexpr int kColumns = 7, kRows = 13;
/// Squares of 100 km along a side of the larger ones of 500 km.
constexpr int kAcross = 5;
/// Of the larger squares, from the south-west.
constexpr const char* first_letter[] = {"ST", "NO", "HJ"};
/// Of the squares within a larger one, from the north-west.
constexpr std::string_view kSecondLetters = "ABCDEFGHJKLMNOPQRSTUVWXYZ";
constexpr std::size_t kFewestDigits = 6, kMostDigits = 10;

/// Metres from the south-west corner of the grid.
struct GridPoint {
    double easting;
    double northing;
};

/// Takes earth-centred coordinates from one datum to the other, at height 0. Degrees.
void ChangeDatum(ellipsoid from, const Helmert& shift, ellipsoid to, double& lat, double& lon)
{
    double X, Y, Z, height;
    from.set_lat(lat * kRadiansPerDegree);
    from.lat_long_to_XYZ(lat * kRadiansPerDegree, lon * kRadiansPerDegree, X, Y, Z);
    shift.transform(X, Y, Z);
    to.XYZ_to_lat_long_H(X, Y, Z, lat, lon, height);
    lat *= kDegreesPerRadian;
    lon *= kDegreesPerRadian;
}

/// Whether the grid can be near: far away the projection's series runs wild.
bool IsNearGrid(double lat, double lon)
{
    return std::fabs(lat - 55.5) < 8.0 && std::fabs(lon + 2.0) < 10.0;
}

GridPoint ToGrid(double lat, double lon)
{
    utm_proj wgs84, national;
    Helmert shift;
    wgs84.init_WGS84();
    national.init_OSGB();
    shift.init_WGS84_to_OSGB36();
    ChangeDatum(wgs84, shift, national, lat, lon);
    GridPoint point;
    national.lat_lon_to_E_N(lat, lon, point.easting, point.northing);
    return point;
}

void FromGrid(const GridPoint& point, double& lat, double& lon)
{
    utm_proj wgs84, national;
    Helmert shift;
    wgs84.init_WGS84();
    national.init_OSGB();
    shift.init_OSGB36_to_WGS84();
    national.E_N_to_lat_lon(point.easting, point.northing, lat, lon);
    ChangeDatum(national, shift, wgs84, lat, lon);
}

/// The two letters of a square and the metres within it; false off the grid. Rounded to the metre, not cut, so that a
/// reference read and written again stays the same.
bool WGS84_lat_long_to_OS_grid(double lat, double lon, std::string& letters, int& easting, int& northing)
{
    if (!IsNearGrid(lat, lon)) return false;
    const GridPoint point = ToGrid(lat, lon);
    const auto e = static_cast<int>(std::lround(point.easting));
    const auto n = static_cast<int>(std::lround(point.northing));
    if (e < 0 || n < 0 || e >= kColumns * kSquare || n >= kRows * kSquare) return false;
    const int column = e / kSquare;
    const int row = n / kSquare;
    const int second = (kAcross - 1 - row % kAcross) * kAcross + column % kAcross;
    letters = {first_letter[row / kAcross][column / kAcross], kSecondLetters[static_cast<std::size_t>(second)]};
    easting = e % kSquare;
    northing = n % kSquare;
    return true;
}

/// The south-west corner of a square; false when the grid has none of that name.
bool FindSquare(char first, char second, GridPoint& corner)
{
    const std::size_t within = kSecondLetters.find(second);
    if (within == std::string_view::npos) return false;
    const int index = static_cast<int>(within);
    for (int large_row = 0; large_row < 3; ++large_row) {
        for (int large_column = 0; large_column < 2; ++large_column) {
            if (first_letter[large_row][large_column] != first) continue;
            const int column = large_column * kAcross + index % kAcross;
            const int row = large_row * kAcross + kAcross - 1 - index / kAcross;
            corner = {static_cast<double>(column) * kSquare, static_cast<double>(row) * kSquare};
            return column < kColumns && row < kRows;
        }
    }
    return false;
}

/// The metres that digits within a square stand for.
double InSquare(std::string_view digits)
{
    double metres = 0.0;
    double step = kSquare;
    for (const char digit : digits) {
        step /= 10.0;
        metres += (digit - '0') * step;
    }
    return metres;
}

/// The British National Grid: "SU 38735 14815".
class CUnitsOSGB : public CUnits::PositionFormatType {
public:
    CUnitsOSGB() : PositionFormatType("British National Grid") {}

    void format(double lat, double lon, std::string& out) const override
    {
        out.clear();
        if (!IsPosition(lat, lon)) return;
        std::string letters;
        int easting, northing;
        out = WGS84_lat_long_to_OS_grid(lat, FoldLongitude(lon), letters, easting, northing)
                  ? stringprintf("%s %05d %05d", letters.c_str(), easting, northing)
                  : kOffGrid;
    }

    /// Two letters and 6, 8 or 10 digits; the position is the south-west corner of the square that they name.
    bool scan(const char* text, double& lat, double& lon) const override
    {
        char first, second;
        std::string digits;
        CGridScanner scanner(text);
        if (!scanner.Letter(first) || !scanner.Letter(second) || !scanner.Digits(digits, kMostDigits)) return false;
        if (digits.size() < kFewestDigits || digits.size() % 2 != 0) return false;
        GridPoint point;
        if (!FindSquare(first, second, point)) return false;
        const std::size_t half = digits.size() / 2;
        point.easting += InSquare(std::string_view(digits).substr(0, half));
        point.northing += InSquare(std::string_view(digits).substr(half));
        FromGrid(point, lat, lon);
        return true;
    }
};

const CUnitsOSGB osgb;

} // namespace
