#pragma once

#include "navdata/min_max_range.h"
#include "navdata/velocity_damping.h"

/// True wind over ground, knots and degrees true, with what it did lately. Published through Listener<CDataTrueWind>.
struct CDataTrueWind : VelocityDamping {
    CDataTrueWind(float time_constant_seconds, float range_seconds)
        : VelocityDamping(time_constant_seconds), speed_range(range_seconds), direction_range(range_seconds)
    {}

    MinMaxRange speed_range;     ///< knots
    MinMaxRange direction_range; ///< degrees
};

extern CDataTrueWind theTrueWind;
extern CDataTrueWind theAverageTrueWind;
