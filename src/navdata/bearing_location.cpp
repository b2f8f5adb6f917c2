#include "navdata/magnetic_declination.h"
#include "navdata/units.h"

namespace {

constexpr double kNoPlace = 999.0;
/// Squared degrees from the last place, from which on the variation is computed anew.
constexpr double kFarEnough = 1.0;
constexpr double kAltitude = 100.0; ///< metres

} // namespace

void CUnits::SetBearingLocation(double lat, double lon, double time)
{
    const double north = lat - bearing_lat;
    const double east = lon - bearing_lon;
    if (!(north * north + east * east >= kFarEnough)) return;
    magnetic_variation = get_magnetic_declination(MagneticModelFile(time), lat, lon, kAltitude, time);
    bearing_lat = lat;
    bearing_lon = lon;
    bearing_time = time;
    SettingsModified();
}

void CUnits::ChangedBearingUnits()
{
    const double lat = bearing_lat;
    const double lon = bearing_lon;
    bearing_lat = bearing_lon = kNoPlace;
    SetBearingLocation(lat, lon, bearing_time);
}
