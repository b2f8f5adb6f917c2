#pragma once

#include "nmea/ais_messages.h"
#include "nmea/nmea_sentence.h"

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
    static constexpr int kMostBits = 996;  ///< of a message; what follows is dropped
    static constexpr int kPieceBits = 48;  ///< the lower ones of a word
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
        const int from = position;
        position += count;
        if (position > bit_count) return unavailable;
        return static_cast<std::uint32_t>(StreamFrom(from) >> (64 - count));
    }
    /// The same in two's complement.
    static std::int32_t fetch_bits_signed(int& position, int count, std::int32_t unavailable = 0)
    {
        const int from = position;
        position += count;
        if (position > bit_count) return unavailable;
        return static_cast<std::int32_t>(static_cast<std::int64_t>(StreamFrom(from)) >> (64 - count));
    }
    /// The characters received of `bits` bits of text, without "@" and spaces at its end. `out` has TextRoom.
    static void fetch_string(char* out, int& position, int bits);
    /// The ship type in words.
    static const char* decode_type(unsigned char type);

protected:
    explicit CAIS_Sentence(bool of_own_ship) : own_ship(of_own_ship) {}

private:
    static void AppendPayload(const char* payload, std::size_t length);
    /// The stream from that bit on, the first one uppermost; 49 bits at least.
    static std::uint64_t StreamFrom(int position)
    {
        constexpr int kUnused = 64 - kPieceBits;
        const std::uint64_t* const piece = bitstream + position / kPieceBits;
        const int before = position % kPieceBits;
        return piece[0] << (kUnused + before) | piece[1] << kUnused >> (kPieceBits - before);
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
