#include "chart/huffman_leaves.h"

#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr unsigned kTableBits = HuffmanTable::kBits;
constexpr unsigned kLongBits = HuffmanTable::kLongBits;
constexpr unsigned kLongCodes = HuffmanTable::kLongSize;

constexpr unsigned kNodesAtOnce = 8;
constexpr unsigned kCodeBits = 64;
constexpr unsigned kDeepest = kCodeBits - kNodesAtOnce;
/// A tree of 128 different leaves takes less.
constexpr std::size_t kLongestTree = 1024;
constexpr std::uint8_t kFarBranch = 0x80;

typedef std::uint8_t eight_nodes __attribute__((vector_size(kNodesAtOnce)));
typedef std::uint16_t eight_places __attribute__((vector_size(2 * kNodesAtOnce)));
typedef std::uint16_t eight_entries __attribute__((vector_size(2 * kNodesAtOnce)));

/// Right children of the path to a node, by the depth of the branch.
using right_children = std::array<std::uint16_t, kCodeBits + kNodesAtOnce>;

/// How many of eight nodes, from the first on, are branches.
ZT_ALWAYS_INLINE unsigned LeadingBranches(std::uint64_t nodes)
{
    constexpr std::uint64_t kBranchBits = 0x8080808080808080;
    return static_cast<unsigned>(std::countr_zero(~nodes & kBranchBits)) / 8;
}

/// Notes of eight nodes, as if they were near branches one below the other, where their right children should be.
ZT_ALWAYS_INLINE void NoteRightChildren(std::uint16_t* rights, std::uint64_t nodes, std::size_t offset)
{
    constexpr eight_places kPlaces{0, 1, 2, 3, 4, 5, 6, 7};
    eight_nodes values;
    std::memcpy(&values, &nodes, sizeof(values));
    const auto behind_first = static_cast<std::uint16_t>(offset + 1 + 256);
    const eight_places places = (kPlaces + behind_first) - __builtin_convertvector(values, eight_places);
    std::memcpy(rights, &places, sizeof(places));
}

std::size_t NextFarBranch(std::span<const std::uint8_t> tree, std::size_t offset)
{
    const std::size_t rest = std::min(tree.size() - offset, kLongestTree);
    const void* const found = std::memchr(tree.data() + offset, kFarBranch, rest);
    if (found == nullptr) return offset + rest;
    return static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - tree.data());
}

/// 1 or 0, by arithmetic; both are less than half of what an unsigned holds.
ZT_ALWAYS_INLINE unsigned IsBelow(unsigned value, unsigned limit)
{
    return (value - limit) >> 31;
}

/// Sorts leaves, in the order of their codes, into those of the table and those of the longer codes. Both kinds take
/// the same way, without a jump; what is of no use goes where it is overwritten or to number 0.
struct Sorter {
    HuffmanLeaves& list;
    HuffmanTable::long_table& long_codes;
    unsigned leaf_count = 0;
    unsigned branch_count = 0;
    unsigned shortest = kTableBits;
    unsigned highest = 0;

    ZT_ALWAYS_INLINE void Add(unsigned depth, std::uint64_t code, std::uint8_t pixel)
    {
        const auto first_code = static_cast<std::uint8_t>(code >> (kCodeBits - kTableBits));
        const unsigned is_long = IsBelow(kTableBits, depth);
        list.leaves[leaf_count] = {static_cast<std::uint8_t>(depth), first_code, pixel};
        leaf_count += 1 - is_long;
        shortest = std::min(shortest, depth);
        highest = std::max<unsigned>(highest, pixel);

        branch_count += is_long & static_cast<unsigned>(code << kTableBits == 0);
        const unsigned number = is_long * branch_count;
        list.branches[number] = first_code;
        const unsigned entry = IsBelow(depth, kTableBits + kLongBits + 1) * (depth | unsigned{pixel} << 8);
        const unsigned place = (code >> (kCodeBits - kTableBits - kLongBits)) % kLongCodes;
        const eight_entries entries = eight_entries{} + static_cast<std::uint16_t>(entry);
        std::memcpy(&long_codes[number * kLongCodes + place], &entries, sizeof(entries));
    }
};

/// The order alone tells the shape of a whole tree, so that the way to the next node never depends on a link; the links
/// are only compared with it. That leaves no branch to mispredict at every other node.
ZT_ALWAYS_INLINE bool ListLeaves(std::span<const std::uint8_t> tree, HuffmanTable::long_table& long_codes,
                                 HuffmanLeaves& list)
{
    Sorter sorter{list, long_codes};
    right_children rights;
    unsigned difference = 0;
    std::size_t far_branch = NextFarBranch(tree, 0);
    std::size_t offset = 0;
    unsigned depth = 0;
    std::uint64_t code = 0; // first decision in the highest bit
    do {
        unsigned branches;
        do {
            if (offset > kLongestTree || tree.size() < offset + kNodesAtOnce || depth > kDeepest) return false;
            std::uint64_t nodes;
            std::memcpy(&nodes, tree.data() + offset, sizeof(nodes));
            NoteRightChildren(&rights[depth], nodes, offset);
            branches = LeadingBranches(nodes);
            if (far_branch < offset + branches) [[unlikely]] {
                depth += static_cast<unsigned>(far_branch - offset);
                const HuffmanNode node = HuffmanNodeAt(tree, far_branch);
                if (node.kind != HuffmanNode::Kind::branch || node.right > kLongestTree) return false;
                rights[depth++] = static_cast<std::uint16_t>(node.right);
                offset = node.left;
                far_branch = NextFarBranch(tree, offset);
                branches = kNodesAtOnce; // no leaf yet
                continue;
            }
            offset += branches;
            depth += branches;
        } while (branches == kNodesAtOnce);
        sorter.Add(depth, code, tree[offset++]);
        // On to the right child of the nearest branch above.
        code += std::uint64_t{1} << (kCodeBits - depth);
        depth = kCodeBits - static_cast<unsigned>(std::countr_zero(code));
        difference |= code == 0 ? 0 : rights[depth - 1] ^ static_cast<unsigned>(offset);
    } while (code != 0);
    list.leaf_count = sorter.leaf_count;
    list.branch_count = sorter.branch_count;
    list.shortest = sorter.shortest;
    list.highest = sorter.highest;
    list.bits_begin = offset;
    return difference == 0;
}

bool ListPortable(std::span<const std::uint8_t> tree, HuffmanTable::long_table& long_codes, HuffmanLeaves& list)
{
    return ListLeaves(tree, long_codes, list);
}
#ifdef ZT_AVX2
ZT_AVX2 bool ListAvx2(std::span<const std::uint8_t> tree, HuffmanTable::long_table& long_codes, HuffmanLeaves& list)
{
    return ListLeaves(tree, long_codes, list);
}
#endif

} // namespace

bool HuffmanLeaves::List(std::span<const std::uint8_t> tree, HuffmanTable::long_table& long_codes)
{
#ifdef ZT_AVX2
    if (TheInstructionSet() >= InstructionSet::avx2) return ListAvx2(tree, long_codes, *this);
#endif
    return ListPortable(tree, long_codes, *this);
}
