#pragma once

/// A direction with a speed, damped as a vector.
class VelocityDamping {
public:
    /// Seconds.
    explicit VelocityDamping(float with_time_constant);
    /// Sets the constant; the rate is its reciprocal, or 10 when it is not above 0.1 s.
    void SetTimeConstant(float seconds);
    /// Degrees, any unit of speed, seconds.
    void Set(float new_direction, float new_speed, double new_time);
    /// East and north components.
    void SetXY(float new_x, float new_y, double new_time);

    float time_constant; ///< seconds
    double rate;         ///< 1 / seconds
    double x = 0.0;      ///< east
    double y = 0.0;      ///< north
    float sin = 0.0F;
    float cos = 0.0F;
    double time = 0.0;      ///< of the last update, seconds
    float direction = 0.0F; ///< degrees; 0 at a speed of 0.1 or below
    float speed = 0.0F;
};
