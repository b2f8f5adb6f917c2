#include "chart/mix_tables.h"

#include "chart/rastelle.h"

#include <algorithm>
#include <cstring>

CMixTables::CMixTables(const std::uint8_t* matrix, const std::uint32_t* palette) : second_mix(matrix)
{
    for (unsigned i = 0; i < kSize; ++i) {
        first_mix[i] = static_cast<std::uint16_t>(matrix[i] * kPaletteSize);
        last_mix[i] = palette[matrix[i] < kPaletteSize ? matrix[i] : 0];
    }
}

inline std::uint32_t CMixTables::MixFour(unsigned a_left, unsigned b_right, unsigned b_left, unsigned a_right) const
{
    const unsigned one = first_mix[a_left * kPaletteSize + b_right];
    const unsigned other = second_mix[b_left * kPaletteSize + a_right];
    return last_mix[(one + other) & kMask];
}

/// The places in the tables are worked out for eight pixels at once. Looking first whether all of them come from one
/// colour lost on every kind of chart: on a clean one it is true of every other group, and mispredicted as often.
void CMixTables::ReduceRowByHalf(const unsigned char* a, const unsigned char* b, std::uint32_t* dest) const
{
    constexpr int kAtOnce = 8;
    constexpr int kShift = 7;
    static_assert(1 << kShift == kPaletteSize);
    typedef std::uint16_t pairs __attribute__((vector_size(2 * kAtOnce))); // left column low
    for (int i = 0; i < kTileSide; i += 2 * kAtOnce) {
        pairs upper, lower;
        std::memcpy(&upper, a + i, sizeof(upper));
        std::memcpy(&lower, b + i, sizeof(lower));
        const pairs one = (upper & 0xFF) << kShift | lower >> 8;
        const pairs other = (lower & 0xFF) << kShift | upper >> 8;
#pragma GCC unroll 8
        for (int k = 0; k < kAtOnce; ++k) *dest++ = last_mix[(first_mix[one[k]] + second_mix[other[k]]) & kMask];
    }
}

void CMixTables::ReduceTile(const unsigned char* tile, const TileNote& note, int level, std::uint32_t* dest,
                            int stride) const
{
    const int side = kTileSide >> level;
    if (note.solid >= 0) {
        const auto index = static_cast<unsigned>(note.solid);
        const std::uint32_t pixel = MixFour(index, index, index, index);
        for (int row = 0; row < side; ++row, dest += stride) std::fill_n(dest, side, pixel);
        return;
    }
    const int step = 1 << level;
    const int half = step / 2;
    for (int row = 0; row < side; ++row, dest += stride) {
        const unsigned char* a = tile + (CRastelle::bitrev[2 * row] >> (level - 1)) * kTileSide;
        const unsigned char* b = tile + (CRastelle::bitrev[2 * row + 1] >> (level - 1)) * kTileSide;
        if (level == 1) {
            ReduceRowByHalf(a, b, dest);
            continue;
        }
        for (int column = 0; column < side; ++column) {
            const int i = column * step;
            dest[column] = MixFour(a[i], b[i + half], b[i], a[i + half]);
        }
    }
}
