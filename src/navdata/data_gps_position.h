#pragma once

#include "core/simple_grid.h"

#include <cstdint>

/// The vessel's motion as last reported.
struct CDataSpeedDirection {
    float speed = 0.0F;            ///< knots over ground
    float course = 999.0F;         ///< degrees true; 999: none
    float average_speed = 0.0F;    ///< knots, from the position history
    float average_course = 999.0F; ///< degrees true; 999: none
};

/// Own position. Published through Listener<CDataGPSPosition>.
struct CDataGPSPosition : CDataSpeedDirection {
    enum Status : std::uint32_t {
        kNoFix = 0,
        kFix = 1,
        kDifferential = 2,
        kSimulated = 3,
        kEstimated = 4,
        kRealTimeKinematic = 5,
        kPrecise = 6,
        kManual = 7,
    };

    double latitude = 999.0;  ///< degrees; above 90: no position
    double longitude = 999.0; ///< degrees
    double time = 0.0;        ///< seconds since 1970 on the program's time scale
    float altitude = -99999;  ///< metres; -99999: none
    float accuracy = 0.0F;    ///< HDOP, or metres from the location service; 0: unknown
    std::uint32_t status = kNoFix;
    CSimpleGrid grid; ///< origin at this position
};
