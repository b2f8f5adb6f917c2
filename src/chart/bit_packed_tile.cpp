#include "chart/bit_packed_tile.h"

#include "chart/colour_list.h"
#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <cstring>
#ifdef ZT_AVX2
#include <immintrin.h>
#endif

namespace {

std::uint32_t LoadWord(const std::uint8_t* from)
{
    std::uint32_t word;
    std::memcpy(&word, from, sizeof(word));
    return word;
}

/// One code after the other.
void UnpackCodes(const std::uint8_t* from, const ColourList& list, int width, unsigned char* out, int words)
{
    const unsigned mask = (1U << width) - 1;
    for (const int per_word = 32 / width; words > 0; --words, from += 4) {
        std::uint32_t word = LoadWord(from);
        for (int i = 0; i < per_word; ++i, word >>= width) *out++ = list.indices[word & mask];
    }
}

/// Two codes of 3 or 4 bits at a time, through a table of pairs.
template <int kWidth>
void UnpackPairs(const std::uint8_t* from, const ColourList& list, unsigned char* out, int words)
{
    constexpr unsigned kPairs = 1U << 2 * kWidth;
    constexpr unsigned kCodes = 1U << kWidth;
    std::uint16_t pairs[kPairs];
    for (unsigned i = 0; i < kPairs; ++i) {
        pairs[i] = static_cast<std::uint16_t>(list.indices[i % kCodes] | list.indices[i / kCodes] << 8);
    }
    for (; words > 0; --words, from += 4) {
        std::uint32_t word = LoadWord(from);
        for (int i = 0; i < 32 / kWidth / 2; ++i, word >>= 2 * kWidth, out += 2) {
            std::memcpy(out, &pairs[word % kPairs], sizeof(pairs[0]));
        }
    }
}

/// Four codes of 2 bits at a time.
void UnpackFours(const std::uint8_t* from, const ColourList& list, unsigned char* out, int words)
{
    std::uint32_t fours[256];
    for (unsigned i = 0; i < 256; ++i) {
        fours[i] = list.indices[i & 3] | list.indices[i >> 2 & 3] << 8 | list.indices[i >> 4 & 3] << 16 |
                   static_cast<std::uint32_t>(list.indices[i >> 6]) << 24;
    }
    for (int i = 0; i < 4 * words; ++i) std::memcpy(out + 4 * i, &fours[from[i]], sizeof(fours[0]));
}

/// Eight codes of 1 bit at a time: each bit is spread over a byte that picks one of the two colours.
void UnpackEights(const std::uint8_t* from, const ColourList& list, unsigned char* out, int words)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    constexpr std::uint64_t kBitOfEach = 0x8040201008040201;
    const std::uint64_t first = list.indices[0] * kEach;
    const std::uint64_t difference = first ^ list.indices[1] * kEach;
    for (int i = 0; i < 4 * words; ++i) {
        const std::uint64_t picked = from[i] * kEach & kBitOfEach;
        const std::uint64_t ones = (picked + 0x7F * kEach) >> 7 & kEach;
        const std::uint64_t pixels = first ^ (difference & ones * 0xFF);
        std::memcpy(out + 8 * i, &pixels, sizeof(pixels));
    }
}

void UnpackPortable(const std::uint8_t* from, const ColourList& list, int width, unsigned char* out, int words)
{
    switch (width) {
    case 1:
        return UnpackEights(from, list, out, words);
    case 2:
        return UnpackFours(from, list, out, words);
    case 3:
        return UnpackPairs<3>(from, list, out, words);
    case 4:
        return UnpackPairs<4>(from, list, out, words);
    default:
        return UnpackCodes(from, list, width, out, words);
    }
}

#ifdef ZT_AVX2
/// Every code to a byte of its own, by depositing up to eight at once.
template <int kWidth>
ZT_AVX2 void SpreadCodes(const std::uint8_t* from, unsigned char* out, int words)
{
    constexpr int kPerWord = 32 / kWidth;
    constexpr std::uint64_t kMask = 0x0101010101010101 * ((1U << kWidth) - 1);
    for (; words > 0; --words, from += 4, out += kPerWord) {
        const std::uint64_t word = LoadWord(from);
#pragma GCC unroll 4
        for (int done = 0; done < kPerWord; done += 8) {
            const std::uint64_t codes = _pdep_u64(word >> done * kWidth, kMask);
            std::memcpy(out + done, &codes, sizeof(codes));
        }
    }
}

