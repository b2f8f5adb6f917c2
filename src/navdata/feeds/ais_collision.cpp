#include "core/text.h"
#include "navdata/feeds/ais_target_manager.h"
#include "navdata/units.h"
#include "ui/user_notification_manager.h"

#include <cmath>

// Who comes how near and when, and who is warned of.

namespace {

constexpr float kStoppedSpeed = 0.1F;            ///< knots
constexpr float kManOverboardRange = 10000.0F;   ///< metres
constexpr double kLeastRelativeVelocity2 = 1e-6; ///< (metres a second) squared
constexpr float kCollisionCourse = 0.0001F;      ///< metres; the CPA of a ship whose length covers the distance
constexpr QRgb kAlarmColour = 0xFFFF0000;
constexpr QRgb kNearColour = 0xFFDCDC00;
constexpr float kSecondsPerMinute = 60.0F;

void CancelAlarm(const CAISTarget& target)
{
    if (target.alarmed && CAISTargetManager::alarm_beep) CancelSystemNotification(static_cast<int>(target.mmsi));
}

void NotifyCollision(const CAISTarget& target)
{
    ShowSystemNotification(
        static_cast<int>(target.mmsi), stringprintf("AIS collision alert, %s", target.class_text),
        stringprintf("%s, CPA %d m, %d min", target.name.empty() ? "Unknown name" : target.name.c_str(),
                     static_cast<int>(target.cpa), static_cast<int>(target.tcpa / kSecondsPerMinute)));
}

} // namespace

void CAISTargetManager::detect_collision(CAISTarget& target)
{
    double metres = 0.0;
    grid.distance_and_bearing(grid.origin_lat, grid.origin_lon, target.latitude, target.longitude, metres,
                              target.bearing);
    target.range = static_cast<float>(metres);
    const bool man_overboard = target.isManOverboard() && target.range < kManOverboardRange;
    if (!man_overboard && target.speed < kStoppedSpeed) {
        target.tcpa = 0.0F;
        target.cpa = static_cast<float>(CAISTarget::kNoApproach);
        CancelAlarm(target);
        return;
    }
    UpdateApproach(target);
    if (man_overboard)
        WarnOfManOverboard(target);
    else
        WarnOfCollision(target);
}

/// The time t at which the distance |p + v t| is least is -(p . v) / (v . v), for the relative position p and the
/// relative velocity v, on straight tracks.
void CAISTargetManager::UpdateApproach(CAISTarget& target) const
{
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(target.latitude, target.longitude, x, y);
    const double velocity = kMetresPerSecondPerKnot * static_cast<double>(target.speed);
    const double u = velocity * static_cast<double>(target.course_sin) - static_cast<double>(own_east);
    const double v = velocity * static_cast<double>(target.course_cos) - static_cast<double>(own_north);
    const double s = u * u + v * v;
    double t = 0.0;
    double distance = CAISTarget::kNoApproach;
    if (s > kLeastRelativeVelocity2) {
        t = -(x * u + y * v) / s;
        if (t > 0.0) distance = std::hypot(x + u * t, y + v * t);
    }
    target.closing_velocity = static_cast<float>(std::sqrt(s));
    target.tcpa = static_cast<float>(t);
    target.cpa = static_cast<float>(distance - target.Length());
    if (target.cpa < 0.0F) target.cpa = kCollisionCourse;
}

void CAISTargetManager::WarnOfCollision(CAISTarget& target) const
{
    if (!(target.tcpa > 0.0F)) { // it moves away
        CancelAlarm(target);
        target.alarmed = false;
        return;
    }
    const float limit = target.CpaLimit();
    const auto least =
        static_cast<float>(kMetresPerSecondPerKnot * static_cast<double>(cpa_min_closing_velocity_knots));
    if (target.tcpa < cpa_alarm_time && target.cpa < limit && target.closing_velocity > least) {
        target.colour = QColor::fromRgba(kAlarmColour);
        target.alarmed = true;
        if (alarm_beep) NotifyCollision(target);
    } else if (target.tcpa < 2.0F * cpa_alarm_time && target.cpa < 2.0F * limit) {
        target.colour = QColor::fromRgba(kNearColour);
    }
}

void CAISTargetManager::WarnOfManOverboard(CAISTarget& target)
{
    target.alarmed = true;
    std::string bearing;
    CUnits::Default->FormatBearing(static_cast<double>(target.bearing), bearing);
    ShowSystemNotification(static_cast<int>(target.mmsi), "AIS Man Overboard",
                           CUnits::Default->FormatDistance(static_cast<double>(target.range)) + " away, bearing " +
                               bearing);
    MarkManOverboard(target);
}
