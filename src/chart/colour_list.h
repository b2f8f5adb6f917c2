#pragma once

#include "chart/thread_data_for_read.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

/// The colours of a tile's list, filled up with index 0 so that every code finds one.
struct ColourList {
    alignas(64) std::array<std::uint8_t, kPaletteSize> indices{};
    int index_limit = 1; ///< every index is below

    explicit ColourList(std::span<const std::uint8_t> list)
    {
        std::memcpy(indices.data(), list.data(), list.size());
        for (const std::uint8_t index : list) index_limit = std::max(index_limit, index + 1);
    }
    /// Whether no index is damaged.
    bool IsGood() const { return index_limit <= kPaletteSize; }
};
