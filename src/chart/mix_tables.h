#pragma once

#include "chart/thread_data_for_read.h"

#include <cstdint>

/// A chart's table of mixes prepared for reducing tiles: made once when the chart opens, then only read.
class CMixTables {
public:
    /// `matrix`: 128 x 128 palette indices; `palette`: 128 ready pixels.
    CMixTables(const std::uint8_t* matrix, const std::uint32_t* palette);

    /// Reduces a tile, read at level - 1, by 2^level (1 to 6) into (64 >> level) squared pixels of `dest`.
    void ReduceTile(const unsigned char* tile, const TileNote& note, int level, std::uint32_t* dest, int stride) const;

private:
    const std::uint8_t* indices;
    const std::uint32_t* colours;
};
