#include "core/text.h"
#include "navdata/angle_scan.h"
#include "navdata/position_format.h"

#include <cmath>

static const CUnits::PosFmtDeg pf_deg;
const CUnits::PosFmtDegMin pf_dm;
static const CUnits::PosFmtDMS pf_dms;

namespace {

constexpr int kDegrees = 0, kDegreesMinutes = 1, kDegreesMinutesSeconds = 2;
/// From here on the rounded minutes or seconds would show as 60.
constexpr double kMinutesRoundUp = 59.9995;
constexpr double kSecondsRoundUp = 59.95;
constexpr double kLargestAngle = 1e6;

/// The whole part of `value`, and 60 times what is left; that is 0 and one more when it reaches `round_up`.
int SplitSixtieths(double value, double round_up, double& sixtieths)
{
    auto whole = static_cast<int>(value);
    sixtieths = (value - whole) * 60.0;
    if (sixtieths >= round_up) {
        sixtieths = 0.0;
        ++whole;
    }
    return whole;
}

void AppendDegreesMinutes(std::string& out, double magnitude)
{
    double minutes;
    const int degrees = SplitSixtieths(magnitude, kMinutesRoundUp, minutes);
    appendprintf(out, "%d°%06.3f'", degrees, minutes);
}

void AppendDegreesMinutesSeconds(std::string& out, double magnitude)
{
    auto degrees = static_cast<int>(magnitude);
    double seconds;
    int minutes = SplitSixtieths((magnitude - degrees) * 60.0, kSecondsRoundUp, seconds);
    if (minutes >= 60) {
        minutes = 0;
        ++degrees;
    }
    appendprintf(out, "%d°%d'%04.1f\"", degrees, minutes, seconds);
}

/// `letters`: of the positive and the negative hemisphere.
void append_angle(std::string& out, double angle, int style, const char* letters)
{
    const double magnitude = std::fabs(angle);
    switch (style) {
    case kDegrees:
        appendprintf(out, "%8.5f°", magnitude);
        break;
    case kDegreesMinutes:
        AppendDegreesMinutes(out, magnitude);
        break;
    case kDegreesMinutesSeconds:
        AppendDegreesMinutesSeconds(out, magnitude);
        break;
    default:
        appendprintf(out, "%8.5f", angle);
        return;
    }
    out += letters[angle < 0.0 ? 1 : 0];
}

bool IsAngle(double angle)
{
    return std::fabs(angle) < kLargestAngle;
}

} // namespace

void appendPosition(std::string& out, double lat, double lon, int style)
{
    if (!IsAngle(lat) || !IsAngle(lon)) return;
    append_angle(out, lat, style, "NS");
    out += ", ";
    append_angle(out, lon, style, "EW");
}

void CUnits::PosFmtLatLon::format(double lat, double lon, std::string& out) const
{
    out.clear();
    appendPosition(out, lat, lon, style);
}

bool CUnits::PosFmtLatLon::scan(const char* text, double& lat, double& lon) const
{
    constexpr double kLargestLatitude = 89.0;
    constexpr double kLargestLongitude = 360.0;

    std::string north_text, east_text;
    if (!SplitPosition(text, north_text, east_text)) return false;
    const double north = scan_deg_min_sec(north_text, 'N', 'S');
    const double east = scan_deg_min_sec(east_text, 'E', 'W');
    if (std::fabs(north) > kLargestLatitude || std::fabs(east) > kLargestLongitude) return false;
    lat = north;
    lon = east;
    return true;
}
