#pragma once

#include "tools/voyage/angles.h"

/// The wind and the tidal stream of the voyage, smooth functions of the time (seconds since its start), so that every
/// run gives the same log.
struct CWeather {
    double wind_from = 62.0;  ///< mean direction, degrees true
    double wind_speed = 13.0; ///< mean, knots

    /// Degrees true, shifting by some degrees over minutes.
    double WindFrom(double seconds) const;
    /// Knots, with gusts.
    double WindSpeed(double seconds) const;
    /// What the stream adds over ground in a channel that runs along `axis` (degrees true), at `strength` knots at its
    /// strongest. It turns once in the voyage.
    static CVelocity Stream(double axis, double strength, double seconds);
};
