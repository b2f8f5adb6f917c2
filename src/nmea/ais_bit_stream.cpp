#include "core/word_bytes.h"
#include "nmea/ais_sentences.h"

#include <algorithm>
#include <cstring>

// Characters are turned into bits and back eight at a time: six bits in each byte of a word, or 48 bits in one piece.

namespace CNEMA_AIS {
namespace {

constexpr int kCharacterBits = 6;
constexpr int kPieceCharacters = 8;
constexpr int kPieceBits = kPieceCharacters * kCharacterBits;
constexpr std::uint64_t kEachByte = RepeatedByte(1);

std::uint64_t ToBigEndian(std::uint64_t word)
{
    return __builtin_bswap64(word);
}

void Store(void* to, std::uint64_t word)
{
    word = ToBigEndian(word);
    std::memcpy(to, &word, sizeof word);
}

/// decode_sixbit of eight characters, the first one lowest; the two upper bits of each byte are of no meaning.
std::uint64_t DecodeSixbits(std::uint64_t characters)
{
    const std::uint64_t from_89 = ((characters & 0x7F * kEachByte) + 39 * kEachByte) | characters;
    return (characters & 0x3F * kEachByte) + 16 * kEachByte - (from_89 >> 4 & 8 * kEachByte);
}

/// The lower six bits of each byte, those of the lowest byte uppermost, in the upper 48 bits; zeroes below.
std::uint64_t Pack(std::uint64_t bytes)
{
    bytes = (bytes & 0x003F003F003F003F) << 6 | (bytes >> 8 & 0x003F003F003F003F);
    bytes = (bytes & 0x00000FFF00000FFF) << 12 | (bytes >> 16 & 0x00000FFF00000FFF);
    return bytes << 40 | bytes >> 32 << 16;
}

/// Of the byte at the stream's end what has been received.
unsigned UsedBits(std::uint8_t last)
{
    return last & ~(0xFFU >> CAIS_Sentence::bit_count % 8);
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

std::uint8_t CAIS_Sentence::bitstream[kStreamBits / 8 + kMargin] = {};
std::int32_t CAIS_Sentence::bit_count = 0;
std::int32_t CAIS_Sentence::last_sentence_number = 0;

void CAIS_Sentence::append_sixbits(int v)
{
    if (bit_count > kMostBits - kCharacterBits) return;
    const unsigned shifted = static_cast<unsigned>(v & 63) << 10 >> bit_count % 8;
    std::uint8_t* at = bitstream + bit_count / 8;
    at[0] = static_cast<std::uint8_t>(UsedBits(*at) | shifted >> 8);
    at[1] = static_cast<std::uint8_t>(shifted);
    bit_count += kCharacterBits;
}

void CAIS_Sentence::AppendPayload(const char* payload, std::size_t length)
{
    const auto most = static_cast<std::size_t>((kMostBits - bit_count) / kCharacterBits);
    std::size_t left = std::min(length, most);
    std::uint8_t* at = bitstream + bit_count / 8;
    const int used = bit_count % 8;
    // Each piece shares its first byte with the end of the one before, which stands uppermost in `word`.
    std::uint64_t word = std::uint64_t{UsedBits(*at)} << 56;
    bit_count += static_cast<std::int32_t>(left) * kCharacterBits;
    const auto append = [&](std::uint64_t characters) {
        word |= Pack(DecodeSixbits(characters)) >> used;
        Store(at, word);
        word <<= kPieceBits;
        at += kPieceBits / 8;
    };
    const char* const end = payload + left;
    const bool has_piece = left >= kPieceCharacters;
    for (; left >= kPieceCharacters; left -= kPieceCharacters, payload += kPieceCharacters)
        append(LoadEightBytes(payload));
    // What stands in the stream behind the last bit received is of no meaning.
    if (left > 0)
        append(has_piece ? LoadEightBytes(end - kPieceCharacters) >> 8 * (8 - left) : LoadBytes(payload, left));
}

void CAIS_Sentence::fetch_string(char* out, int& position, int bits)
{
    int length = std::clamp(bit_count - position, 0, bits) / kCharacterBits;
    for (int done = 0; done < length; done += kPieceCharacters) {
        const int from = position + done * kCharacterBits;
        Store(out + done, ToText(Spread(StreamFrom(from) >> (64 - kPieceBits))));
    }
    while (length > 0 && (out[length - 1] == '@' || out[length - 1] == ' ')) --length;
    out[length] = 0;
    position += bits;
}

} // namespace CNEMA_AIS
