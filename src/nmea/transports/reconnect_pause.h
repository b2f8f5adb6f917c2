#pragma once

#include "core/heartbeat.h"

#include <algorithm>

/// The growing pause before a lost connection is tried again: 2 s, then twice the one before, 60 s at most. Counted in
/// ticks of the heartbeat.
class CReconnectPause {
public:
    /// Begins the pause, unless one runs.
    void Begin()
    {
        if (left > 0) return;
        left = next;
        next = std::min(2 * next, kLongest);
    }
    /// True when the pause has just ended.
    bool Tick() { return left > 0 && --left == 0; }
    void Cancel() { left = 0; }
    /// The connection worked: the next pause is the shortest again.
    void Worked() { next = kShortest; }

private:
    static constexpr int kTicksPerSecond = 1000 / CHeartbeat::kTickMilliseconds;
    static constexpr int kShortest = 2 * kTicksPerSecond;
    static constexpr int kLongest = 60 * kTicksPerSecond;

    int left = 0; ///< ticks; 0: no pause runs
    int next = kShortest;
};
