#pragma once

#include "chart/thread_data_for_read.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// A look-up table of a byte-form tree: what the next kBits bits decode to, as many whole pixels as lie in them.
struct HuffmanTable {
    static constexpr int kBits = 8;
    static constexpr std::size_t kSize = 1 << kBits;

    /// By the next bits, the earliest in the lowest place: bits used in the low byte, pixels in the high byte. 0 where
    /// the first code is longer than kBits or damaged.
    alignas(64) std::array<std::uint16_t, kSize> steps;
    /// The pixels, the first in the lowest byte; where the step is 0, the offset of the node that kBits decisions lead
    /// to, or less of them to a bad one (`node_depth` in the high half).
    alignas(64) std::array<std::uint64_t, kSize> pixels;
    TileNote note; ///< of a tile decoded with it

    static constexpr int kNodeDepthShift = 32;
};

/// Builds the table of the tree at the start of `tree`.
void BuildHuffmanTable(std::span<const std::uint8_t> tree, HuffmanTable& table);
