#include "core/word_bytes.h"
#include "nmea/ais_sentences.h"

#include <algorithm>
#include <bit>
#include <cstring>

// Characters are turned into bits sixteen at a time, and back eight at a time.

namespace CNEMA_AIS {
namespace {

constexpr int kCharacterBits = 6;
constexpr int kPieceBits = CAIS_Sentence::kPieceBits;
constexpr int kPieceCharacters = kPieceBits / kCharacterBits;
constexpr std::size_t kBlockCharacters = sizeof(CSixteenBytes);
constexpr std::uint64_t kPieceMask = (std::uint64_t{1} << kPieceBits) - 1;
constexpr std::uint64_t kEachByte = RepeatedByte(1);

/// Sixteen bytes as numbers of two and of four bytes.
typedef std::uint16_t CEightPairs __attribute__((vector_size(16)));
typedef std::uint32_t CFourQuads __attribute__((vector_size(16)));

/// decode_sixbit of sixteen characters: two pieces.
CTwoWords Decode(CSixteenBytes characters)
{
    const CSixteenBytes from_89 = CSixteenBytes(characters >= 89) & 8;
    const auto pairs = std::bit_cast<CEightPairs>((characters + 16 - from_89) & 0x3F);
    const auto quads = std::bit_cast<CFourQuads>((pairs << 6 & 0xFC0) | pairs >> 8);
    const auto halves = WordsOf(std::bit_cast<CSixteenBytes>((quads & 0xFFF) << 12 | quads >> 16));
    const auto join = [](std::uint64_t half) { return (half & 0xFFFFFF) << 24 | half >> 32; };
    return {join(halves.first), join(halves.last)};
}

/// Of the piece the first `count` bits, below kPieceBits.
std::uint64_t FirstBits(std::uint64_t piece, int count)
{
    return piece & ~(kPieceMask >> count);
}

/// Writes the bits of sixteen characters to the stream, behind the first `used` bits of that piece; it has none behind
/// them.
void Put(std::uint64_t* piece, int used, CSixteenBytes characters)
{
    const auto [first, last] = Decode(characters);
    if (used == 0) { // as in nearly every sentence
        piece[0] = first;
        piece[1] = last;
        return;
    }
    piece[0] = FirstBits(piece[0], used) | first >> used;
    piece[1] = (first << (kPieceBits - used) & kPieceMask) | last >> used;
    piece[2] = last << (kPieceBits - used) & kPieceMask;
}

/// The first sixteen characters, or as many as there are and zeroes behind them.
CSixteenBytes LoadCharacters(const char* at, std::size_t count)
{
    constexpr std::size_t kHalf = kBlockCharacters / 2;
    if (count >= kBlockCharacters) return LoadSixteenBytes(at);
    if (count < kHalf) return std::bit_cast<CSixteenBytes>(CTwoWords{LoadBytes(at, count), 0});
    return std::bit_cast<CSixteenBytes>(CTwoWords{LoadEightBytes(at), LoadBytes(at + kHalf, count - kHalf)});
}

/// 48 bits into the lower six of each byte, the uppermost bits into the highest byte.
std::uint64_t Spread(std::uint64_t bits)
{
    bits = bits >> 24 << 32 | (bits & 0xFFFFFF);
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
    const auto bits = static_cast<std::uint64_t>(v & 63) << (kPieceBits - kCharacterBits);
    piece = FirstBits(piece, used) | bits >> used;
    bit_count += kCharacterBits;
}

void CAIS_Sentence::AppendPayload(const char* payload, std::size_t length)
{
    const auto room = static_cast<std::size_t>((kMostBits - bit_count) / kCharacterBits);
    const std::size_t count = std::min(length, room);
    std::uint64_t* piece = bitstream + bit_count / kPieceBits;
    const int used = bit_count % kPieceBits;
    for (std::size_t done = 0; done < count; done += kBlockCharacters) {
        Put(piece, used, LoadCharacters(payload + done, count - done));
        piece += 2;
    }
    bit_count += static_cast<std::int32_t>(count) * kCharacterBits;
}

void CAIS_Sentence::fetch_string(char* out, int& position, int bits)
{
    int length = std::clamp(bit_count - position, 0, bits) / kCharacterBits;
    for (int done = 0; done < length; done += kPieceCharacters) {
        const int from = position + done * kCharacterBits;
        const std::uint64_t text = __builtin_bswap64(ToText(Spread(StreamFrom(from) >> (64 - kPieceBits))));
        std::memcpy(out + done, &text, sizeof text);
    }
    while (length > 0 && (out[length - 1] == '@' || out[length - 1] == ' ')) --length;
    out[length] = 0;
    position += bits;
}

} // namespace CNEMA_AIS
