#include "core/word_bytes.h"
#include "nmea/ais_sentences.h"

#include <algorithm>
#include <bit>
#include <cstring>

// Characters are turned into bits sixteen at a time, and back eight at a time.

namespace CNEMA_AIS {
namespace {

constexpr int kCharacterBits = CAIS_Sentence::kCharacterBits;
constexpr int kPieceBits = CAIS_Sentence::kPieceBits;
constexpr int kPieceCharacters = kPieceBits / kCharacterBits;
constexpr int kBlockCharacters = sizeof(CSixteenBytes);
constexpr std::uint64_t kPieceMask = ~(~std::uint64_t{0} >> kPieceBits);
constexpr std::uint64_t kEachByte = RepeatedByte(1);

/// Sixteen bytes as numbers of two and of four bytes.
typedef std::uint16_t CEightPairs __attribute__((vector_size(16)));
typedef std::uint32_t CFourQuads __attribute__((vector_size(16)));

/// The lower twelve bits of two pairs behind each other.
CFourQuads JoinPairs(CEightPairs pairs)
{
#ifdef __SSE2__
    const __m128i first_left_of_second = _mm_set1_epi32(1 << 16 | 1 << 12);
    return std::bit_cast<CFourQuads>(_mm_madd_epi16(std::bit_cast<__m128i>(pairs), first_left_of_second));
#else
    const auto quads = std::bit_cast<CFourQuads>(pairs);
    return (quads & 0xFFF) << 12 | quads >> 16;
#endif
}

/// decode_sixbit of sixteen characters: two pieces.
CTwoWords Decode(CSixteenBytes characters)
{
    const CSixteenBytes below_89 = CSixteenBytes(characters < 89) & 8;
    const auto pairs = std::bit_cast<CEightPairs>((characters + 72 + below_89) & 0x3F);
    const auto halves = std::bit_cast<CTwoHalves>(JoinPairs((pairs << 6 & 0xFC0) | pairs >> 8));
    return WordsOf(halves << 40 | halves >> 32 << 16);
}

/// Of the piece the first `count` bits, below kPieceBits.
std::uint64_t FirstBits(std::uint64_t piece, int count)
{
    return piece & ~(~std::uint64_t{0} >> count);
}

/// Writes two pieces behind the first `used` bits, 1 or more, of that piece of the stream, over what stands there.
void PutBehind(std::uint64_t* piece, int used, CTwoWords pieces)
{
    const auto [first, last] = pieces;
    piece[0] = FirstBits(piece[0], used) | (first >> used & kPieceMask);
    piece[1] = first << (kPieceBits - used) | (last >> used & kPieceMask);
    piece[2] = last << (kPieceBits - used);
}

/// Fewer than sixteen characters, and zeroes behind them.
CSixteenBytes LoadCharacters(const char* at, int characters)
{
    const auto count = static_cast<std::size_t>(characters);
    constexpr std::size_t kHalf = kBlockCharacters / 2;
    if (count < kHalf) return std::bit_cast<CSixteenBytes>(CTwoWords{LoadBytes(at, count), 0});
    return std::bit_cast<CSixteenBytes>(CTwoWords{LoadEightBytes(at), LoadBytes(at + kHalf, count - kHalf)});
}

/// The upper 48 bits into the lower six of each byte, the uppermost bits into the highest byte.
std::uint64_t Spread(std::uint64_t bits)
{
    bits = bits >> 40 << 32 | (bits >> 16 & 0xFFFFFF);
    bits = (bits & 0x00FFF00000FFF000) << 4 | (bits & 0x00000FFF00000FFF);
    return (bits & 0x0FC00FC00FC00FC0) << 2 | (bits & 0x003F003F003F003F);
}

/// Six-bit text: below 32 stand "@" and the letters, the rest are as in ASCII.
std::uint64_t ToText(std::uint64_t sixbits)
{
    return sixbits | (~sixbits & 0x20 * kEachByte) << 1;
}

} // namespace

std::uint64_t CAIS_Sentence::bitstream[kPieces] = {};
std::int32_t CAIS_Sentence::bit_count = 0;
std::int32_t CAIS_Sentence::last_sentence_number = 0;

void CAIS_Sentence::append_sixbits(int v)
{
    if (bit_count > kMostBits - kCharacterBits) return;
    const int used = bit_count % kPieceBits;
    std::uint64_t& piece = bitstream[bit_count / kPieceBits];
    const auto bits = static_cast<std::uint64_t>(v & 63) << (64 - kCharacterBits);
    piece = FirstBits(piece, used) | bits >> used;
    bit_count += kCharacterBits;
}

void CAIS_Sentence::AppendPayload(const char* at, const char* end, int readable_behind)
{
    const auto start = static_cast<unsigned>(bit_count);
    std::uint64_t* piece = bitstream + start / kPieceBits;
    const int used = static_cast<int>(start % kPieceBits);
    int bits = bit_count;
    for (int count = kBlockCharacters; count == kBlockCharacters && bits < kMostBits; piece += 2) {
        const auto rest = static_cast<int>(end - at);
        const CSixteenBytes block =
            rest + readable_behind >= kBlockCharacters ? LoadSixteenBytes(at) : LoadCharacters(at, rest);
        const unsigned commas = HighestBits(CSixteenBytes(block == ','));
        count = std::min(rest, std::countr_zero(commas | 1U << kBlockCharacters));
        const CTwoWords pieces = Decode(block);
        if (used == 0)
            std::memcpy(piece, &pieces, sizeof pieces);
        else
            PutBehind(piece, used, pieces);
        bits += count * kCharacterBits;
        at += kBlockCharacters;
    }
    bit_count = std::min(bits, kMostBits);
}

void CAIS_Sentence::ReadText(char* out, const std::uint64_t* stream, int before, int characters)
{
    int used = 0; // up to the last character that is neither "@" nor a space: one with any of its lower bits
    for (int done = 0; done < characters; done += kPieceCharacters, ++stream) {
        std::uint64_t sixbits = Spread(stream[0] << before | stream[1] >> (kPieceBits - before));
        if (characters - done < kPieceCharacters) sixbits &= ~(~std::uint64_t{0} >> (characters - done) * 8);
        if (const std::uint64_t letters = sixbits & 0x1F * kEachByte; letters != 0)
            used = done + kPieceCharacters - std::countr_zero(letters) / 8;
        const std::uint64_t text = __builtin_bswap64(ToText(sixbits));
        std::memcpy(out + done, &text, sizeof text);
    }
    out[used] = 0;
}

} // namespace CNEMA_AIS
