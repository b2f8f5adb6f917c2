#pragma once

#include "core/listener.h"
#include "navdata/data_gps_position.h"

/// Makes the program's time stamps follow GPS time for as long as there is a real fix. Neither a simulated position nor
/// one whose time lacks the date moves them.
class CFeedGPSTime : Listener<CDataGPSPosition> {
public:
    static CFeedGPSTime the_feed;

    /// Seconds since 1970; a time before it comes from a sentence without a date.
    static constexpr double kEarliestDate = 1e9;
    /// Seconds: times this close are the program's own, which a receiver without a clock was given.
    static constexpr double kSameTime = 0.002;

    CFeedGPSTime() { Connect(); }
    void OnUpdate(CDataGPSPosition& position) override;
};
