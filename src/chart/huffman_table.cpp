#include "chart/huffman_table.h"

#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kBits = HuffmanTable::kBits;
constexpr unsigned kSize = HuffmanTable::kSize;
constexpr int kLongBits = HuffmanTable::kLongBits;
constexpr unsigned kLongSize = HuffmanTable::kLongSize;
constexpr int kDeepest = kBits + kLongBits;

/// In pre-order the leaves no deeper than kBits and the branches at that depth cover the codes, taken with the first
/// decision as the highest bit, in ascending order; gaps between them belong to damaged nodes.
struct Leaf {
    int length;              ///< decisions that lead here
    std::uint8_t first_code; ///< of kBits bits
    std::uint8_t pixel;
};

struct Twigs {
    std::array<Leaf, kSize> leaves;
    std::array<std::uint8_t, kSize> branches; ///< the codes that are longer than kBits
    unsigned leaf_count = 0;
    unsigned branch_count = 0;
    int shortest = kBits;   ///< leaf
    int highest = 0;        ///< pixel
    bool all_leaves = true; ///< none is damaged or deeper than the tables reach
};

constexpr std::array<std::uint8_t, kSize> MakeReversal()
{
    std::array<std::uint8_t, kSize> reversed{};
    for (unsigned i = 0; i < kSize; ++i) {
        for (int bit = 0; bit < kBits; ++bit)
            reversed[i] |= static_cast<std::uint8_t>((i >> bit & 1) << (kBits - 1 - bit));
    }
    return reversed;
}
constexpr auto kReversed = MakeReversal();

/// Fills the part of the newest branch's entries that starts with the low kLongBits bits of `code`; `entry` is 0 for a
/// node that is not resolved.
void FillLong(HuffmanTable& table, const Twigs& twigs, unsigned code, int depth, unsigned entry)
{
    std::uint16_t* const entries = &table.long_codes[twigs.branch_count * kLongSize];
    const unsigned first = kReversed[code % kLongSize << (kBits - kLongBits)];
    for (unsigned i = first; i < kLongSize; i += 1U << (depth - kBits)) entries[i] = static_cast<std::uint16_t>(entry);
}

/// Lists the twigs of a tree by following its links, whatever they are, and fills the entries of long codes.
void ListTwigs(std::span<const std::uint8_t> tree, Twigs& twigs, HuffmanTable& table)
{
    struct Pending {
        std::size_t node;
        int depth;
    };
    std::array<Pending, kDeepest + 1> pending; // right children of the path to the node in hand
    int pending_count = 0;
    Pending at{0, 0};
    unsigned code = 0; // of kDeepest bits
    for (;;) {
        const HuffmanNode node = HuffmanNodeAt(tree, at.node);
        if (node.kind == HuffmanNode::Kind::branch && at.depth < kDeepest) {
            if (at.depth == kBits) twigs.branches[twigs.branch_count++] = static_cast<std::uint8_t>(code >> kLongBits);
            pending[static_cast<std::size_t>(pending_count++)] = {node.right, at.depth + 1};
            at = {node.left, at.depth + 1};
            continue;
        }
        const bool is_leaf = node.kind == HuffmanNode::Kind::leaf;
        if (at.depth > kBits) {
            FillLong(table, twigs, code, at.depth, is_leaf ? static_cast<unsigned>(at.depth | node.pixel << 8) : 0U);
        } else if (is_leaf) {
            const Leaf leaf{at.depth, static_cast<std::uint8_t>(code >> kLongBits), node.pixel};
            twigs.leaves[twigs.leaf_count++] = leaf;
            twigs.shortest = std::min(twigs.shortest, at.depth);
        }
        if (is_leaf)
            twigs.highest = std::max<int>(twigs.highest, node.pixel);
        else
            twigs.all_leaves = false;
        code += 1U << (kDeepest - at.depth);
        if (pending_count == 0) return;
        at = pending[static_cast<std::size_t>(--pending_count)];
    }
}

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

/// The entries that no leaf covers.
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

ZT_ALWAYS_INLINE void Build(const Twigs& twigs, HuffmanTable& table)
{
    const std::span leaves = std::span(twigs.leaves).first(twigs.leaf_count);
    Staircase stairs;
    stairs.steps[1] = 0;
    stairs.pixels[1] = 0;
    // Only what is left behind the shortest code is ever asked for, and only codes that fit there are found in it.
    const int most_left = kBits - twigs.shortest;
    std::array<Leaf, kSize> short_leaves;
    const auto short_end = std::copy_if(leaves.begin(), leaves.end(), short_leaves.begin(),
                                        [most_left](const Leaf& leaf) { return leaf.length <= most_left; });
    for (int bits = 1; bits <= most_left; ++bits) FillStep(stairs, {short_leaves.begin(), short_end}, bits);
    FillStep(stairs, leaves, kBits);
    for (unsigned i = 0; i < twigs.branch_count; ++i) stairs.pixels[kSize + twigs.branches[i]] = (1 + i) * kLongSize;
    for (unsigned high = 0; high < kSize; high += 16) {
        std::uint16_t* const steps = &table.steps[kReversed[high]];
        std::uint64_t* const pixels = &table.pixels[kReversed[high]];
#pragma GCC unroll 16
        for (unsigned low = 0; low < 16; ++low) {
            steps[kReversed[low]] = stairs.steps[kSize + high + low];
            pixels[kReversed[low]] = stairs.pixels[kSize + high + low];
        }
    }
}

void BuildPortable(const Twigs& twigs, HuffmanTable& table)
{
    Build(twigs, table);
}
#ifdef ZT_AVX2
ZT_AVX2 void BuildAvx2(const Twigs& twigs, HuffmanTable& table)
{
    Build(twigs, table);
}
#endif

} // namespace

void BuildHuffmanTable(std::span<const std::uint8_t> tree, HuffmanTable& table)
{
    Twigs twigs;
    std::fill_n(table.long_codes.begin(), kLongSize, std::uint16_t{0});
    ListTwigs(tree, twigs, table);
    table.note = {};
    if (twigs.all_leaves) table.note.index_limit = twigs.highest + 1;
#ifdef ZT_AVX2
    if (TheInstructionSet() == InstructionSet::avx2) return BuildAvx2(twigs, table);
#endif
    BuildPortable(twigs, table);
}
