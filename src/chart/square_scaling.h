#pragma once

#include <cstdint>

/// Scaling of squares by two, nearest pixel, as a painter without smoothing does it but faster. Rows of a source are
/// DIB_square::kSide pixels apart, those of `out` follow one another.

/// Doubles `rows` rows of `width` pixels, a multiple of 4, into 2 * rows rows of 2 * width.
void DoubleRows(const std::uint32_t* source, int width, int rows, std::uint32_t* out);
/// Halves 2 * rows rows of a square's side into `rows` rows of half of it.
void HalveRows(const std::uint32_t* source, int rows, std::uint32_t* out);
