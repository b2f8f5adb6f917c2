#pragma once

#include "core/simple_grid.h"
#include "navdata/compass_damping.h"
#include "navdata/min_max_range.h"

#include <cstdint>

/// The vessel's motion, every direction also as sine and cosine. Published through Listener<CDataSpeedDirection>.
struct CDataSpeedDirection {
    enum BestSource : std::uint32_t {
        kNoDirection = 0,
        kCompassHeading = 1,
        kAverageCourse = 2,
        kCourseOverGround = 3,
    };
    static constexpr float kNoCourse = 999.0F;
    static constexpr float kNoBearing = 900.0F; ///< a heading or course of this or above is none
    static constexpr float kFastest = 1e6F;     ///< knots; higher speeds are taken as this

    /// The average course may stand for the direction when nothing better is known. Setting.
    static bool use_averaged_direction;

    CDataSpeedDirection();

    float speed = 0.0F;               ///< knots over ground
    float course = kNoCourse;         ///< degrees true; 999: none
    float average_speed = 0.0F;       ///< knots, from the position history
    float average_course = kNoCourse; ///< degrees true; 999: none
    CompassDamping compass;           ///< the heading
    float best_sin = 0.0F;
    float best_cos = 0.0F;
    std::uint32_t best_source = kNoDirection;
    float average_sin = 0.0F;
    float average_cos = 0.0F;
    float heading_sin = 0.0F;
    float heading_cos = 0.0F;
    float course_sin = 0.0F;
    float course_cos = 0.0F;
    MinMaxRange speed_range; ///< knots, 300 seconds

    /// The direction that best_source names, degrees true; 999 when there is none.
    float get_heading() const;
    /// The speed that goes with it, knots.
    float get_speed() const;
    /// Chooses between course over ground, compass and average course.
    void evaluate_best_direction();
    /// Whether the velocity over ground differs clearly from the average one.
    bool hasChangedCourseSpd() const;
    /// Degrees true and knots. At 0.1 knots or below the boat counts as stopped. What is not finite counts as not
    /// known.
    void set_course(float new_course, float new_speed);
    /// East and north components of the average velocity, knots. At 0.1 knots or below it has no course.
    void set_average(float east, float north);
    /// Degrees true at `when` seconds; 900 or above, or not finite: no compass.
    void set_heading(float new_heading, double when);

private:
    void set_best(BestSource source, float sine, float cosine);
};

/// A position with its motion. Published through Listener<CDataGPSPosition>.
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

    /// Degrees. Moves the grid's origin there.
    void set_latlon(double lat, double lon);
};
