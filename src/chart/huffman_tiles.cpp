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
/// Bytes that must be left before a refill: it moves on by up to seven and then loads eight; a long code does so twice.
constexpr std::ptrdiff_t kRefillReach = 24;

/// Codes of kLongBits bits, first and last decision exchanged.
constexpr std::uint8_t kReversedCode[HuffmanTable::kLongSize] = {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15};

/// What changes while a tile is decoded. `buffer` holds the next bits, lowest first, under a marker bit that tells by
/// its place how many have been used: from bit 63 down as many as there are zeros above it.
struct Cursor {
    const std::uint8_t* from; ///< byte of the buffer's first bit
    std::uint64_t buffer;
    unsigned char* to;
    std::uint64_t last_count; ///< pixels of the last look-up; 0: the tables could not go on
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

/// One pixel whose code is longer than kBits; the step stays 0 where it is longer still. In place and without a walk:
/// one pixel in thirty of a noisy chart comes here, and leaving the loop for it cost as much as all the others.
ZT_ALWAYS_INLINE void LookUpLong(Cursor& cursor, const Lane& lane)
{
    if (cursor.from > lane.last_refill) return;
    const std::size_t place = lane.table.pixels[static_cast<std::uint8_t>(cursor.buffer)];
    Refill(cursor);
    const std::uint64_t code = kReversedCode[(cursor.buffer >> HuffmanTable::kBits) % HuffmanTable::kLongSize];
    const std::uint64_t step = lane.table.long_codes[place + code];
    *cursor.to = static_cast<unsigned char>(step >> 8);
    cursor.to += step != 0;
    cursor.buffer >>= step & 63;
    cursor.last_count = step != 0;
    Refill(cursor);
}

ZT_ALWAYS_INLINE void LookUp(Cursor& cursor, const Lane& lane)
{
    const auto index = static_cast<std::uint8_t>(cursor.buffer);
    const std::uint64_t step = lane.table.steps[index];
    std::memcpy(cursor.to, &lane.table.pixels[index], sizeof(lane.table.pixels[index]));
    cursor.buffer >>= step & 63;
    // A count of 0 stands for the whole step: testing it spares the step a register.
    cursor.last_count = step >> 8;
    if (cursor.last_count == 0) [[unlikely]]
        return LookUpLong(cursor, lane);
    cursor.to += cursor.last_count;
}

ZT_ALWAYS_INLINE bool GoesOn(const Cursor& cursor, const Lane& lane)
{
    return cursor.to < lane.end && cursor.last_count != 0 && cursor.from <= lane.last_refill;
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
            LookUp(one, first);
            LookUp(other, second);
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
        for (int i = 0; i < kLookupsPerRefill; ++i) LookUp(cursor, lane);
    } while (GoesOn(cursor, lane));
    lane.cursor = cursor;
}

void SetBit(Lane& lane, std::size_t bit)
{
    lane.cursor.from = lane.tree.data() + bit / 8;
    lane.cursor.buffer = kMarker >> bit % 8;
    lane.cursor.last_count = 1;
}

/// One pixel by walking the tree; false where there is none.
bool Walk(Lane& lane)
{
    std::size_t bit = lane.Bit();
    const auto pixel = DescendTree(lane.tree, 0, 0, bit);
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
        if (lane.cursor.last_count != 0) return true;
        if (!Walk(lane)) {
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
    if (!BuildHuffmanTable(lane.tree, lane.table)) {
        PlainHuffman(lane.tree, job.out, count);
        return false;
    }
    job.note = lane.table.note;
    lane.last_refill = lane.tree.data() + static_cast<std::ptrdiff_t>(lane.tree.size()) - kRefillReach;
    lane.end = job.out + count;
    lane.cursor.to = job.out;
    SetBit(lane, lane.table.bits_begin * 8);
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
    if (TheInstructionSet() >= InstructionSet::avx2) return DecodeTilesAvx2(jobs, count);
#endif
    DecodeTilesPortable(jobs, count);
}
