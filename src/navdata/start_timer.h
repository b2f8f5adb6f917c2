#pragma once

#include <string>

/// When the race starts. Published through Listener<CDataStartTimer> on every change. Main thread only.
struct CDataStartTimer {
    double time_of_start = 0.0;      ///< seconds since 1970 on the program's time scale; 0: not set
    int period_minutes = 5;          ///< of the countdown
    std::string after_start_layout;  ///< a page layout to change to after the start; empty for none
    bool new_track_at_start = false; ///< a start begins a track of its own

    /// The program's timer, kept in the settings group "CDataStartTimer".
    static CDataStartTimer theStartTime;
    /// To be called after a change of the program's timer: saves and publishes it.
    static void Changed();

    class Persistant;
};
