#pragma once

#include "core/listener.h"

/// The periodic tick of 100 ms. Main thread only; a test calls Pulse() itself.
class CHeartbeat {
public:
    static CHeartbeat TheHeartbeat;
    static constexpr int kTickMilliseconds = 100;

    /// Something to be done every `period` ticks. Period 0 or below fires at every tick.
    class Counter : public Listener<CHeartbeat> {
    public:
        explicit Counter(int period);
        Counter() = delete;
        virtual ~Counter() = default;

        void OnUpdate(CHeartbeat&) override {}
        virtual void OnHeartbeat() = 0;
        virtual void OnWakeup() {}
        /// Sets the countdown from the fraction of a second that the clock stands at; 0 does nothing.
        void AlignToClock(int ticks_per_second);

        int countdown = 0; ///< ticks left
        int period = 0;    ///< ticks
    };

    void Pulse();
    /// Seconds since 1970 on GPS time, one value for the whole tick.
    double Timestamp() const;
};
