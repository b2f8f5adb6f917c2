#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Text eight characters at a time: the first character is the lowest byte of the word.
static_assert(std::endian::native == std::endian::little, "words of text are read with their first byte lowest");

/// `byte` eight times.
constexpr std::uint64_t RepeatedByte(unsigned char byte)
{
    return 0x0101010101010101U * byte;
}

inline std::uint64_t LoadEightBytes(const char* at)
{
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

/// The first `count` bytes, 0 to 8, and zeroes behind them. Reads nothing else.
inline std::uint64_t LoadBytes(const char* at, std::size_t count)
{
    const auto byte = [at](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(at[i])} << 8 * i; };
    if (count >= 4) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, at, sizeof first);
        std::memcpy(&last, at + count - 4, sizeof last);
        return first | std::uint64_t{last} << 8 * (count - 4); // the bytes of both are the same where they overlap
    }
    return count == 0 ? 0 : byte(0) | byte(count / 2) | byte(count - 1);
}

/// Sixteen characters, for which one instruction does what an operator says for all of them.
typedef unsigned char CSixteenBytes __attribute__((vector_size(16)));

inline CSixteenBytes LoadSixteenBytes(const void* at)
{
    CSixteenBytes bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

/// The same as two numbers of eight bytes.
typedef std::uint64_t CTwoHalves __attribute__((vector_size(16)));

/// The two halves of them, the first characters first.
struct CTwoWords {
    std::uint64_t first;
    std::uint64_t last;
};

/// Taken apart in registers.
inline CTwoWords WordsOf(CTwoHalves halves)
{
    return {halves[0], halves[1]};
}

inline CTwoWords WordsOf(CSixteenBytes bytes)
{
    return WordsOf(std::bit_cast<CTwoHalves>(bytes));
}

/// The highest bits of the bytes, that of the first byte lowest.
inline unsigned HighestBits(std::uint64_t word)
{
    constexpr std::uint64_t kGather = 0x0002040810204081; // moves them together
    return static_cast<unsigned>((word & RepeatedByte(0x80)) * kGather >> 56);
}

inline unsigned HighestBits(CSixteenBytes bytes)
{
#ifdef __SSE2__
    return static_cast<unsigned>(_mm_movemask_epi8(std::bit_cast<__m128i>(bytes)));
#else
    const CTwoWords words = WordsOf(bytes);
    return HighestBits(words.first) | HighestBits(words.last) << 8;
#endif
}
