#include "navdata/data_gps_position.h"

#include "navdata/fast_trigonometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kRangeSeconds = 300.0F;
constexpr float kStoppedSpeed = 0.1F; ///< knots
/// Below this ground speed, knots, a receiver's course is noise.
constexpr float kSteadySpeed = 0.3F;

// A change of velocity is clear when both velocities are of a size and lie farther apart than a share of it.
constexpr float kLeastAverageSpeed = 0.5F; ///< knots
constexpr float kLeastSpeed = 1.0F;        ///< knots
constexpr float kShareOfSpeeds = 0.125F;
constexpr float kSlackSpeed = 2.0F; ///< knots

} // namespace

bool CDataSpeedDirection::use_averaged_direction = false;

CDataSpeedDirection::CDataSpeedDirection() : speed_range(kRangeSeconds) {}

float CDataSpeedDirection::get_heading() const
{
    switch (best_source) {
    case kCompassHeading:
        return compass.heading;
    case kAverageCourse:
        return average_course;
    case kCourseOverGround:
        return course;
    default:
        return kNoCourse;
    }
}

float CDataSpeedDirection::get_speed() const
{
    switch (best_source) {
    case kCompassHeading:
    case kAverageCourse:
        return average_speed;
    case kCourseOverGround:
        return speed;
    default:
        return 0.0F;
    }
}

void CDataSpeedDirection::set_best(BestSource source, float sine, float cosine)
{
    best_source = source;
    best_sin = sine;
    best_cos = cosine;
}

void CDataSpeedDirection::evaluate_best_direction()
{
    if (speed > kSteadySpeed)
        set_best(kCourseOverGround, course_sin, course_cos);
    else if (compass.heading < kNoBearing)
        set_best(kCompassHeading, heading_sin, heading_cos);
    else if (average_speed > kStoppedSpeed && use_averaged_direction)
        set_best(kAverageCourse, average_sin, average_cos);
    else
        set_best(kNoDirection, 0.0F, 0.0F);
}

bool CDataSpeedDirection::hasChangedCourseSpd() const
{
    if (best_source != kCourseOverGround) return false;
    if (!(average_speed > kLeastAverageSpeed || speed > kLeastSpeed)) return false;
    const float dx = course_sin * speed - average_sin * average_speed;
    const float dy = course_cos * speed - average_cos * average_speed;
    const float clear = (average_speed + speed + kSlackSpeed) * kShareOfSpeeds;
    return dx * dx + dy * dy > clear * clear;
}

void CDataSpeedDirection::set_course(float new_course, float new_speed)
{
    course = std::isfinite(new_course) ? new_course : kNoCourse;
    if (new_speed > kStoppedSpeed && std::isfinite(new_course)) {
        speed = std::min(new_speed, kFastest);
        fast_sin_cos(course, course_sin, course_cos);
    } else {
        speed = course_sin = course_cos = 0.0F;
    }
}

void CDataSpeedDirection::set_average(float east, float north)
{
    average_speed = std::hypot(east, north);
    if (average_speed > kStoppedSpeed) {
        average_sin = east / average_speed;
        average_cos = north / average_speed;
        average_course = fast_atan2(average_cos, average_sin);
    } else {
        average_course = kNoCourse;
        average_sin = average_cos = 0.0F;
    }
}

void CDataSpeedDirection::set_heading(float new_heading, double when)
{
    if (!(new_heading < kNoBearing) || !std::isfinite(new_heading)) {
        compass.heading = CompassDamping::kNoHeading;
        heading_sin = heading_cos = 0.0F;
        return;
    }
    compass.Set(fold_degrees(new_heading), when);
    fast_sin_cos(compass.heading, heading_sin, heading_cos);
}

void CDataGPSPosition::set_latlon(double lat, double lon)
{
    latitude = lat;
    longitude = lon;
    grid.SetOrigin(lat, lon);
}
