#include "chart/huffman_tiles.h"

#include "chart/huffman_table.h"
#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <bit>
#include <cstring>

namespace {

/// Look-ups that one filling of the buffer allows.
constexpr int kLookupsPerRefill = 56 / HuffmanTable::kBits;
constexpr std::uint64_t kMarker = std::uint64_t{1} << 63;
/// Bytes that must be left before a refill: it moves on by up to seven and then loads eight.
constexpr std::ptrdiff_t kRefillReach = 16;

/// What changes while a tile is decoded. `buffer` holds the next bits, lowest first, under a marker bit that tells by
/// its place how many have been used: from bit 63 down as many as there are zeros above it.
struct Cursor {
    const std::uint8_t* from; ///< byte of the buffer's first bit
    std::uint64_t buffer;
    unsigned char* to;
    unsigned last_step; ///< 0: the table could not go on
};

/// One tile in work.
struct Lane {
    Cursor cursor;
    const std::uint8_t* last_refill; ///< from where on a refill could read behind the data
    unsigned char* end;              ///< of the pixels
    std::span<const std::uint8_t> tree;
    HuffmanTable table;

    std::size_t Bit() const
    {
        return static_cast<std::size_t>(cursor.from - tree.data()) * 8 +
               static_cast<std::size_t>(std::countl_zero(cursor.buffer));
    }
};

ZT_ALWAYS_INLINE void Refill(Cursor& cursor)
{
    const auto used = static_cast<unsigned>(std::countl_zero(cursor.buffer));
    cursor.from += used >> 3;
    std::uint64_t bits;
    std::memcpy(&bits, cursor.from, sizeof(bits));
    cursor.buffer = (bits | kMarker) >> (used & 7);
}

ZT_ALWAYS_INLINE void LookUp(Cursor& cursor, const HuffmanTable& table)
{
    const auto index = static_cast<std::uint8_t>(cursor.buffer);
    const unsigned step = table.steps[index];
    std::memcpy(cursor.to, &table.pixels[index], sizeof(table.pixels[index]));
    cursor.buffer >>= step & 63;
    cursor.to += step >> 8;
    cursor.last_step = step;
}

ZT_ALWAYS_INLINE bool GoesOn(const Cursor& cursor, const Lane& lane)
{
    return cursor.to < lane.end && cursor.last_step != 0 && cursor.from <= lane.last_refill;
}

/// Decodes both tiles until one of them needs attention.
ZT_ALWAYS_INLINE void RunTwo(Lane& first, Lane& second)
{
    Cursor one = first.cursor, other = second.cursor;
    do {
        Refill(one);
        Refill(other);
#pragma GCC unroll 8
        for (int i = 0; i < kLookupsPerRefill; ++i) {
            LookUp(one, first.table);
            LookUp(other, second.table);
        }
    } while (GoesOn(one, first) && GoesOn(other, second));
    first.cursor = one;
    second.cursor = other;
}

ZT_ALWAYS_INLINE void RunOne(Lane& lane)
{
    Cursor cursor = lane.cursor;
    do {
        Refill(cursor);
#pragma GCC unroll 8
        for (int i = 0; i < kLookupsPerRefill; ++i) LookUp(cursor, lane.table);
    } while (GoesOn(cursor, lane));
    lane.cursor = cursor;
}

void SetBit(Lane& lane, std::size_t bit)
{
    lane.cursor.from = lane.tree.data() + bit / 8;
    lane.cursor.buffer = kMarker >> bit % 8;
    lane.cursor.last_step = 1;
}

/// The leaf that the buffer's bits lead to from a node; -1 where a far branch, the end of the tree or that of the
/// buffer calls for the careful way. Moves the buffer behind the bits.
ZT_ALWAYS_INLINE int WalkNearBranches(std::span<const std::uint8_t> tree, std::size_t node, std::uint64_t& buffer)
{
    constexpr std::size_t kFurthestStep = 1 + 127;
    while (buffer > 1 && node + kFurthestStep < tree.size()) {
        const unsigned value = tree[node];
        if (value < 0x80) return static_cast<int>(value);
        if (value == 0x80) return -1;
        node += 1 + ((buffer & 1) != 0 ? 256 - value : 0);
        buffer >>= 1;
    }
    return -1;
}

/// One pixel whose code is longer than the table: walks on from the node that the table leads to.
ZT_ALWAYS_INLINE bool WalkLongCode(Lane& lane)
{
    const std::uint64_t entry = lane.table.pixels[lane.cursor.buffer & (HuffmanTable::kSize - 1)];
    const auto depth = static_cast<int>(entry >> HuffmanTable::kNodeDepthShift);
    const std::size_t node = entry & 0xFFFFFFFF;
    Refill(lane.cursor);
    std::uint64_t buffer = lane.cursor.buffer >> depth;
    if (const int near = WalkNearBranches(lane.tree, node, buffer); near >= 0) {
        *lane.cursor.to++ = static_cast<unsigned char>(near);
        lane.cursor.buffer = buffer;
        lane.cursor.last_step = 1;
        return true;
    }
    std::size_t bit = lane.Bit() + static_cast<std::size_t>(depth);
    const auto pixel = DescendTree(lane.tree, node, depth, bit);
    if (!pixel) return false;
    *lane.cursor.to++ = *pixel;
    SetBit(lane, bit);
    return true;
}

/// Brings a lane to where the fast loop can run; false when its tile is finished.
ZT_ALWAYS_INLINE bool Service(Lane& lane)
{
    for (;;) {
        const std::ptrdiff_t left = lane.end - lane.cursor.to;
        if (left <= 0) return false;
        if (lane.cursor.from > lane.last_refill) {
            PlainHuffmanFrom(lane.tree, lane.Bit(), lane.cursor.to, static_cast<int>(left));
            return false;
        }
        if (lane.cursor.last_step != 0) return true;
        if (!WalkLongCode(lane)) {
            std::memset(lane.cursor.to, 0, static_cast<std::size_t>(left));
            return false;
        }
    }
}

/// Starts a tile; false when it is finished already.
ZT_ALWAYS_INLINE bool Begin(Lane& lane, TileJob& job, int count)
{
    lane.tree = job.block.subspan(1);
    const HuffmanNode root = HuffmanNodeAt(lane.tree, 0);
    if (root.kind == HuffmanNode::Kind::leaf) {
        std::memset(job.out, root.pixel, static_cast<std::size_t>(count));
        job.note = {root.pixel + 1, root.pixel};
        return false;
    }
    const std::size_t bits_begin = HuffmanBitsBegin(lane.tree);
    if (root.kind == HuffmanNode::Kind::bad || bits_begin == lane.tree.size()) {
        std::memset(job.out, 0, static_cast<std::size_t>(count));
        job.note = {1, 0};
        return false;
    }
    BuildHuffmanTable(lane.tree, lane.table);
    job.note = lane.table.note;
    lane.last_refill = lane.tree.data() + static_cast<std::ptrdiff_t>(lane.tree.size()) - kRefillReach;
    lane.end = job.out + count;
    lane.cursor.to = job.out;
    SetBit(lane, bits_begin * 8);
    return Service(lane);
}

ZT_ALWAYS_INLINE void DecodeTiles(std::span<TileJob* const> jobs, int count)
{
    Lane lanes[2];
    Lane* first = &lanes[0];
    Lane* second = &lanes[1];
    std::size_t next = 0;
    const auto start_next = [&](Lane& lane) {
        while (next < jobs.size()) {
            if (Begin(lane, *jobs[next++], count)) return true;
        }
        return false;
    };
    bool first_runs = start_next(*first);
    bool second_runs = first_runs && start_next(*second);
    while (first_runs && second_runs) {
        RunTwo(*first, *second);
        first_runs = Service(*first) || start_next(*first);
        second_runs = Service(*second) || start_next(*second);
    }
    if (second_runs) std::swap(first, second);
    for (bool runs = first_runs || second_runs; runs; runs = Service(*first)) RunOne(*first);
}

void DecodeTilesPortable(std::span<TileJob* const> jobs, int count)
{
    DecodeTiles(jobs, count);
}
#ifdef ZT_AVX2
ZT_AVX2 void DecodeTilesAvx2(std::span<TileJob* const> jobs, int count)
{
    DecodeTiles(jobs, count);
}
#endif

} // namespace

void DecodeHuffmanTiles(std::span<TileJob* const> jobs, int count)
{
#ifdef ZT_AVX2
    if (TheInstructionSet() == InstructionSet::avx2) return DecodeTilesAvx2(jobs, count);
#endif
    DecodeTilesPortable(jobs, count);
}
