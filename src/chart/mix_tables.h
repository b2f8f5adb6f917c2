#pragma once

#include "chart/thread_data_for_read.h"

#include <array>
#include <cstdint>

/// A chart's table of mixes prepared for reducing tiles: made once when the chart opens, then only read.
class CMixTables {
public:
    /// `matrix`: 128 x 128 palette indices, which must outlive this; `palette`: 128 ready pixels.
    CMixTables(const std::uint8_t* matrix, const std::uint32_t* palette);

    /// Reduces a tile, read at level - 1, by 2^level (1 to 6) into (64 >> level) squared pixels of `dest`.
    void ReduceTile(const unsigned char* tile, const TileNote& note, int level, std::uint32_t* dest, int stride) const;

private:
    static constexpr unsigned kSize = kPaletteSize * kPaletteSize;
    static constexpr unsigned kMask = kSize - 1;

    /// The pixel for four samples of a 2 x 2 pattern: mixed along both diagonals, then with one another.
    std::uint32_t MixFour(unsigned a_left, unsigned b_right, unsigned b_left, unsigned a_right) const;
    void ReduceRowByHalf(const unsigned char* a, const unsigned char* b, std::uint32_t* dest) const;

    std::array<std::uint16_t, kSize> first_mix; ///< the mix of two, times 128
    const std::uint8_t* second_mix;             ///< the matrix itself
    std::array<std::uint32_t, kSize> last_mix;  ///< the mix of two as a pixel
};
