#pragma once

#include "tools/voyage/sentence_writer.h"

#include <cstdint>
#include <string>
#include <vector>

/// Collects the bits of an AIS message, as Recommendation ITU-R M.1371 lays them out.
class CAisBits {
public:
    void Unsigned(std::uint32_t value, int width);
    void Signed(std::int32_t value, int width) { Unsigned(static_cast<std::uint32_t>(value), width); }
    /// Six-bit text, upper case, filled up with "@" to `characters`.
    void Text(const std::string& text, int characters);
    int Size() const { return static_cast<int>(bits.size()); }
    /// The armoured payload, six bits a character, filled up with zeroes.
    std::string Payload() const;
    int FillBits() const { return (6 - Size() % 6) % 6; }

private:
    std::vector<bool> bits;
};

/// Writes the message as one "!AIVDM" sentence, or as two when it does not fit into one; `sequence` (0 to 9) ties the
/// two together.
void WriteAis(CSentenceWriter& out, const CAisBits& message, int sequence, char channel);

/// What a ship tells about its way.
struct CAisMotion {
    double lat = 0.0;     ///< degrees
    double lon = 0.0;     ///< degrees
    double speed = 0.0;   ///< knots
    double course = 0.0;  ///< degrees true
    double heading = 0.0; ///< degrees true
    int second = 0;       ///< of the minute, UTC
};

/// Message 1: position report of a class A ship; `status` 0 is under way using engine, 1 at anchor.
CAisBits PositionReportA(std::uint32_t mmsi, int status, const CAisMotion& motion);
/// Message 18: position report of a class B ship.
CAisBits PositionReportB(std::uint32_t mmsi, const CAisMotion& motion);

/// What a ship tells about itself. Lengths are metres from the antenna.
struct CAisShip {
    std::uint32_t mmsi = 0;
    std::uint32_t imo = 0;
    std::string callsign;
    std::string name;
    int ship_type = 0;
    int to_bow = 0;
    int to_stern = 0;
    int to_port = 0;
    int to_starboard = 0;
    double draught = 0.0; ///< metres
    std::string destination;
};

/// Message 5: static and voyage data of a class A ship.
CAisBits StaticDataA(const CAisShip& ship);
/// Message 24, parts A and B: static data of a class B ship.
CAisBits StaticDataB(const CAisShip& ship, bool part_b);
