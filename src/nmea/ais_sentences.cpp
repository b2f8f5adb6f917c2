#include "nmea/ais_sentences.h"

#include "core/text.h"
#include "core/word_bytes.h"
#include "nmea/nmea_sentence_type.h"

#include <array>
#include <bit>
#include <cstring>

namespace CNEMA_AIS {

class VDM::Type : public CNMEASentenceTypeOf<VDM> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class VDO::Type : public CNMEASentenceTypeOf<VDO> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};

VDM::Type VDM::type("VDM");
VDO::Type VDO::type("VDO");

bool CAIS_Sentence::stream_of_own_ship = false;

namespace {

constexpr double kDegreesPerUnit = 1.6666666666666667e-06; ///< of latitude and longitude: a ten-thousandth of a minute
constexpr float kFastest = 100.0F;                         ///< knots
constexpr double kRotRoot = 4.733;     ///< the rate is sent as this times its square root, degrees a minute
constexpr float kFastestTurn = 720.0F; ///< degrees a minute

// What the fields hold, in their raw units, when they are not available.
constexpr std::uint32_t kRawNoSpeed = 1023;
constexpr std::uint32_t kRawNoCourse = 3600;
constexpr std::uint32_t kRawNoHeading = 511;
constexpr std::int32_t kRawNoTurn = -128;
constexpr std::int32_t kRawNoLatitude = 91 * 600000;
constexpr std::int32_t kRawNoLongitude = 181 * 600000;

constexpr float kNoTurn = 999.0F;
/// The rates by their raw values from kRawNoTurn on; kNoTurn for those that are none.
constexpr auto kTurns = [] {
    std::array<float, 256> turns{};
    for (int raw = kRawNoTurn; raw <= 127; ++raw) {
        const double root = raw / kRotRoot;
        const auto rate = static_cast<float>(root * root);
        turns[static_cast<std::size_t>(raw - kRawNoTurn)] = rate >= kFastestTurn ? kNoTurn : raw < 0 ? -rate : rate;
    }
    return turns;
}();

/// Walks over a message and stores field behind field.
class CFields {
public:
    void Skip(int bits) { position += bits; }
    /// Keeps the field as it is when its bits were not received.
    template <class Number>
    void Take(Number& field, int bits)
    {
        field = static_cast<Number>(CAIS_Sentence::fetch_bits(position, bits, static_cast<std::uint32_t>(field)));
    }
    template <std::size_t Room>
    void TakeText(char (&field)[Room], int characters)
    {
        CAIS_Sentence::fetch_string(field, position, characters * 6);
    }
    void TakeTenths(float& field, int bits, std::uint32_t unavailable)
    {
        field = static_cast<float>(CAIS_Sentence::fetch_bits(position, bits, unavailable) * 0.1);
    }
    void TakeSpeed(float& knots)
    {
        TakeTenths(knots, 10, kRawNoSpeed);
        if (knots > kFastest) knots = 0.0F;
    }
    void TakePlace(CPlace& place)
    {
        place.longitude = CAIS_Sentence::fetch_bits_signed(position, 28, kRawNoLongitude) * kDegreesPerUnit;
        place.latitude = CAIS_Sentence::fetch_bits_signed(position, 27, kRawNoLatitude) * kDegreesPerUnit;
    }
    void TakeTurn(CPositionReport& report)
    {
        const std::int32_t raw = CAIS_Sentence::fetch_bits_signed(position, 8, kRawNoTurn);
        report.rate_of_turn = kTurns[static_cast<std::size_t>(raw - kRawNoTurn)];
        report.rot_valid = report.rate_of_turn != kNoTurn;
        if (!report.rot_valid) report.rate_of_turn = 0.0F;
    }
    void TakeMotion(CMotion& motion)
    {
        TakeSpeed(motion.sog);
        Skip(1); // accuracy
        TakePlace(motion);
        TakeTenths(motion.cog, 12, kRawNoCourse);
        motion.heading = static_cast<float>(CAIS_Sentence::fetch_bits(position, 9, kRawNoHeading));
        Take(motion.time_stamp, 6);
    }
    void TakeDimensions(CDimensions& dimensions)
    {
        Take(dimensions.to_bow, 9);
        Take(dimensions.to_stern, 9);
        Take(dimensions.to_port, 6);
        Take(dimensions.to_starboard, 6);
    }

private:
    int position = 6 + 2 + 30; // behind type, repeat indicator and MMSI
};

void Read(CFields& fields, CPositionReport& report)
{
    fields.Take(report.nav_status, 4);
    fields.TakeTurn(report);
    fields.TakeMotion(report);
}

void Read(CFields& fields, CBaseStation& station)
{
    fields.Take(station.year, 14);
    fields.Take(station.month, 4);
    fields.Take(station.day, 5);
    fields.Take(station.hour, 5);
    fields.Take(station.minute, 6);
    fields.Take(station.second, 6);
    fields.Skip(1); // accuracy
    fields.TakePlace(station);
}

void Read(CFields& fields, CStaticVoyageData& ship)
{
    fields.Skip(2); // version
    fields.Take(ship.imo, 30);
    fields.TakeText(ship.call_sign, 7);
    fields.TakeText(ship.name, 20);
    fields.Take(ship.ship_type, 8);
    fields.TakeDimensions(ship);
    fields.Skip(4); // kind of receiver
    fields.Take(ship.eta_month, 4);
    fields.Take(ship.eta_day, 5);
    fields.Take(ship.eta_hour, 5);
    fields.Take(ship.eta_minute, 6);
    fields.TakeTenths(ship.draught, 8, 0);
    fields.TakeText(ship.destination, 20);
}

void Read(CFields& fields, CAircraft& aircraft)
{
    fields.Take(aircraft.altitude, 12);
    fields.Take(aircraft.speed, 10);
    fields.Skip(1); // accuracy
    fields.TakePlace(aircraft);
    fields.TakeTenths(aircraft.cog, 12, kRawNoCourse);
    fields.Take(aircraft.time_stamp, 6);
}

void Read(CFields& fields, CClassBPosition& ship)
{
    fields.Skip(8); // reserved
    fields.TakeMotion(ship);
}

void Read(CFields& fields, CClassBExtended& ship)
{
    fields.Skip(8); // reserved
    fields.TakeMotion(ship);
    fields.Skip(4); // reserved
    fields.TakeText(ship.name, 20);
    fields.Take(ship.ship_type, 8);
    fields.TakeDimensions(ship);
}

void Read(CFields& fields, CAidToNavigation& aid)
{
    fields.Take(aid.aid_type, 5);
    fields.TakeText(aid.name, 20);
    fields.Skip(1); // accuracy
    fields.TakePlace(aid);
    fields.Skip(9); // to the bow
    fields.Take(aid.dimension, 9);
}

void Read(CFields& fields, CStaticDataReport& report)
{
    fields.Take(report.part, 2);
    if (report.part == 0) fields.TakeText(report.name, 20);
    if (report.part != 1) return;
    fields.Take(report.ship_type, 8);
    fields.TakeText(report.vendor, 7);
    fields.TakeText(report.call_sign, 7);
    fields.TakeDimensions(report);
}

template <class Body>
Body& ReadInto(CMessageBody& body)
{
    CFields fields;
    Body& made = body.emplace<Body>();
    Read(fields, made);
    return made;
}

/// What Init reads of a sentence.
struct CParts {
    int count = 0;
    int number = 0;
    char channel = 0;
    const char* payload = nullptr;
    std::size_t payload_length = 0;
};

/// The length of a field from where the next one begins, which is behind a NUL or, when there is no next one, at it.
std::size_t LengthBefore(const char* next, const char* field)
{
    const auto length = static_cast<std::size_t>(next - field);
    return length > 0 && next[-1] == 0 ? length - 1 : length;
}

/// Any sentence; the text is overwritten.
CParts SplitAny(char* text)
{
    constexpr int kFields = 7; // the last one only tells where the payload before it ends
    char* field[kFields];
    CNMEASentence::SplitArgs(text, kFields, field);
    return {CNMEASentence::GetWhole(field[1]), CNMEASentence::GetWhole(field[2]), *field[4], field[5],
            LengthBefore(field[6], field[5])};
}

/// A sentence as receivers send it, "!AIVDM,1,1,,A,payload,0*hh", with a short head and numbers of one digit: without
/// cutting fields off. False for all others. What it finds, SplitAny would find.
bool SplitUsual(const char* text, const char* star, CParts& parts)
{
    constexpr std::ptrdiff_t kHead = sizeof(CSixteenBytes); // in which all fields before the payload end
    if (star - text < kHead) return false;
    unsigned commas = HighestBits(CSixteenBytes(LoadSixteenBytes(text) == ','));
    int comma[5];
    for (int& at : comma) {
        if (commas == 0) return false;
        at = std::countr_zero(commas);
        commas &= commas - 1;
    }
    const char* const count = text + comma[0] + 1;
    const char* const number = text + comma[1] + 1;
    if (comma[1] - comma[0] != 2 || comma[2] - comma[1] != 2 || !IsDigit(*count) || !IsDigit(*number)) return false;
    parts.count = *count - '0';
    parts.number = *number - '0';
    parts.channel = comma[4] - comma[3] > 1 ? text[comma[3] + 1] : '\0';
    parts.payload = text + comma[4] + 1;
    const auto room = static_cast<std::size_t>(star - parts.payload);
    const void* const end = std::memchr(parts.payload, ',', room);
    parts.payload_length =
        end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - parts.payload) : room;
    return true;
}

} // namespace

