#include "chart/colour_tile.h"

#include "chart/colour_by_permute.h"
#include "chart/instruction_set.h"
#include "chart/rastelle.h"
#include "chart/target_attributes.h"

#include <algorithm>
#include <cstring>
#ifdef ZT_AVX2
#include <immintrin.h>
#endif

namespace {

/// Pixel by pixel, but sixteen at once where they are all of one colour, as most of a drawn chart is.
void ColourPortable(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride)
{
    constexpr int kGroup = 16;
    constexpr std::uint64_t kEach = 0x0101010101010101;
    for (int row = 0; row < kTileSide; ++row, dest += stride) {
        const unsigned char* from = tile + CRastelle::bitrev[row] * kTileSide;
        for (int column = 0; column < kTileSide; column += kGroup) {
            std::uint64_t indices[2];
            std::memcpy(indices, from + column, sizeof(indices));
            const std::uint32_t first = palette[from[column] & 0x7F];
            if (indices[0] == indices[1] && indices[0] == from[column] * kEach) {
                typedef std::uint32_t vector __attribute__((vector_size(4 * kGroup)));
                const vector pixels = vector{} + first;
                std::memcpy(dest + column, &pixels, sizeof(pixels));
                continue;
            }
#pragma GCC unroll 8
            for (int i = 0; i < kGroup; i += 2) {
                const std::uint64_t pair =
                    palette[from[column + i] & 0x7F] | std::uint64_t{palette[from[column + i + 1] & 0x7F]} << 32;
                std::memcpy(dest + column + i, &pair, sizeof(pair));
            }
        }
    }
}

#ifdef ZT_AVX2
/// The palette as one plane of bytes for each channel, blue first, sixteen colours a vector and those twice; from the
/// second vector on as what differs from the one before.
template <int kBlocks>
struct Planes {
    __m256i plane[3][kBlocks];
};

template <int kBlocks>
ZT_AVX2 void SplitPalette(const std::uint32_t* palette, Planes<kBlocks>& planes)
{
    const __m128i by_channel = _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    for (int block = 0; block < kBlocks; ++block) {
        __m128i four[4];
        for (int i = 0; i < 4; ++i) {
            const auto* colours = reinterpret_cast<const __m128i*>(palette + 16 * block + 4 * i);
            four[i] = _mm_shuffle_epi8(_mm_loadu_si128(colours), by_channel);
        }
        const __m128i blue_green_low = _mm_unpacklo_epi32(four[0], four[1]);
        const __m128i blue_green_high = _mm_unpacklo_epi32(four[2], four[3]);
        const __m128i red_low = _mm_unpackhi_epi32(four[0], four[1]);
        const __m128i red_high = _mm_unpackhi_epi32(four[2], four[3]);
        planes.plane[0][block] = _mm256_broadcastsi128_si256(_mm_unpacklo_epi64(blue_green_low, blue_green_high));
        planes.plane[1][block] = _mm256_broadcastsi128_si256(_mm_unpackhi_epi64(blue_green_low, blue_green_high));
        planes.plane[2][block] = _mm256_broadcastsi128_si256(_mm_unpacklo_epi64(red_low, red_high));
    }
    for (auto& plane : planes.plane) {
        for (int block = kBlocks - 1; block > 0; --block)
            plane[block] = _mm256_xor_si256(plane[block], plane[block - 1]);
    }
}

/// Four planes of 32 pixels, each in halves as unpacking wants them, to pixels.
ZT_AVX2 inline void StorePixels(std::uint32_t* dest, __m256i blue, __m256i green, __m256i red)
{
    const __m256i opaque = _mm256_set1_epi8(-1);
    const __m256i blue_green[2] = {_mm256_unpacklo_epi8(blue, green), _mm256_unpackhi_epi8(blue, green)};
    const __m256i red_alpha[2] = {_mm256_unpacklo_epi8(red, opaque), _mm256_unpackhi_epi8(red, opaque)};
    auto* out = reinterpret_cast<__m256i*>(dest);
#pragma GCC unroll 2
    for (int half = 0; half < 2; ++half) {
        const __m256i low = _mm256_unpacklo_epi16(blue_green[half], red_alpha[half]);
        const __m256i high = _mm256_unpackhi_epi16(blue_green[half], red_alpha[half]);
        _mm256_storeu_si256(out + 2 * half, low);
        _mm256_storeu_si256(out + 2 * half + 1, high);
    }
}

/// Shuffles each channel's plane by the indices. A shuffle takes the low four bits, and gives 0 where the highest is
/// set: with sixteen less for every block an index takes part in its own and those before, whose differences add up to
/// its colour. The cost follows the blocks of sixteen colours that are in use.
template <int kBlocks>
ZT_AVX2 void ColourByShuffle(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride)
{
    Planes<kBlocks> planes;
    SplitPalette<kBlocks>(palette, planes);
    // Unpacking works in halves of a vector: groups of four pixels are dealt out so that it yields them in order.
    const __m256i deal = _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7);
    for (int row = 0; row < kTileSide; ++row, dest += stride) {
        const unsigned char* from = tile + CRastelle::bitrev[row] * kTileSide;
        for (int column = 0; column < kTileSide; column += 32) {
            __m256i codes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + column));
            codes = _mm256_permutevar8x32_epi32(codes, deal);
            __m256i channel[3];
#pragma GCC unroll 3
            for (int c = 0; c < 3; ++c) channel[c] = _mm256_shuffle_epi8(planes.plane[c][0], codes);
#pragma GCC unroll 8
            for (int k = 1; k < kBlocks; ++k) {
                codes = _mm256_sub_epi8(codes, _mm256_set1_epi8(16));
#pragma GCC unroll 3
                for (int c = 0; c < 3; ++c) {
                    channel[c] = _mm256_xor_si256(channel[c], _mm256_shuffle_epi8(planes.plane[c][k], codes));
                }
            }
            StorePixels(dest + column, channel[0], channel[1], channel[2]);
        }
    }
}

void ColourAvx2(const unsigned char* tile, const TileNote& note, const std::uint32_t* palette, std::uint32_t* dest,
                int stride)
{
    switch ((note.index_limit + 15) / 16) {
    case 0:
    case 1:
        return ColourByShuffle<1>(tile, palette, dest, stride);
    case 2:
        return ColourByShuffle<2>(tile, palette, dest, stride);
    case 3:
        return ColourByShuffle<3>(tile, palette, dest, stride);
    case 4:
        return ColourByShuffle<4>(tile, palette, dest, stride);
    case 5:
        return ColourByShuffle<5>(tile, palette, dest, stride);
    case 6:
        return ColourByShuffle<6>(tile, palette, dest, stride);
    default:
        return ColourByShuffle<8>(tile, palette, dest, stride);
    }
}
#endif

} // namespace

void ColourTile(const unsigned char* tile, const TileNote& note, const std::uint32_t* palette, std::uint32_t* dest,
                int stride)
{
    if (note.solid >= 0) {
        for (int row = 0; row < kTileSide; ++row, dest += stride) std::fill_n(dest, kTileSide, palette[note.solid]);
        return;
    }
#ifdef ZT_AVX2
    if (TheInstructionSet() == InstructionSet::avx512) return ColourByPermute(tile, palette, dest, stride);
    if (TheInstructionSet() >= InstructionSet::avx2) return ColourAvx2(tile, note, palette, dest, stride);
#endif
    ColourPortable(tile, palette, dest, stride);
}
