#pragma once

#include <cmath>
#include <numbers>

constexpr double kRadians = std::numbers::pi / 180.0;
/// Metres per second of one knot.
constexpr double kKnot = 1852.0 / 3600.0;

/// The angle folded to 0 .. below 360 degrees.
inline double FoldCourse(double degrees)
{
    const double folded = std::fmod(degrees, 360.0);
    return folded < 0.0 ? folded + 360.0 : folded;
}

/// The turn from one course to another, -180 .. 180 degrees.
inline double TurnBetween(double from, double to)
{
    return std::remainder(to - from, 360.0);
}

/// A velocity over the plane: east and north, knots.
struct CVelocity {
    double east = 0.0;
    double north = 0.0;

    static CVelocity Polar(double course, double speed)
    {
        return {speed * std::sin(course * kRadians), speed * std::cos(course * kRadians)};
    }
    double Speed() const { return std::hypot(east, north); }
    double Course() const { return FoldCourse(std::atan2(east, north) / kRadians); }
    CVelocity operator+(const CVelocity& other) const { return {east + other.east, north + other.north}; }
    CVelocity operator-(const CVelocity& other) const { return {east - other.east, north - other.north}; }
};
