#pragma once

/// The international nautical mile, by definition.
inline constexpr double kMetresPerNauticalMile = 1852.0;
