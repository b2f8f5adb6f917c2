#include "navdata/velocity_damping.h"

#include "navdata/fast_trigonometry.h"

#include <cmath>

namespace {

constexpr float kShortestConstant = 0.1F; ///< seconds
constexpr double kFastestRate = 10.0;     ///< 1 / seconds
/// At this speed or below there is no direction.
constexpr float kStopped = 0.1F;

} // namespace

VelocityDamping::VelocityDamping(float with_time_constant)
{
    SetTimeConstant(with_time_constant);
}

void VelocityDamping::SetTimeConstant(float seconds)
{
    time_constant = seconds;
    rate = seconds > kShortestConstant ? 1.0 / static_cast<double>(seconds) : kFastestRate;
}

void VelocityDamping::Set(float new_direction, float new_speed, double new_time)
{
    float sine, cosine;
    fast_sin_cos(new_direction, sine, cosine);
    SetXY(sine * new_speed, cosine * new_speed, new_time);
}

void VelocityDamping::SetXY(float new_x, float new_y, double new_time)
{
    if (!std::isfinite(new_x) || !std::isfinite(new_y)) return; // would stay in the average
    const auto passed = static_cast<float>(new_time - time);
    if (passed > 0.0F && passed <= time_constant) {
        const double share = passed * rate;
        x += (static_cast<double>(new_x) - x) * share;
        y += (static_cast<double>(new_y) - y) * share;
    } else {
        x = new_x; // a pause longer than the time constant restarts the average
        y = new_y;
    }
    const auto east = static_cast<float>(x);
    const auto north = static_cast<float>(y);
    speed = std::hypot(east, north);
    const bool moving = speed > kStopped;
    sin = moving ? east / speed : 0.0F;
    cos = moving ? north / speed : 0.0F;
    direction = moving ? fast_atan2(cos, sin) : 0.0F;
    time = new_time;
}
