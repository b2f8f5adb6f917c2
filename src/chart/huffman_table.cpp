#include "chart/huffman_table.h"

#include "chart/huffman_leaves.h"
#include "chart/instruction_set.h"
#include "chart/reversed_bits.h"
#include "chart/target_attributes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kBits = HuffmanTable::kBits;
constexpr unsigned kSize = HuffmanTable::kSize;
constexpr unsigned kLongSize = HuffmanTable::kLongSize;
using Leaf = HuffmanLeaves::Leaf;

static_assert(kSize == kReversedBits.size());

/// Room behind the last entry for the vector that copies it.
constexpr unsigned kSlack = 16;

/// Tables for 0 to kBits bits, the earliest bit highest: the one for t bits starts at entry 1 << t.
struct Staircase {
    alignas(64) std::array<std::uint16_t, 2 * kSize + kSlack> steps;
    alignas(64) std::array<std::uint64_t, 2 * kSize + kSlack> pixels;
};

typedef std::uint16_t vector_of_steps __attribute__((vector_size(32)));
typedef std::uint64_t vector_of_pixels __attribute__((vector_size(32)));
constexpr unsigned kStepsAtOnce = sizeof(vector_of_steps) / sizeof(std::uint16_t);
constexpr unsigned kPixelsAtOnce = sizeof(vector_of_pixels) / sizeof(std::uint64_t);

/// The entries of `bits` bits that start with a leaf: its pixel, then whatever the remaining bits decode to. They are
/// as many as the table of the remaining bits has, in the same order. Whole vectors are stored; what follows is written
/// later.
ZT_ALWAYS_INLINE void FillFromLeaf(Staircase& stairs, unsigned at, const Leaf& leaf, int bits)
{
    const unsigned rest = 1U << (bits - leaf.length);
    const auto one_step = static_cast<std::uint16_t>(leaf.length | 0x100);
    for (unsigned i = 0; i < rest; i += kStepsAtOnce) {
        vector_of_steps steps;
        std::memcpy(&steps, &stairs.steps[rest + i], sizeof(steps));
        steps += one_step;
        std::memcpy(&stairs.steps[at + i], &steps, sizeof(steps));
    }
    for (unsigned i = 0; i < rest; i += kPixelsAtOnce) {
        vector_of_pixels pixels;
        std::memcpy(&pixels, &stairs.pixels[rest + i], sizeof(pixels));
        pixels = pixels << 8 | leaf.pixel;
        std::memcpy(&stairs.pixels[at + i], &pixels, sizeof(pixels));
    }
}

/// The entries that no leaf covers, because their codes are longer.
ZT_ALWAYS_INLINE void FillGap(Staircase& stairs, unsigned begin, unsigned end)
{
    constexpr vector_of_steps kNone{};
    constexpr vector_of_pixels kNothing{};
    for (unsigned i = begin; i < end; i += kStepsAtOnce) std::memcpy(&stairs.steps[i], &kNone, sizeof(kNone));
    for (unsigned i = begin; i < end; i += kPixelsAtOnce) std::memcpy(&stairs.pixels[i], &kNothing, sizeof(kNothing));
}

ZT_ALWAYS_INLINE void FillStep(Staircase& stairs, std::span<const Leaf> leaves, int bits)
{
    const unsigned begin = 1U << bits;
    unsigned reached = begin;
    for (const Leaf& leaf : leaves) {
        if (leaf.length > bits) continue;
        const unsigned at = begin + (leaf.first_code >> (kBits - bits));
        FillGap(stairs, reached, at);
        FillFromLeaf(stairs, at, leaf, bits);
        reached = at + (1U << (bits - leaf.length));
    }
    FillGap(stairs, reached, 2 * begin);
}

ZT_ALWAYS_INLINE bool Build(std::span<const std::uint8_t> tree, HuffmanTable& table)
{
    HuffmanLeaves list;
    if (!list.List(tree, table.long_codes)) return false;
    table.note = {static_cast<int>(list.highest) + 1, -1};
    table.bits_begin = list.bits_begin;
    const std::span leaves = std::span(list.leaves).first(list.leaf_count);
    Staircase stairs;
    stairs.steps[1] = 0;
    stairs.pixels[1] = 0;
    // Only what is left behind the shortest code is ever asked for, and only codes that fit there are found in it.
    const int most_left = kBits - static_cast<int>(list.shortest);
    std::array<Leaf, kSize> short_leaves;
    const auto short_end = std::copy_if(leaves.begin(), leaves.end(), short_leaves.begin(),
                                        [most_left](const Leaf& leaf) { return leaf.length <= most_left; });
    for (int bits = 1; bits <= most_left; ++bits) FillStep(stairs, {short_leaves.begin(), short_end}, bits);
    FillStep(stairs, leaves, kBits);
    for (unsigned i = 1; i <= list.branch_count; ++i) stairs.pixels[kSize + list.branches[i]] = i * kLongSize;
    for (unsigned high = 0; high < kSize; high += 16) {
        std::uint16_t* const steps = &table.steps[kReversedBits[high]];
        std::uint64_t* const pixels = &table.pixels[kReversedBits[high]];
#pragma GCC unroll 16
        for (unsigned low = 0; low < 16; ++low) {
            steps[kReversedBits[low]] = stairs.steps[kSize + high + low];
            pixels[kReversedBits[low]] = stairs.pixels[kSize + high + low];
        }
    }
    return true;
}

bool BuildPortable(std::span<const std::uint8_t> tree, HuffmanTable& table)
{
    return Build(tree, table);
}
#ifdef ZT_AVX2
ZT_AVX2 bool BuildAvx2(std::span<const std::uint8_t> tree, HuffmanTable& table)
{
    return Build(tree, table);
}
#endif

} // namespace

bool BuildHuffmanTable(std::span<const std::uint8_t> tree, HuffmanTable& table)
{
#ifdef ZT_AVX2
    if (TheInstructionSet() >= InstructionSet::avx2) return BuildAvx2(tree, table);
#endif
    return BuildPortable(tree, table);
}
