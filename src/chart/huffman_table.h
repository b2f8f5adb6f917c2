#pragma once

#include "chart/thread_data_for_read.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// A look-up table of a byte-form tree: what the next kBits bits decode to, as many whole pixels as lie in them, and
/// beside it one for each code that is longer.
struct HuffmanTable {
    static constexpr int kBits = 8;
    static constexpr std::size_t kSize = 1 << kBits;
    /// What a code may have beyond kBits to be found in `long_codes`.
    static constexpr int kLongBits = 4;
    static constexpr std::size_t kLongSize = 1 << kLongBits;

    /// By number of a longer code's first kBits bits, from 1 on, and the kLongBits bits behind them, the earliest in
    /// the highest place: bits used in all in the low byte, the one pixel in the high byte; 0 where the code is longer
    /// still. Room for the vector that writes the last entry.
    using long_table = std::array<std::uint16_t, (1 + kSize) * kLongSize + 8>;

    /// By the next bits, the earliest in the lowest place: bits used in the low byte, pixels in the high byte. 0 where
    /// the first code is longer than kBits.
    alignas(64) std::array<std::uint16_t, kSize> steps;
    /// The pixels, the first in the lowest byte; where the step is 0, the place in `long_codes` of the kLongSize
    /// entries for the bits that follow.
    alignas(64) std::array<std::uint64_t, kSize> pixels;
    long_table long_codes;
    TileNote note;          ///< of a tile decoded with it
    std::size_t bits_begin; ///< offset of the first byte behind the tree
};

/// Builds the table of the tree at the start of `tree`, whose root must be a branch. False, and no table, for a tree
/// that HuffmanLeaves does not list.
bool BuildHuffmanTable(std::span<const std::uint8_t> tree, HuffmanTable& table);
