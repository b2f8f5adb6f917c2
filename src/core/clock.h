#pragma once

/// The system's time: seconds since 1970 at millisecond resolution.
double GetTimeNow();

/// Replaces the clock, for tests: null brings the system's own back.
using clock_function = double (*)();
void SetClock(clock_function clock);
