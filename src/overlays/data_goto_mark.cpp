#include "overlays/data_goto_mark.h"

#include "navdata/fast_trigonometry.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <cmath>
#include <utility>

namespace {

constexpr double kArrived = 5.0;     ///< metres: nearer than this there is no direction
constexpr float kLeastNormal = 0.9F; ///< squared length from which on a normal is one

} // namespace

bool CDataGotoMark::HasLeg() const
{
    return leg_normal_x * leg_normal_x + leg_normal_y * leg_normal_y > kLeastNormal;
}

void CDataGotoMark::NavigateFrom(double lat, double lon)
{
    grid.latlon_to_xy(lat, lon, leg_start_x, leg_start_y);
    leg_normal_x = leg_normal_y = leg_length = 0.0F;
    const double length = std::hypot(leg_start_x, leg_start_y);
    if (!(length > kArrived)) return;
    leg_length = static_cast<float>(length);
    leg_normal_x = static_cast<float>(-leg_start_y / length);
    leg_normal_y = static_cast<float>(leg_start_x / length);
}

void CDataGotoMark::UpdatePosition(double lat, double lon)
{
    grid.latlon_to_xy(lat, lon, pos_x, pos_y);
    const double metres = std::hypot(pos_x, pos_y);
    distance = static_cast<float>(metres);
    if (!(metres > kArrived)) return;
    to_target_x = static_cast<float>(-pos_x / metres);
    to_target_y = static_cast<float>(-pos_y / metres);
    bearing = fast_atan2(to_target_y, to_target_x);
    if (!HasLeg()) NavigateFrom(lat, lon);
    cross_track =
        static_cast<float>(pos_x * static_cast<double>(leg_normal_x) + pos_y * static_cast<double>(leg_normal_y));
}

bool CDataGotoMark::GetAxis(float& out) const
{
    out = kNoBearing;
    if (route != nullptr && !route->segments.empty() && target != nullptr && target == route->FirstWaypoint()) {
        const COverlayRoute::segment& first = route->segments.front();
        out = fast_atan2(static_cast<float>(first.dir_y), static_cast<float>(first.dir_x));
        return true;
    }
    if (!HasLeg()) return false;
    out = fast_atan2(leg_normal_x, -leg_normal_y);
    return true;
}

void CDataGotoMark::CancelNavigation()
{
    COverlayMark* const old_target = std::exchange(target, nullptr);
    COverlayRoute* const old_route = std::exchange(route, nullptr);
    after_target = nullptr;
    bearing = kNoBearing;
    grid = {};
    remaining = leg_normal_x = leg_normal_y = leg_length = 0.0F;
    if (old_target != nullptr) {
        old_target->goto_target = false;
        old_target->Dispatch(COverlayObject::kLookChanged);
    }
    if (old_route != nullptr) {
        old_route->following = false;
        old_route->Dispatch(COverlayObject::kLookChanged);
    }
}
