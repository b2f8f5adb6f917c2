#pragma once

#include "core/simple_grid.h"

class COverlayMark;
class COverlayRoute;

/// Where the boat is heading for, and the figures of the leg. Published through Listener<CDataGotoMark>.
struct CDataGotoMark {
    static constexpr float kNoBearing = 999.0F;

    static bool auto_reverse; ///< setting: a boat that turns round at the end of a route follows it back

    COverlayMark* target = nullptr;       ///< null: no target
    COverlayRoute* route = nullptr;       ///< the followed route; null on a plain go-to
    COverlayMark* after_target = nullptr; ///< the waypoint behind the target
    float distance = 0.0F;                ///< metres to the target
    float bearing = kNoBearing;           ///< whole degrees true to the target; 999: unknown
    float cross_track = 0.0F;             ///< metres from the leg line, the sign says the side
    float remaining = 0.0F;               ///< metres of the route behind the target
    double leg_start_x = 0.0;             ///< metres in `grid`
    double leg_start_y = 0.0;
    double pos_x = 0.0; ///< the boat in `grid`, metres
    double pos_y = 0.0;
    CSimpleGrid grid;         ///< origin at the target
    float to_target_x = 0.0F; ///< unit vector from the boat to the target
    float to_target_y = 0.0F;
    float leg_normal_x = 0.0F; ///< unit normal of the leg; both 0 while no leg is known
    float leg_normal_y = 0.0F;
    float leg_length = 0.0F; ///< metres

    bool HasLeg() const;
    /// Takes that point (degrees) as the start of the leg. At 5 metres from the target or nearer there is no leg.
    void NavigateFrom(double lat, double lon);
    /// Places the boat (degrees). At 5 metres from the target or nearer, only its distance changes. Where no leg is
    /// known, one starts here.
    void UpdatePosition(double lat, double lon);
    /// The direction of the leg, degrees true; false, and 999, without one.
    bool GetAxis(float& out) const;
    /// Forgets the target and the route, and lets their views know.
    void CancelNavigation();
};
