#include "nmea/ais_sentences.h"

#include <algorithm>
#include <bit>
#include <cstring>

// Characters are turned into bits and back eight at a time: six bits in each byte of a word, or 48 bits in one piece.

namespace CNEMA_AIS {
namespace {

constexpr int kCharacterBits = 6;
constexpr int kPieceCharacters = 8;
constexpr int kPieceBits = kPieceCharacters * kCharacterBits;
constexpr std::uint64_t kEachByte = 0x0101010101010101;

std::uint64_t ToBigEndian(std::uint64_t word)
{
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

std::uint64_t Load(const void* from)
{
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return ToBigEndian(word);
}

void Store(void* to, std::uint64_t word)
{
    word = ToBigEndian(word);
    std::memcpy(to, &word, sizeof word);
}

/// decode_sixbit of eight characters.
std::uint64_t DecodeSixbits(std::uint64_t characters)
{
    const std::uint64_t from_89 = ((characters & 0x7F * kEachByte) + 39 * kEachByte) | characters;
    const std::uint64_t shifted = from_89 >> 7 & kEachByte;
    return ((characters & 0x3F * kEachByte) + 16 * kEachByte + shifted * 56) & 0x3F * kEachByte;
}

/// 48 bits from the lower six of each byte.
std::uint64_t Pack(std::uint64_t bytes)
{
    bytes = (bytes & 0x3F003F003F003F00) >> 2 | (bytes & 0x003F003F003F003F);
    bytes = (bytes & 0x0FFF00000FFF0000) >> 4 | (bytes & 0x00000FFF00000FFF);
    return bytes >> 32 << 24 | (bytes & 0xFFFFFF);
}

/// The reverse of Pack.
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

void CAIS_Sentence::append_bits(std::uint64_t upper, int count)
{
    if (bit_count + count > kMostBits) return;
    std::uint8_t* at = bitstream + bit_count / 8;
    const int used = bit_count % 8;
    const std::uint64_t kept = static_cast<std::uint64_t>(*at & ~(0xFF >> used)) << 56;
    Store(at, kept | upper << (64 - kPieceBits - used));
    bit_count += count;
}

void CAIS_Sentence::AppendPayload(const char* payload, std::size_t length)
{
    const auto most = static_cast<std::size_t>((kMostBits - bit_count) / kCharacterBits);
    std::size_t left = std::min(length, most);
    for (; left >= kPieceCharacters; left -= kPieceCharacters, payload += kPieceCharacters) {
        append_bits(Pack(DecodeSixbits(Load(payload))), kPieceBits);
    }
    if (left == 0) return;
    char last[kPieceCharacters];
    std::memset(last, '0', sizeof last); // which stands for 0
    std::memcpy(last, payload, left);
    append_bits(Pack(DecodeSixbits(Load(last))), static_cast<int>(left) * kCharacterBits);
}

std::uint32_t CAIS_Sentence::fetch_bits(int& position, int count, std::uint32_t unavailable)
{
    const int from = position;
    position += count;
    if (position > bit_count) return unavailable;
    return static_cast<std::uint32_t>(Load(bitstream + from / 8) << from % 8 >> (64 - count));
}

std::int32_t CAIS_Sentence::fetch_bits_signed(int& position, int count, std::int32_t unavailable)
{
    const int from = position;
    position += count;
    if (position > bit_count) return unavailable;
    return static_cast<std::int32_t>(static_cast<std::int64_t>(Load(bitstream + from / 8) << from % 8) >> (64 - count));
}

void CAIS_Sentence::fetch_string(char* out, int& position, int bits)
{
    int length = std::clamp(bit_count - position, 0, bits) / kCharacterBits;
    for (int done = 0; done < length; done += kPieceCharacters) {
        const int from = position + done * kCharacterBits;
        const std::uint64_t piece = Load(bitstream + from / 8) << from % 8 >> (64 - kPieceBits);
        Store(out + done, ToText(Spread(piece)));
    }
    while (length > 0 && (out[length - 1] == '@' || out[length - 1] == ' ')) --length;
    out[length] = 0;
    position += bits;
}

} // namespace CNEMA_AIS