/// Codes to indices in place, sixteen colours a shuffle. A shuffle gives 0 for a selector with its highest bit set:
/// shifting the codes of a block down to 0 to 15 and adding 0x70 with saturation sets it for all others.
template <int kBlocks>
ZT_AVX2 void CodesToIndices(const ColourList& list, unsigned char* out, int count)
{
    __m256i block[kBlocks];
    for (int i = 0; i < kBlocks; ++i) {
        block[i] =
            _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(list.indices.data() + 16 * i)));
    }
    const __m256i others = _mm256_set1_epi8(0x70);
    for (int i = 0; i < count; i += 32) {
        auto* pixels = reinterpret_cast<__m256i*>(out + i);
        __m256i codes = _mm256_loadu_si256(pixels);
        __m256i indices = _mm256_shuffle_epi8(block[0], _mm256_adds_epu8(codes, others));
#pragma GCC unroll 8
        for (int k = 1; k < kBlocks; ++k) {
            codes = _mm256_sub_epi8(codes, _mm256_set1_epi8(16));
            indices = _mm256_or_si256(indices, _mm256_shuffle_epi8(block[k], _mm256_adds_epu8(codes, others)));
        }
        _mm256_storeu_si256(pixels, indices);
    }
}

template <int kWidth>
ZT_AVX2 void UnpackWidth(const std::uint8_t* from, const ColourList& list, int colours, unsigned char* out, int words,
                         int count)
{
    SpreadCodes<kWidth>(from, out, words);
    if constexpr (kWidth <= 4) return CodesToIndices<1>(list, out, count);
    if (colours <= 32) return CodesToIndices<2>(list, out, count);
    if (colours <= 48) return CodesToIndices<3>(list, out, count);
    if (colours <= 64) return CodesToIndices<4>(list, out, count);
    CodesToIndices<8>(list, out, count);
}

ZT_AVX2 void UnpackAvx2(const std::uint8_t* from, const ColourList& list, int width, int colours, unsigned char* out,
                        int words, int count)
{
    switch (width) {
    case 1:
        return UnpackWidth<1>(from, list, colours, out, words, count);
    case 2:
        return UnpackWidth<2>(from, list, colours, out, words, count);
    case 3:
        return UnpackWidth<3>(from, list, colours, out, words, count);
    case 4:
        return UnpackWidth<4>(from, list, colours, out, words, count);
    case 5:
        return UnpackWidth<5>(from, list, colours, out, words, count);
    case 6:
        return UnpackWidth<6>(from, list, colours, out, words, count);
    default:
        return UnpackWidth<7>(from, list, colours, out, words, count);
    }
}
#endif

} // namespace

void DecodeBitPackedTile(TileJob& job, int count)
{
    const int colours = 256 - job.block[0];
    const std::size_t words_begin = 1 + static_cast<std::size_t>(colours);
    const int width = CodeWidth(colours);
    const int per_word = 32 / width;
    const int words = (count + per_word - 1) / per_word;
    if (job.block.size() < words_begin + 4 * static_cast<std::size_t>(words)) {
        return PlainBitPacked(job.block, job.out, count);
    }
    const ColourList list(job.block.subspan(1, static_cast<std::size_t>(colours)));
    if (!list.IsGood()) return PlainBitPacked(job.block, job.out, count);
    job.note.index_limit = list.index_limit;
    const std::uint8_t* from = job.block.data() + words_begin;
#ifdef ZT_AVX2
    if (TheInstructionSet() >= InstructionSet::avx2 && HasFastBitDeposit()) {
        return UnpackAvx2(from, list, width, colours, job.out, words, count);
    }
#endif
    UnpackPortable(from, list, width, job.out, words);
}
