#pragma once

/// Names and factors of the units, by row. The factors are single-precision numbers, as they have always been.

inline constexpr const char* tab_dist_units[] = {"Mi", "NM", "km", "m", "ft", "yds"};
/// From metres.
inline constexpr double tab_dist_factors[] = {0.000621371204033494, 0.0005399567889980972, 0.0010000000474974513, 1.0,
                                              3.2809998989105225,   1.0936000347137451};

inline constexpr const char* tab_speed_units[] = {"mph", "kts", "km/h", "m/s"};
/// From knots.
inline constexpr double tab_speed_factors[] = {1.1507794857025146, 1.0, 1.8519999980926514, 0.5144444704055786};

inline constexpr const char* tab_depth_units[] = {"ft", "m", "fathom"};
/// From metres.
inline constexpr double tab_depth_factors[] = {3.2809998989105225, 1.0, 0.546833336353302};
