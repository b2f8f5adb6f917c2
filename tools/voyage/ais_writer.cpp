#include "tools/voyage/ais_writer.h"

#include "core/text.h"

#include <cmath>

namespace {

constexpr double kTenThousandths = 600000.0; ///< units of a coordinate in a degree
constexpr int kMostBitsInOne = 360;          ///< of one sentence
constexpr int kNoTurn = -128;

/// Latitude, longitude and motion in the order that messages 1 and 18 share.
void PutMotion(CAisBits& bits, const CAisMotion& motion)
{
    bits.Unsigned(static_cast<std::uint32_t>(std::lround(motion.speed * 10.0)), 10);
    bits.Unsigned(1, 1); // accurate
    bits.Signed(static_cast<std::int32_t>(std::lround(motion.lon * kTenThousandths)), 28);
    bits.Signed(static_cast<std::int32_t>(std::lround(motion.lat * kTenThousandths)), 27);
    bits.Unsigned(static_cast<std::uint32_t>(std::lround(motion.course * 10.0)) % 3600U, 12);
    bits.Unsigned(static_cast<std::uint32_t>(std::lround(motion.heading)) % 360U, 9);
    bits.Unsigned(static_cast<std::uint32_t>(motion.second), 6);
}

void PutDimensions(CAisBits& bits, const CAisShip& ship)
{
    bits.Unsigned(static_cast<std::uint32_t>(ship.to_bow), 9);
    bits.Unsigned(static_cast<std::uint32_t>(ship.to_stern), 9);
    bits.Unsigned(static_cast<std::uint32_t>(ship.to_port), 6);
    bits.Unsigned(static_cast<std::uint32_t>(ship.to_starboard), 6);
}

} // namespace

void CAisBits::Unsigned(std::uint32_t value, int width)
{
    for (int bit = width - 1; bit >= 0; --bit) bits.push_back(((value >> bit) & 1U) != 0);
}

void CAisBits::Text(const std::string& text, int characters)
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(characters); ++i) {
        const unsigned code = i < text.size() ? static_cast<unsigned char>(text[i]) : '@';
        Unsigned(code & 0x3FU, 6);
    }
}

std::string CAisBits::Payload() const
{
    std::string payload;
    for (std::size_t at = 0; at < bits.size(); at += 6) {
        unsigned six = 0;
        for (std::size_t i = 0; i < 6; ++i) six = six << 1 | (at + i < bits.size() && bits[at + i] ? 1U : 0U);
        payload += static_cast<char>(six < 40 ? six + '0' : six + '8');
    }
    return payload;
}

void WriteAis(CSentenceWriter& out, const CAisBits& message, int sequence, char channel)
{
    const std::string payload = message.Payload();
    if (message.Size() <= kMostBitsInOne) {
        out.Add(stringprintf("!AIVDM,1,1,,%c,%s,%d", channel, payload.c_str(), message.FillBits()));
        return;
    }
    constexpr std::size_t kFirst = kMostBitsInOne / 6;
    out.Add(stringprintf("!AIVDM,2,1,%d,%c,%s,0", sequence, channel, payload.substr(0, kFirst).c_str()));
    out.Add(
        stringprintf("!AIVDM,2,2,%d,%c,%s,%d", sequence, channel, payload.substr(kFirst).c_str(), message.FillBits()));
}

CAisBits PositionReportA(std::uint32_t mmsi, int status, const CAisMotion& motion)
{
    CAisBits bits;
    bits.Unsigned(1, 6);
    bits.Unsigned(0, 2);
    bits.Unsigned(mmsi, 30);
    bits.Unsigned(static_cast<std::uint32_t>(status), 4);
    bits.Signed(kNoTurn, 8);
    PutMotion(bits, motion);
    bits.Unsigned(0, 2 + 3 + 1);
    bits.Unsigned(0, 19);
    return bits;
}

CAisBits PositionReportB(std::uint32_t mmsi, const CAisMotion& motion)
{
    CAisBits bits;
    bits.Unsigned(18, 6);
    bits.Unsigned(0, 2);
    bits.Unsigned(mmsi, 30);
    bits.Unsigned(0, 8);
    PutMotion(bits, motion);
    bits.Unsigned(0, 2);
    bits.Unsigned(0b101110, 6); // carrier-sense unit with DSC, whole band, message 22
    bits.Unsigned(0, 1);
    bits.Unsigned(0, 20);
    return bits;
}

CAisBits StaticDataA(const CAisShip& ship)
{
    CAisBits bits;
    bits.Unsigned(5, 6);
    bits.Unsigned(0, 2);
    bits.Unsigned(ship.mmsi, 30);
    bits.Unsigned(0, 2);
    bits.Unsigned(ship.imo, 30);
    bits.Text(ship.callsign, 7);
    bits.Text(ship.name, 20);
    bits.Unsigned(static_cast<std::uint32_t>(ship.ship_type), 8);
    PutDimensions(bits, ship);
    bits.Unsigned(1, 4);             // fix by satellite
    bits.Unsigned(0, 4 + 5 + 5 + 6); // no time of arrival: month, day, hour, minute
    bits.Unsigned(static_cast<std::uint32_t>(std::lround(ship.draught * 10.0)), 8);
    bits.Text(ship.destination, 20);
    bits.Unsigned(0, 2);
    return bits;
}

CAisBits StaticDataB(const CAisShip& ship, bool part_b)
{
    CAisBits bits;
    bits.Unsigned(24, 6);
    bits.Unsigned(0, 2);
    bits.Unsigned(ship.mmsi, 30);
    bits.Unsigned(part_b ? 1 : 0, 2);
    if (!part_b) {
        bits.Text(ship.name, 20);
        bits.Unsigned(0, 8);
        return bits;
    }
    bits.Unsigned(static_cast<std::uint32_t>(ship.ship_type), 8);
    bits.Text({}, 7); // no maker
    bits.Text(ship.callsign, 7);
    PutDimensions(bits, ship);
    bits.Unsigned(0, 6);
    return bits;
}