bool CAIS_Sentence::Init(char* text)
{
    CParts parts;
    if (!SplitUsual(text, EndOfFields(text), parts)) parts = SplitAny(text);
    if (parts.number == 1) {
        bit_count = 0; // what stands in the stream is not received any more
        stream_of_own_ship = own_ship;
    } else if (parts.number != last_sentence_number + 1) {
        return false;
    }
    last_sentence_number = parts.number;
    channel = parts.channel;
    AppendPayload(parts.payload, parts.payload_length);
    message_type = 0;
    mmsi = 0;
    description = "";
    body.emplace<std::monostate>();
    if (parts.number != parts.count) return true;
    if (stream_of_own_ship != own_ship) return false;
    Unpack();
    return true;
}

void CAIS_Sentence::Unpack()
{
    int position = 0;
    const std::uint32_t received_type = fetch_bits(position, 6);
    position += 2; // repeat indicator
    mmsi = fetch_bits(position, 30);
    if (position > bit_count) return; // of nobody
    message_type = static_cast<std::uint8_t>(received_type);
    switch (message_type) {
    case 1:
    case 2:
    case 3:
        ReadInto<CPositionReport>(body);
        break;
    case 4:
    case 11:
        ReadInto<CBaseStation>(body);
        break;
    case 5:
        description = decode_type(ReadInto<CStaticVoyageData>(body).ship_type);
        break;
    case 9:
        ReadInto<CAircraft>(body);
        break;
    case 18:
        ReadInto<CClassBPosition>(body);
        break;
    case 19:
        description = decode_type(ReadInto<CClassBExtended>(body).ship_type);
        break;
    case 21:
        ReadInto<CAidToNavigation>(body);
        break;
    case 24:
        if (const auto& report = ReadInto<CStaticDataReport>(body); report.part == 1)
            description = decode_type(report.ship_type);
        break;
    default:
        break;
    }
}

} // namespace CNEMA_AIS
