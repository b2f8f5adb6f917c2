#include "overlays/gps_position.h"

#include "core/folders.h"
#include "core/nautical_mile.h"
#include "navdata/units.h"

#include <algorithm>
#include <cmath>
#include <utility>

// Motion: averages, odometer, watchdog. The drawing stands in gps_position_draw.cpp, the settings in
// gps_position_settings.cpp.

namespace {

constexpr int kWatchdogTicks = 50;
constexpr double kBlinkSeconds = 0.9;
/// From this dilution of precision, or metres, on a position is too coarse to be averaged.
constexpr float kCoarseAccuracy = 15.0F;

// Average speed and course
constexpr double kAveragesPerSpan = 10.0;
constexpr double kHistorySpans = 1.5;
constexpr float kJumpSpeed = 200.0F; ///< knots; a position that jumped
constexpr double kSecondsPerHour = 3600.0;

// Odometer
constexpr double kLegSeconds = 60.0;
constexpr double kShortestLegSeconds = 10.0; ///< of a leg that a turn ends
constexpr float kLeastLegSpeed = 1.0F;       ///< knots

constexpr int kOdometerMagic = 593046147;
double odometer_in_file = 0.0;

std::string OdometerFile()
{
    return getAppDirectory() + "/gpsdata.zttf";
}

} // namespace

COverlayGPSPosition::COverlayGPSPosition() : Counter(kWatchdogTicks) {}

COverlayGPSPosition::~COverlayGPSPosition() = default;

void COverlayGPSPosition::DispatchPositionUpdate()
{
    countdown = period = kWatchdogTicks;
    if (status != kNoFix && time - last_blink_time >= kBlinkSeconds) {
        UpdateMotion();
    } else if (last_blink_time > time) { // the clock went back
        last_blink_time = next_average_time = 0.0;
    }
    evaluate_best_direction();
    DispatchToListeners<CDataGPSPosition>(*this);
    DispatchToListeners<CDataSpeedDirection>(*this);
    COverlayObject::Dispatch(kChanged);
}

void COverlayGPSPosition::DispatchHeadingUpdate()
{
    evaluate_best_direction();
    DispatchToListeners<CDataSpeedDirection>(*this);
    COverlayObject::Dispatch(kLookChanged);
}

void COverlayGPSPosition::OnHeartbeat()
{
    if (status == kNoFix) return;
    status = kNoFix;
    best_source = kNoDirection;
    DispatchToListeners<CDataGPSPosition>(*this);
    COverlayObject::Dispatch(kLookChanged);
}

void COverlayGPSPosition::UpdateMotion()
{
    last_blink_time = time;
    std::swap(icons.blink[0], icons.blink[1]);
    const bool tool_active = tool_is_active != nullptr && tool_is_active();
    if (!tool_active) CUnits::Default->SetBearingLocation(latitude, longitude, time);
    if (time > next_average_time && accuracy < kCoarseAccuracy) {
        GetAverageSpeed();
        UpdateOdometer();
    }
}

void COverlayGPSPosition::GetAverageSpeed()
{
    next_average_time = time + averaging_time / kAveragesPerSpan;
    history.Expire(time - kHistorySpans * averaging_time, time);
    if (const CPositionHistory::Entry* const oldest = history.Oldest()) {
        double x = 0.0;
        double y = 0.0;
        grid.latlon_to_xy(oldest->lat, oldest->lon, x, y);
        const double metres_to_knots = kSecondsPerHour / kMetresPerNauticalMile / (time - oldest->time);
        const auto east = static_cast<float>(-x * metres_to_knots);
        const auto north = static_cast<float>(-y * metres_to_knots);
        set_average(east, north);
        if (average_speed < kJumpSpeed) speed_range.SetValue(average_speed, time);
    }
    history.Push({latitude, longitude, time});
}

void COverlayGPSPosition::UpdateOdometer()
{
    if (leg_start_time > 0.0) leg = grid.distance(leg_start_lat, leg_start_lon);
    const double elapsed = time - leg_start_time;
    const bool under_way = elapsed > kLegSeconds && average_speed > kLeastLegSpeed;
    const bool turned = elapsed > kShortestLegSeconds && hasChangedCourseSpd();
    const bool clock_went_back = elapsed < 0.0;
    if (under_way || turned || clock_went_back) CloseLeg();
}

void COverlayGPSPosition::CloseLeg()
{
    odometer_total += leg;
    leg = 0.0;
    leg_start_lat = latitude;
    leg_start_lon = longitude;
    leg_start_time = time;
}

void COverlayGPSPosition::reset_history()
{
    last_blink_time = next_average_time = 0.0;
    history.clear();
    speed_range.reset();
    leg = leg_start_lat = leg_start_lon = leg_start_time = 0.0;
}

bool COverlayGPSPosition::Serialize(IOStream& stream)
{
    Section section(stream);
    double total = odometer_total;
    if (!section.declare_fblock(&total, static_cast<int>(sizeof total))) return false;
    if (std::isfinite(total) && total >= 0.0) odometer_total = total;
    return true;
}

bool COverlayGPSPosition::LoadOdometer()
{
    if (!theLatestPosition.ReadFile(OdometerFile(), ZT_HWND(), kOdometerMagic)) return false;
    odometer_in_file = theLatestPosition.odometer_total;
    return true;
}

bool COverlayGPSPosition::SaveOdometer()
{
    const double total = theLatestPosition.odometer_total;
    if (total == odometer_in_file) return true;
    if (!theLatestPosition.WriteFile(OdometerFile(), ZT_HWND(), kOdometerMagic)) return false;
    odometer_in_file = total;
    return true;
}
