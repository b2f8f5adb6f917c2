#include "nmea/ais_sentences.h"

#include "core/text.h"
#include "core/word_bytes.h"
#include "nmea/nmea_sentence_type.h"

#include <array>
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

struct CTurn {
    float rate = 0.0F;
    bool is_valid = false;
};

/// By their raw values from kRawNoTurn on.
constexpr auto kTurns = [] {
    std::array<CTurn, 256> turns{};
    for (int raw = kRawNoTurn; raw <= 127; ++raw) {
        const double root = raw / kRotRoot;
        const auto rate = static_cast<float>(root * root);
        if (rate < kFastestTurn) turns[static_cast<std::size_t>(raw - kRawNoTurn)] = {raw < 0 ? -rate : rate, true};
    }
    return turns;
}();

/// Walks over a message and stores field behind field. A careful walk leaves out what was not received; the other one
/// is for a message that is as long as its layout, which shows when it has ended.
template <bool kCareful>
class CFields {
public:
    bool WereReceived() const { return position <= CAIS_Sentence::bit_count; }
    void Skip(int bits) { position += bits; }
    std::uint32_t Next(int bits, std::uint32_t unavailable)
    {
        return kCareful ? CAIS_Sentence::fetch_bits(position, bits, unavailable)
                        : CAIS_Sentence::read_bits(position, bits);
    }
    std::int32_t NextSigned(int bits, std::int32_t unavailable)
    {
        return kCareful ? CAIS_Sentence::fetch_bits_signed(position, bits, unavailable)
                        : CAIS_Sentence::read_bits_signed(position, bits);
    }
    /// Keeps the field as it is when its bits were not received.
    template <class Number>
    void Take(Number& field, int bits)
    {
        field = static_cast<Number>(Next(bits, static_cast<std::uint32_t>(field)));
    }
    template <std::size_t Room>
    void TakeText(char (&field)[Room], int characters)
    {
        CAIS_Sentence::fetch_string(field, position, characters * 6);
    }
    void TakeTenths(float& field, int bits, std::uint32_t unavailable)
    {
        field = static_cast<float>(Next(bits, unavailable) * 0.1);
    }
    void TakeSpeed(float& knots)
    {
        TakeTenths(knots, 10, kRawNoSpeed);
        if (knots > kFastest) knots = 0.0F;
    }
    void TakePlace(CPlace& place)
    {
        place.longitude = NextSigned(28, kRawNoLongitude) * kDegreesPerUnit;
        place.latitude = NextSigned(27, kRawNoLatitude) * kDegreesPerUnit;
    }
    void TakeTurn(CPositionReport& report)
    {
        const std::int32_t raw = NextSigned(8, kRawNoTurn);
        const CTurn& turn = kTurns[static_cast<std::size_t>(raw - kRawNoTurn)];
        report.rate_of_turn = turn.rate;
        report.rot_valid = turn.is_valid;
    }
    void TakeMotion(CMotion& motion)
    {
        TakeSpeed(motion.sog);
        Skip(1); // accuracy
        TakePlace(motion);
        TakeTenths(motion.cog, 12, kRawNoCourse);
        motion.heading = static_cast<float>(Next(9, kRawNoHeading));
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

template <class Fields>
void Read(Fields& fields, CPositionReport& report)
{
    fields.Take(report.nav_status, 4);
    fields.TakeTurn(report);
    fields.TakeMotion(report);
}

template <class Fields>
void Read(Fields& fields, CBaseStation& station)
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

template <class Fields>
void Read(Fields& fields, CStaticVoyageData& ship)
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

template <class Fields>
void Read(Fields& fields, CAircraft& aircraft)
{
    fields.Take(aircraft.altitude, 12);
    fields.Take(aircraft.speed, 10);
    fields.Skip(1); // accuracy
    fields.TakePlace(aircraft);
    fields.TakeTenths(aircraft.cog, 12, kRawNoCourse);
    fields.Take(aircraft.time_stamp, 6);
}

template <class Fields>
void Read(Fields& fields, CClassBPosition& ship)
{
    fields.Skip(8); // reserved
    fields.TakeMotion(ship);
}

template <class Fields>
void Read(Fields& fields, CClassBExtended& ship)
{
    fields.Skip(8); // reserved
    fields.TakeMotion(ship);
    fields.Skip(4); // reserved
    fields.TakeText(ship.name, 20);
    fields.Take(ship.ship_type, 8);
    fields.TakeDimensions(ship);
}

template <class Fields>
void Read(Fields& fields, CAidToNavigation& aid)
{
    fields.Take(aid.aid_type, 5);
    fields.TakeText(aid.name, 20);
    fields.Skip(1); // accuracy
    fields.TakePlace(aid);
    fields.Skip(9); // to the bow
    fields.Take(aid.dimension, 9);
}

template <class Fields>
void Read(Fields& fields, CStaticDataReport& report)
{
    fields.Take(report.part, 2);
    if (report.part == 0) fields.TakeText(report.name, 20);
    if (report.part != 1) return;
    fields.Take(report.ship_type, 8);
    fields.TakeText(report.vendor, 7);
    fields.TakeText(report.call_sign, 7);
    fields.TakeDimensions(report);
}

/// Of a message that ends too early.
template <class Body>
[[gnu::noinline]] void ReadReceived(Body& made)
{
    CFields<true> fields;
    made = Body();
    Read(fields, made);
}

template <class Body>
[[gnu::noinline]] Body& ReadInto(CMessageBody& body)
{
    CFields<false> fields;
    Body& made = body.emplace<Body>();
    Read(fields, made);
    if (!fields.WereReceived()) ReadReceived(made);
    return made;
}

/// What Init reads of a sentence.
struct CParts {
    int count = 0;
    int number = 0;
    char channel = 0;
    const char* payload = nullptr;     ///< up to the next comma
    const char* payload_end = nullptr; ///< when there is none
    int readable_behind = 0;           ///< characters that may be read there
};

/// Any sentence; the text is overwritten.
CParts SplitAny(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    CNMEASentence::SplitArgs(text, kFields, field);
    const char* const end = field[5] + std::strlen(field[5]);
    return {CNMEASentence::GetWhole(field[1]), CNMEASentence::GetWhole(field[2]), *field[4], field[5], end, 0};
}

/// A sentence as receivers send it, "!AIVDM,1,1,,A,payload,0*hh" or, of several, "!AIVDM,2,1,3,A,payload,0*hh":
/// without cutting fields off. False for all others. What it finds, SplitAny would find.
bool SplitUsual(const char* text, const char* star, CParts& parts)
{
    constexpr int kPayloadOfWhole = 14;
    constexpr int kPayloadOfPart = 15;
    constexpr unsigned kCommasOfWhole = 1U << 6 | 1U << 8 | 1U << 10 | 1U << 11 | 1U << 13;
    constexpr unsigned kCommasOfPart = 1U << 6 | 1U << 8 | 1U << 10 | 1U << 12 | 1U << 14;
    if (star - text < static_cast<std::ptrdiff_t>(sizeof(CSixteenBytes))) return false;
    const unsigned commas = HighestBits(CSixteenBytes(LoadSixteenBytes(text) == ','));
    const auto commas_before = [commas](int payload) { return commas & ((1U << payload) - 1); };
    const bool is_part = commas_before(kPayloadOfPart) == kCommasOfPart;
    const bool is_whole = commas_before(kPayloadOfWhole) == kCommasOfWhole;
    if ((!is_part && !is_whole) || !IsDigit(text[7]) || !IsDigit(text[9])) return false;
    parts.count = text[7] - '0';
    parts.number = text[9] - '0';
    parts.payload = text + (is_part ? kPayloadOfPart : kPayloadOfWhole);
    parts.channel = parts.payload[-2];
    parts.payload_end = star;
    parts.readable_behind = *star == '*' ? 2 : 1; // up to the NUL at the latest
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
    AppendPayload(parts.payload, parts.payload_end, parts.readable_behind);
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
