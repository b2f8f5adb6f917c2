#include "chart/huffman_table.h"

#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kBits = HuffmanTable::kBits;
constexpr unsigned kSize = HuffmanTable::kSize;

/// A leaf no deeper than kBits, or the node at which the table ends. In pre-order they cover the codes, taken with the
/// first decision as the highest bit, in ascending order and without gaps.
struct Twig {
    std::uint8_t length; ///< decisions that lead here
    bool is_leaf;
    std::uint8_t pixel;
    std::uint16_t first_code;
    std::uint32_t node;
};

struct Twigs {
    std::array<Twig, kSize> twig;
    unsigned count = 0;
    int shortest = kBits;
    bool all_leaves = true;
    int highest = 0; ///< pixel
};

/// Lists the twigs of a tree by following its links, whatever they are.
void ListTwigs(std::span<const std::uint8_t> tree, Twigs& twigs)
{
    struct Pending {
        std::size_t node;
        int depth;
    };
    std::array<Pending, kBits + 1> pending; // right children of the path to the node in hand
    int pending_count = 0;
    Pending at{0, 0};
    unsigned code = 0;
    for (;;) {
        const HuffmanNode node = HuffmanNodeAt(tree, at.node);
        if (node.kind == HuffmanNode::Kind::branch && at.depth < kBits) {
            pending[static_cast<std::size_t>(pending_count++)] = {node.right, at.depth + 1};
            at = {node.left, at.depth + 1};
            continue;
        }
        const bool is_leaf = node.kind == HuffmanNode::Kind::leaf;
        twigs.twig[twigs.count++] = {static_cast<std::uint8_t>(at.depth), is_leaf, node.pixel,
                                     static_cast<std::uint16_t>(code), static_cast<std::uint32_t>(at.node)};
        code += 1U << (kBits - at.depth);
        if (is_leaf) {
            twigs.shortest = std::min(twigs.shortest, at.depth);
            twigs.highest = std::max<int>(twigs.highest, node.pixel);
        } else {
            twigs.all_leaves = false;
        }
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

/// The entries of `bits` bits that start with a leaf: its pixel, then whatever the remaining bits decode to. They are
/// as many as the table of the remaining bits has, in the same order. Whole vectors are stored; what follows is written
/// later.
ZT_ALWAYS_INLINE void FillFromLeaf(Staircase& stairs, unsigned at, const Twig& leaf, int bits)
{
    typedef std::uint16_t vector_of_steps __attribute__((vector_size(32)));
    typedef std::uint64_t vector_of_pixels __attribute__((vector_size(32)));
    const unsigned rest = 1U << (bits - leaf.length);
    const auto one_step = static_cast<std::uint16_t>(leaf.length | 0x100);
    for (unsigned i = 0; i < rest; i += sizeof(vector_of_steps) / sizeof(std::uint16_t)) {
        vector_of_steps steps;
        std::memcpy(&steps, &stairs.steps[rest + i], sizeof(steps));
        steps += one_step;
        std::memcpy(&stairs.steps[at + i], &steps, sizeof(steps));
    }
    for (unsigned i = 0; i < rest; i += sizeof(vector_of_pixels) / sizeof(std::uint64_t)) {
        vector_of_pixels pixels;
        std::memcpy(&pixels, &stairs.pixels[rest + i], sizeof(pixels));
        pixels = pixels << 8 | leaf.pixel;
        std::memcpy(&stairs.pixels[at + i], &pixels, sizeof(pixels));
    }
}

ZT_ALWAYS_INLINE void FillStep(Staircase& stairs, const Twigs& twigs, int bits)
{
    for (unsigned i = 0; i < twigs.count; ++i) {
        const Twig& twig = twigs.twig[i];
        const unsigned at = (1U << bits) + (twig.first_code >> (kBits - bits));
        if (twig.is_leaf && twig.length <= bits) {
            FillFromLeaf(stairs, at, twig, bits);
            continue;
        }
        // A node that the table does not resolve; one above its full depth is damaged and covers several entries.
        const unsigned covered = twig.length < bits ? 1U << (bits - twig.length) : 1U;
        for (unsigned j = 0; j < covered; ++j) {
            stairs.steps[at + j] = 0;
            stairs.pixels[at + j] = std::uint64_t{twig.length} << HuffmanTable::kNodeDepthShift | twig.node;
        }
    }
}

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

ZT_ALWAYS_INLINE void Build(const Twigs& twigs, HuffmanTable& table)
{
    Staircase stairs;
    stairs.steps[1] = 0;
    stairs.pixels[1] = 0;
    // Only what is left behind the shortest code is ever asked for.
    for (int bits = 1; bits <= kBits - twigs.shortest; ++bits) FillStep(stairs, twigs, bits);
    FillStep(stairs, twigs, kBits);
    for (unsigned i = 0; i < kSize; ++i) {
        table.steps[kReversed[i]] = stairs.steps[kSize + i];
        table.pixels[kReversed[i]] = stairs.pixels[kSize + i];
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
    ListTwigs(tree, twigs);
    table.note = {};
    if (twigs.all_leaves) table.note.index_limit = twigs.highest + 1;
#ifdef ZT_AVX2
    if (TheInstructionSet() == InstructionSet::avx2) return BuildAvx2(twigs, table);
#endif
    BuildPortable(twigs, table);
}
