#pragma once

#include "nmea/ais_messages.h"
#include "nmea/nmea_sentence.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Sentences of AIS receivers. A message may come in several sentences, of which the last one carries its content.
namespace CNEMA_AIS {

/// What VDM and VDO share. One message is put together at a time, whichever of the two it comes in.
class CAIS_Sentence : public CNMEASentence {
public:
    /// False: out of sequence, or the end of a message whose beginning came in the other class of sentence.
    bool Init(char* text) override;

    char channel = 0;              ///< A or B; 0: not said
    std::uint8_t message_type = 0; ///< 0 until a message with its type and MMSI is complete
    std::uint32_t mmsi = 0;
    CMessageBody body;
    const char* description = ""; ///< the ship type in words, at most 24 characters

    // The bits received so far, in pieces of eight characters, each from its most significant bit on.
    static constexpr int kMostBits = 996; ///< of a message; what follows is dropped
    static constexpr int kCharacterBits = 6;
    static constexpr int kPieceBits = 48;  ///< the upper ones of a word; the others are 0
    static constexpr int kPieces = 21 + 2; ///< and as many as a read or write may go too far
    static std::uint64_t bitstream[kPieces];
    static std::int32_t bit_count;
    static std::int32_t last_sentence_number;

    /// The six bits that a character of the payload stands for.
    static int decode_sixbit(int c) { return (c < 89 ? c + 80 : c + 72) & 63; }
    /// Appends six bits; does nothing once no more fit.
    static void append_sixbits(int v);
    /// The next `count` (1 to 30) bits as a number; `unavailable` when not all of them were received.
    static std::uint32_t fetch_bits(int& position, int count, std::uint32_t unavailable = 0)
    {
        const std::uint32_t bits = read_bits(position, count);
        return position <= bit_count ? bits : unavailable;
    }
    /// The same in two's complement.
    static std::int32_t fetch_bits_signed(int& position, int count, std::int32_t unavailable = 0)
    {
        const std::int32_t bits = read_bits_signed(position, count);
        return position <= bit_count ? bits : unavailable;
    }
    /// The same, whether they were received or not: then they are any bits. From a position up to kMostBits.
    static std::uint32_t read_bits(int& position, int count)
    {
        return static_cast<std::uint32_t>(NextBits(position, count) >> (64 - count));
    }
    static std::int32_t read_bits_signed(int& position, int count)
    {
        return static_cast<std::int32_t>(static_cast<std::int64_t>(NextBits(position, count)) >> (64 - count));
    }
    /// The characters received of `bits` bits of text, without "@" and spaces at its end. `out` has TextRoom.
    static void fetch_string(char* out, int& position, int bits)
    {
        const int received = std::clamp(bit_count - position, 0, bits);
        ReadText(out, bitstream + position / kPieceBits, position % kPieceBits, received / kCharacterBits);
        position += bits;
    }
    /// The ship type in words.
    static const char* decode_type(unsigned char type);

protected:
    explicit CAIS_Sentence(bool of_own_ship) : own_ship(of_own_ship) {}

private:
    /// Appends the characters up to the next comma, or all before `end`, behind which so many more can be read.
    static void AppendPayload(const char* at, const char* end, int readable_behind);
    /// The characters behind the first `before` bits of that part of the stream.
    static void ReadText(char* out, const std::uint64_t* stream, int before, int characters);
    /// The next `count` bits, at most kPieceBits, uppermost. What stands below them means nothing.
    static std::uint64_t NextBits(int& position, int count)
    {
        const std::uint64_t* const piece = bitstream + position / kPieceBits;
        const int before = position % kPieceBits;
        position += count;
        const std::uint64_t bits = piece[0] << before;
        return before + count <= kPieceBits ? bits : bits | piece[1] >> (kPieceBits - before);
    }
    void Unpack();

    static bool stream_of_own_ship; ///< the class of the sentence that the stream began with
    const bool own_ship;
};

/// Reports of other vessels.
class VDM : public CAIS_Sentence {
public:
    class Type;
    static Type type;
    VDM() : CAIS_Sentence(false) {}
};

/// Reports of the own vessel.
class VDO : public CAIS_Sentence {
public:
    class Type;
    static Type type;
    VDO() : CAIS_Sentence(true) {}
};

} // namespace CNEMA_AIS
