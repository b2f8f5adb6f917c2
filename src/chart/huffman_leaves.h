#pragma once

#include "chart/huffman_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// What a byte-form tree looks like from above: its leaves no deeper than HuffmanTable::kBits and, where it goes on
/// below, the branches at that depth. Both in pre-order, so that the codes that they stand for, taken with the first
/// decision as the highest bit, ascend and leave no gap.
struct HuffmanLeaves {
    struct Leaf {
        std::uint8_t length;     ///< decisions that lead here
        std::uint8_t first_code; ///< of kBits bits
        std::uint8_t pixel;
    };

    std::array<Leaf, HuffmanTable::kSize + 1> leaves;
    /// The codes, of kBits bits, that are longer. The first is no code: numbers begin at 1.
    std::array<std::uint8_t, HuffmanTable::kSize + 1> branches;
    unsigned leaf_count;
    unsigned branch_count;
    unsigned shortest;      ///< length of a leaf
    unsigned highest;       ///< pixel of a leaf of any depth
    std::size_t bits_begin; ///< offset behind the last leaf

    /// Lists the tree, whose root must be a branch, and fills the entries of the codes that are longer than kBits.
    /// False for one that is not put together as a pre-order one, and for the few that are far larger or deeper, or
    /// nearer to the end of what may be read, than those of a tile can be.
    bool List(std::span<const std::uint8_t> tree, HuffmanTable::long_table& long_codes);
};
