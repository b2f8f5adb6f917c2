#pragma once

#include <cstdint>

/// Scaling of squares by two, nearest pixel, as a painter without smoothing does it but faster. Works on strips that
/// stay in the nearest cache until they are painted. Rows of a source are DIB_square::kSide pixels apart, those of
/// `out` follow one another.
inline constexpr int kScaledRows = 16; ///< of a strip

/// Doubles kScaledRows / 2 rows of half a square's side into kScaledRows rows of a square's side.
void DoubleStrip(const std::uint32_t* source, std::uint32_t* out);
/// Halves 2 * kScaledRows rows of a square's side into kScaledRows rows of half of it.
void HalveStrip(const std::uint32_t* source, std::uint32_t* out);
