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
    for (unsigned i = 0; i < kPaletteSize; ++i) keeps_colours = keeps_colours && matrix[i * kPaletteSize + i] == i;
}

inline std::uint32_t CMixTables::MixFour(unsigned a_left, unsigned b_right, unsigned b_left, unsigned a_right) const
{
    const unsigned one = first_mix[a_left * kPaletteSize + b_right];
    const unsigned other = second_mix[b_left * kPaletteSize + a_right];
    return last_mix[(one + other) & kMask];
}

/// Where sixteen columns of both rows are of one colour, so are the eight pixels that they become.
void CMixTables::ReduceRowByHalf(const unsigned char* a, const unsigned char* b, std::uint32_t* dest) const
{
    constexpr int kGroup = 16;
    constexpr std::uint64_t kEach = 0x0101010101010101;
    for (int column = 0; column < kTileSide; column += kGroup, dest += kGroup / 2) {
        std::uint64_t samples[4];
        std::memcpy(samples, a + column, kGroup);
        std::memcpy(samples + 2, b + column, kGroup);
        const std::uint64_t first = a[column] * kEach;
        const std::uint64_t differences =
            (samples[0] ^ first) | (samples[1] ^ first) | (samples[2] ^ first) | (samples[3] ^ first);
        if (differences == 0 && keeps_colours) {
            typedef std::uint32_t vector __attribute__((vector_size(2 * kGroup)));
            const vector pixels = vector{} + last_mix[a[column] * kPaletteSize + a[column]];
            std::memcpy(dest, &pixels, sizeof(pixels));
            continue;
        }
        for (int i = 0; i < kGroup / 2; ++i) {
            const int at = column + 2 * i;
            dest[i] = MixFour(a[at], b[at + 1], b[at], a[at + 1]);
        }
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
