#include "chart/colour_by_permute.h"

#include "chart/rastelle.h"
#include "chart/target_attributes.h"

#ifdef ZT_AVX512
#include <immintrin.h>

namespace {

/// One channel of 128 colours, 64 a vector: as much as one permutation takes bytes from.
struct ChannelPlane {
    __m512i low;
    __m512i high;
};

/// The bytes that `every_fourth` picks from 64 colours; it names those of 32.
ZT_AVX512 inline __m512i ChannelOf64(const std::uint32_t* colours, __m512i every_fourth)
{
    __m512i of_32[2];
    for (int half = 0; half < 2; ++half, colours += 32) {
        of_32[half] =
            _mm512_permutex2var_epi8(_mm512_loadu_si512(colours), every_fourth, _mm512_loadu_si512(colours + 16));
    }
    return __builtin_shufflevector(of_32[0], of_32[1], 0, 1, 2, 3, 8, 9, 10, 11);
}

ZT_AVX512 inline ChannelPlane SplitChannel(const std::uint32_t* palette, int channel)
{
    alignas(64) std::uint8_t places[64];
    for (int i = 0; i < 64; ++i) places[i] = static_cast<std::uint8_t>((4 * i + channel) % 128);
    const __m512i every_fourth = _mm512_load_si512(places);
    return {ChannelOf64(palette, every_fourth), ChannelOf64(palette + 64, every_fourth)};
}

/// The channel's bytes for 64 indices, each below 128.
ZT_AVX512 inline __m512i LookUp64(const ChannelPlane& plane, __m512i indices)
{
    return _mm512_permutex2var_epi8(plane.low, indices, plane.high);
}

/// Groups of four pixels in such an order that unpacking, which works in quarters of a vector, gives them in their own.
ZT_AVX512 inline __m512i DealOut(__m512i pixels)
{
    typedef std::uint32_t groups __attribute__((vector_size(64)));
    const auto in_order = reinterpret_cast<groups>(pixels);
    return reinterpret_cast<__m512i>(
        __builtin_shufflevector(in_order, in_order, 0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
}

/// Four planes of 64 pixels, dealt out, to pixels.
ZT_AVX512 inline void StoreDealtPixels(std::uint32_t* dest, __m512i blue, __m512i green, __m512i red)
{
    const __m512i opaque = _mm512_set1_epi8(-1);
    const __m512i blue_green[2] = {_mm512_unpacklo_epi8(blue, green), _mm512_unpackhi_epi8(blue, green)};
    const __m512i red_alpha[2] = {_mm512_unpacklo_epi8(red, opaque), _mm512_unpackhi_epi8(red, opaque)};
#pragma GCC unroll 2
    for (int half = 0; half < 2; ++half) {
        _mm512_storeu_si512(dest + 32 * half, _mm512_unpacklo_epi16(blue_green[half], red_alpha[half]));
        _mm512_storeu_si512(dest + 32 * half + 16, _mm512_unpackhi_epi16(blue_green[half], red_alpha[half]));
    }
}

} // namespace

ZT_AVX512 void ColourByPermute(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride)
{
    static_assert(kTileSide == 64 && kPaletteSize == 128);
    const ChannelPlane blue = SplitChannel(palette, 0);
    const ChannelPlane green = SplitChannel(palette, 1);
    const ChannelPlane red = SplitChannel(palette, 2);
    for (int row = 0; row < kTileSide; ++row, dest += stride) {
        const __m512i indices = DealOut(_mm512_loadu_si512(tile + CRastelle::bitrev[row] * kTileSide));
        StoreDealtPixels(dest, LookUp64(blue, indices), LookUp64(green, indices), LookUp64(red, indices));
    }
}

#endif
