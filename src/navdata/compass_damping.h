#pragma once

/// A compass heading, damped over the short way round.
class CompassDamping {
public:
    static constexpr float kNoHeading = 999.0F;
    static float default_time_const; ///< seconds; setting

    /// Takes a heading (degrees) at a time (seconds).
    void Set(float new_heading, double new_time);

    float rate = 0.0F;           ///< 1 / seconds; 0 takes over nothing
    float time_constant = -1.0F; ///< seconds; below 0 until first used
    float heading = kNoHeading;  ///< degrees; 999 without a compass
    double time = 0.0;           ///< seconds
};
