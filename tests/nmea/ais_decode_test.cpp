#include "nmea/ais_sentences.h"
#include "nmea/sentence_tools.h"
#include "support/allocation_counter.h"
#include "tools/voyage/ais_writer.h"

#include "core/text.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace CNEMA_AIS;

namespace {

constexpr std::uint32_t kShip = 211234560;
constexpr double kLat = 54.5;
constexpr double kLon = -10.25;

std::string Sentence(int count, int number, const std::string& payload)
{
    return stringprintf("!AIVDM,%d,%d,,B,%s,0*00", count, number, payload.c_str());
}

template <class Class>
bool Read(Class& sentence, std::string text)
{
    return sentence.Init(text.data());
}

/// The message in one sentence, of whatever length.
VDM& Decoded(const std::string& payload)
{
    static VDM sentence;
    EXPECT_TRUE(Read(sentence, Sentence(1, 1, payload)));
    return sentence;
}

template <class Body>
const Body& BodyOf(const std::string& payload)
{
    static const Body none;
    const auto* body = std::get_if<Body>(&Decoded(payload).body);
    EXPECT_NE(body, nullptr) << payload;
    return body != nullptr ? *body : none;
}

CAisBits Head(std::uint32_t type)
{
    CAisBits bits;
    bits.Unsigned(type, 6);
    bits.Unsigned(3, 2);
    bits.Unsigned(kShip, 30);
    return bits;
}

void PutPlace(CAisBits& bits)
{
    bits.Unsigned(1, 1);
    bits.Signed(static_cast<std::int32_t>(kLon * 600000), 28);
    bits.Signed(static_cast<std::int32_t>(kLat * 600000), 27);
}

void PutMotion(CAisBits& bits)
{
    bits.Unsigned(123, 10);
    PutPlace(bits);
    bits.Unsigned(2345, 12);
    bits.Unsigned(233, 9);
    bits.Unsigned(42, 6);
}

void PutDimensions(CAisBits& bits)
{
    bits.Unsigned(301, 9);
    bits.Unsigned(32, 9);
    bits.Unsigned(23, 6);
    bits.Unsigned(24, 6);
}

CAisBits ClassAReport(std::int32_t raw_turn, std::uint32_t raw_speed)
{
    CAisBits bits = Head(3);
    bits.Unsigned(5, 4);
    bits.Signed(raw_turn, 8);
    bits.Unsigned(raw_speed, 10);
    PutPlace(bits);
    bits.Unsigned(3600, 12);
    bits.Unsigned(511, 9);
    bits.Unsigned(60, 6);
    return bits;
}

CAisBits BaseStation(std::uint32_t type)
{
    CAisBits bits = Head(type);
    bits.Unsigned(2026, 14);
    bits.Unsigned(11, 4);
    bits.Unsigned(24, 5);
    bits.Unsigned(13, 5);
    bits.Unsigned(45, 6);
    bits.Unsigned(59, 6);
    PutPlace(bits);
    return bits;
}

CAisBits VoyageData()
{
    CAisBits bits = Head(5);
    bits.Unsigned(0, 2);
    bits.Unsigned(9074729, 30);
    bits.Text("DABC", 7);
    bits.Text("ANNA-MARIA 7", 20);
    bits.Unsigned(71, 8);
    PutDimensions(bits);
    bits.Unsigned(1, 4);
    bits.Unsigned(12, 4);
    bits.Unsigned(31, 5);
    bits.Unsigned(23, 5);
    bits.Unsigned(58, 6);
    bits.Unsigned(255, 8);
    bits.Text("SOUTHAMPTON GB SOU X", 20);
    bits.Unsigned(0, 2);
    return bits;
}

CAisBits Aircraft()
{
    CAisBits bits = Head(9);
    bits.Unsigned(1500, 12);
    bits.Unsigned(140, 10);
    PutPlace(bits);
    bits.Unsigned(901, 12);
    bits.Unsigned(7, 6);
    return bits;
}

CAisBits ClassBPosition()
{
    CAisBits bits = Head(18);
    bits.Unsigned(0xFF, 8);
    PutMotion(bits);
    return bits;
}

CAisBits ClassBExtended()
{
    CAisBits bits = Head(19);
    bits.Unsigned(0xFF, 8);
    PutMotion(bits);
    bits.Unsigned(15, 4);
    bits.Text("LITTLE BOAT", 20);
    bits.Unsigned(36, 8);
    PutDimensions(bits);
    return bits;
}

CAisBits Buoy()
{
    CAisBits bits = Head(21);
    bits.Unsigned(14, 5);
    bits.Text("NEEDLES FAIRWAY", 20);
    PutPlace(bits);
    bits.Unsigned(511, 9);
    bits.Unsigned(12, 9);
    return bits;
}

CAisBits StaticReport(std::uint32_t part)
{
    CAisBits bits = Head(24);
    bits.Unsigned(part, 2);
    if (part == 0) {
        bits.Text("LITTLE BOAT", 20);
        return bits;
    }
    bits.Unsigned(37, 8);
    bits.Text("SRT", 7);
    bits.Text("DD1234", 7);
    PutDimensions(bits);
    return bits;
}

void ExpectPlace(const CPlace& place)
{
    EXPECT_NEAR(place.latitude, kLat, 1e-9);
    EXPECT_NEAR(place.longitude, kLon, 1e-9);
}

void ExpectMotion(const CMotion& motion)
{
    ExpectPlace(motion);
    EXPECT_EQ(motion.sog, 12.3F);
    EXPECT_EQ(motion.cog, 234.5F);
    EXPECT_EQ(motion.heading, 233.0F);
    EXPECT_EQ(motion.time_stamp, 42);
}

void ExpectDimensions(const CDimensions& dimensions)
{
    EXPECT_EQ(dimensions.to_bow, 301);
    EXPECT_EQ(dimensions.to_stern, 32);
    EXPECT_EQ(dimensions.to_port, 23);
    EXPECT_EQ(dimensions.to_starboard, 24);
}

} // namespace

TEST(AisDecode, AReportFromTheAir)
{
    const auto& report = BodyOf<CPositionReport>("13u?etPv2;0n:dDPwUM1U1Cb069D");
    const VDM& sentence = Decoded("13u?etPv2;0n:dDPwUM1U1Cb069D");
    EXPECT_EQ(sentence.message_type, 1);
    EXPECT_EQ(sentence.mmsi, 265547250U);
    EXPECT_EQ(sentence.channel, 'B');
    EXPECT_NEAR(report.latitude, 57.660353, 1e-6);
    EXPECT_NEAR(report.longitude, 11.832977, 1e-6);
    EXPECT_EQ(report.nav_status, 0);
    EXPECT_EQ(report.sog, 13.9F);
    EXPECT_EQ(report.cog, 40.4F);
    EXPECT_EQ(report.heading, 41.0F);
    EXPECT_EQ(report.time_stamp, 53);
    EXPECT_NEAR(report.rate_of_turn, -2.857F, 1e-3F);
}

TEST(AisDecode, EveryLayout)
{
    for (const std::uint32_t type : {4U, 11U}) {
        const auto& station = BodyOf<CBaseStation>(BaseStation(type).Payload());
        ExpectPlace(station);
        EXPECT_EQ(station.year * 10000 + station.month * 100 + station.day, 20261124);
        EXPECT_EQ(station.hour * 10000 + station.minute * 100 + station.second, 134559);
    }

    const auto& ship = BodyOf<CStaticVoyageData>(VoyageData().Payload());
    EXPECT_EQ(ship.imo, 9074729U);
    EXPECT_STREQ(ship.call_sign, "DABC");
    EXPECT_STREQ(ship.name, "ANNA-MARIA 7");
    EXPECT_EQ(ship.ship_type, 71);
    ExpectDimensions(ship);
    EXPECT_EQ(ship.eta_month * 100 + ship.eta_day, 1231);
    EXPECT_EQ(ship.eta_hour * 100 + ship.eta_minute, 2358);
    EXPECT_EQ(ship.draught, 25.5F);
    EXPECT_STREQ(ship.destination, "SOUTHAMPTON GB SOU X");
    EXPECT_STREQ(Decoded(VoyageData().Payload()).description, "Cargo ship:Haz A");

    const auto& aircraft = BodyOf<CAircraft>(Aircraft().Payload());
    ExpectPlace(aircraft);
    EXPECT_EQ(aircraft.altitude, 1500);
    EXPECT_EQ(aircraft.speed, 140.0F);
    EXPECT_EQ(aircraft.cog, 90.1F);
    EXPECT_EQ(aircraft.time_stamp, 7);

    ExpectMotion(BodyOf<CClassBPosition>(ClassBPosition().Payload()));
    const auto& extended = BodyOf<CClassBExtended>(ClassBExtended().Payload());
    ExpectMotion(extended);
    ExpectDimensions(extended);
    EXPECT_STREQ(extended.name, "LITTLE BOAT");
    EXPECT_STREQ(Decoded(ClassBExtended().Payload()).description, "Sailing");

    const auto& buoy = BodyOf<CAidToNavigation>(Buoy().Payload());
    ExpectPlace(buoy);
    EXPECT_EQ(buoy.aid_type, 14);
    EXPECT_EQ(buoy.dimension, 12);
    EXPECT_STREQ(buoy.name, "NEEDLES FAIRWAY");

    EXPECT_STREQ(BodyOf<CStaticDataReport>(StaticReport(0).Payload()).name, "LITTLE BOAT");
    const auto& report = BodyOf<CStaticDataReport>(StaticReport(1).Payload());
    EXPECT_STREQ(report.name, "");
    EXPECT_STREQ(report.vendor, "SRT");
    EXPECT_STREQ(report.call_sign, "DD1234");
    ExpectDimensions(report);
    EXPECT_STREQ(Decoded(StaticReport(1).Payload()).description, "Pleasure craft");
    EXPECT_EQ(BodyOf<CStaticDataReport>(StaticReport(2).Payload()).ship_type, 0);
}

TEST(AisDecode, ValuesThatAreNotAvailable)
{
    struct CCase {
        std::int32_t raw_turn;
        float turn;
        bool turn_valid;
        std::uint32_t raw_speed;
        float knots;
    };
    const CCase cases[] = {
        {-128, 0.0F, false, 1023, 0.0F},   {127, 0.0F, false, 1022, 0.0F}, {-127, 0.0F, false, 1001, 0.0F},
        {126, 708.7F, true, 1000, 100.0F}, {-126, -708.7F, true, 1, 0.1F}, {0, 0.0F, true, 0, 0.0F},
    };
    for (const CCase& c : cases) {
        const auto& report = BodyOf<CPositionReport>(ClassAReport(c.raw_turn, c.raw_speed).Payload());
        EXPECT_NEAR(report.rate_of_turn, c.turn, 0.05F) << c.raw_turn;
        EXPECT_EQ(report.rot_valid, c.turn_valid) << c.raw_turn;
        EXPECT_EQ(report.sog, c.knots) << c.raw_speed;
        EXPECT_EQ(report.cog, 360.0F);
        EXPECT_EQ(report.heading, 511.0F);
    }
}

TEST(AisDecode, AShortMessageIsNowhere)
{
    // Cut behind any character, a place is either the one sent or none, and never half of it.
    const CAisBits messages[] = {ClassAReport(0, 0), BaseStation(4),   Aircraft(),
                                 ClassBPosition(),   ClassBExtended(), Buoy()};
    for (const CAisBits& message : messages) {
        const std::string whole = message.Payload();
        int without = 0;
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const VDM& sentence = Decoded(whole.substr(0, length));
            EXPECT_EQ(sentence.message_type != 0, length * 6 >= 38) << length;
            std::visit(
                [&]<class Body>(const Body& body) {
                    if constexpr (std::is_base_of_v<CPlace, Body>) {
                        const bool placed = std::abs(body.latitude - kLat) < 1e-9;
                        EXPECT_NEAR(body.latitude, placed ? kLat : kNoLatitude, 1e-9) << whole << " cut at " << length;
                        EXPECT_TRUE(!placed || std::abs(body.longitude - kLon) < 1e-9) << whole << " cut at " << length;
                        without += placed ? 0 : 1;
                    }
                },
                sentence.body);
        }
        EXPECT_GT(without, 5);
    }
    EXPECT_NEAR(BodyOf<CClassBPosition>(ClassBPosition().Payload().substr(0, 14)).longitude, kNoLongitude, 1e-9);
    EXPECT_EQ(BodyOf<CClassBPosition>(ClassBPosition().Payload().substr(0, 8)).heading, kNoHeading);
    EXPECT_EQ(BodyOf<CAircraft>(Aircraft().Payload().substr(0, 7)).altitude, 4095);
    EXPECT_EQ(BodyOf<CStaticVoyageData>(VoyageData().Payload().substr(0, 45)).eta_hour, 24);
    EXPECT_STREQ(BodyOf<CStaticVoyageData>(VoyageData().Payload().substr(0, 20)).name, "A");
}

TEST(AisDecode, Texts)
{
    struct CCase {
        const char* sent;
        const char* read;
    };
    const CCase cases[] = {
        {"", ""},
        {"                    ", ""},
        {"A@B C@ @ ", "A@B C"},
        {"ABCDEFGHIJKLMNOPQRST", "ABCDEFGHIJKLMNOPQRST"},
        {"[\\]^_!\"#$%&'()*+,-./", "[\\]^_!\"#$%&'()*+,-./"},
        {"0123456789:;<=>?UVWX", "0123456789:;<=>?UVWX"},
    };
    for (const CCase& c : cases) {
        CAisBits bits = Head(24);
        bits.Unsigned(0, 2);
        bits.Text(c.sent, 20);
        EXPECT_STREQ(BodyOf<CStaticDataReport>(bits.Payload()).name, c.read);
    }
}

TEST(AisDecode, ShipTypes)
{
    struct CCase {
        unsigned char type;
        const char* text;
    };
    const CCase cases[] = {{0, "Unknown"},
                           {4, "Unknown:Haz D"},
                           {15, "1"},
                           {29, "WIG"},
                           {32, "Big Towing"},
                           {39, "Type 39"},
                           {42, "HSC:Haz B"},
                           {51, "Search and rescue"},
                           {59, "Type 59"},
                           {65, "Passenger ship"},
                           {84, "Tanker:Haz D"},
                           {99, "Ship"},
                           {100, "Type 100"},
                           {255, "Type 255"}};
    for (const CCase& c : cases) EXPECT_STREQ(CAIS_Sentence::decode_type(c.type), c.text);
}

TEST(AisDecode, SequencesOfSentences)
{
    const std::string whole = VoyageData().Payload();
    const std::string first = whole.substr(0, 30);
    const std::string second = whole.substr(30);
    VDM vdm;
    VDO vdo;
    ASSERT_TRUE(Read(vdm, Sentence(2, 1, first)));
    EXPECT_EQ(vdm.message_type, 0);
    EXPECT_FALSE(Read(vdm, Sentence(2, 3, second))) << "a number is missing";
    ASSERT_TRUE(Read(vdm, Sentence(2, 2, second))) << "the partial message stays";
    EXPECT_EQ(vdm.message_type, 5);
    EXPECT_STREQ(std::get<CStaticVoyageData>(vdm.body).destination, "SOUTHAMPTON GB SOU X");

    EXPECT_FALSE(Read(vdm, Sentence(2, 2, second))) << "the first was lost";
    ASSERT_TRUE(Read(vdm, Sentence(1, 1, ClassBPosition().Payload())));
    EXPECT_EQ(vdm.message_type, 18);
    EXPECT_EQ(CAIS_Sentence::bit_count, 144) << "a first sentence starts clean";

    EXPECT_TRUE(Read(vdo, Sentence(2, 1, first)));
    EXPECT_FALSE(Read(vdm, Sentence(2, 2, second))) << "of the own ship";
    EXPECT_TRUE(Read(vdm, Sentence(2, 1, first)));
    EXPECT_FALSE(Read(vdo, Sentence(2, 2, second))) << "not of the own ship";

    for (const char* text : {"!AIVDM*00", "!AIVDM,*00", "!AIVDM", "!AIVDM,,,,,,*00", "!AIVDM,1,1*00",
                             "!AIVDM,0,0,,A,,*00", "!AIVDM,99999999999,-1,,A,1,0*00"}) {
        vdm.message_type = 1;
        EXPECT_TRUE(!Read(vdm, text) || vdm.message_type == 0) << text;
    }
}

TEST(AisDecode, HeadsAndTailsOfAnyShape)
{
    const std::string payload = ClassBPosition().Payload();
    for (const char* format : {"!AIVDM,1,1,,B,%s,0*00", "!AIVDM,1,1,7,B,%s,0*00", "!AIVDM,01,1,,B,%s,0*00",
                               "!AIVDM,+1,001,,B,%s,0*00", "!AIVDM,1,1,12345678,B,%s,0*00", "!AIVDM,1,1,,Bc,%s,0*00",
                               "!AIVDM,1,1,,B,%s*00", "!AIVDM,1,1,,B,%s", "!AIVDM,1,1,,B,%s,0,1,2*00"}) {
        VDM vdm;
        ASSERT_TRUE(Read(vdm, stringprintf(format, payload.c_str()))) << format;
        EXPECT_EQ(vdm.message_type, 18) << format;
        EXPECT_EQ(vdm.channel, 'B') << format;
        EXPECT_EQ(CAIS_Sentence::bit_count, static_cast<int>(6 * payload.size())) << format;
    }
}

TEST(AisDecode, TheStreamIsTheCharactersSixBitsEach)
{
    // Against the plain way: a character at a time, a bit at a time.
    std::mt19937 random(1);
    VDM sentence;
    for (int round = 0; round < 300; ++round) {
        std::vector<bool> bits;
        const int sentences = 1 + round % 4;
        for (int number = 1; number <= sentences; ++number) {
            std::string payload(random() % 90, ' ');
            for (char& c : payload) {
                do c = static_cast<char>(round % 2 == 0 ? 33 + random() % 94 : 1 + random() % 255);
                while (c == ',' || c == '*');
                const int six = CAIS_Sentence::decode_sixbit(static_cast<unsigned char>(c));
                for (int bit = 5; bit >= 0 && bits.size() < 996; --bit) bits.push_back((six >> bit & 1) != 0);
            }
            ASSERT_TRUE(Read(sentence, Sentence(sentences, number, payload)));
        }
        ASSERT_EQ(CAIS_Sentence::bit_count, static_cast<int>(bits.size()));
        for (int field = 0; field < 50 && bits.size() > 60; ++field) {
            const int count = 1 + static_cast<int>(random() % 30);
            const int start = static_cast<int>(random() % bits.size());
            const bool received = start + count <= static_cast<int>(bits.size());
            std::uint32_t expected = 0;
            for (int i = start; received && i < start + count; ++i)
                expected = expected << 1 | (bits[static_cast<std::size_t>(i)] ? 1U : 0U);
            int position = start;
            ASSERT_EQ(CAIS_Sentence::fetch_bits(position, count, 77), received ? expected : 77U);
            ASSERT_EQ(position, start + count);
            position = start;
            const auto value = CAIS_Sentence::fetch_bits_signed(position, count, -7);
            ASSERT_EQ(value, received ? static_cast<std::int32_t>(expected << (32 - count)) >> (32 - count) : -7);
        }
    }
}

TEST(AisDecode, CharactersAppendedOneByOne)
{
    VDM sentence;
    ASSERT_TRUE(Read(sentence, Sentence(2, 1, "")));
    for (int i = 0; i < 200; ++i) CAIS_Sentence::append_sixbits(i);
    EXPECT_EQ(CAIS_Sentence::bit_count, 996);
    for (int i = 0, position = 0; i < 166; ++i) ASSERT_EQ(CAIS_Sentence::fetch_bits(position, 6), i % 64U);
}

TEST(AisDecode, AllocatesNothing)
{
    CSentenceWriter log;
    for (const CAisBits& message : {ClassAReport(1, 2), VoyageData(), ClassBExtended(), StaticReport(1)})
        WriteAis(log, message, 1, 'A');
    std::vector<std::string> lines;
    break_string_args(log.Text(), '\n', lines);
    int complete = 0;
    CHearing<VDM> hearing([&](VDM& message) { complete += message.message_type != 0 ? 1 : 0; });
    std::vector<char> buffer(200);
    const auto dispatch_all = [&] {
        for (const std::string& line : lines) {
            std::memcpy(buffer.data(), line.c_str(), line.size() + 1);
            CNMEASentence::DispatchSentence(buffer.data(), nullptr);
        }
    };
    dispatch_all();
    ASSERT_EQ(complete, 4);
    const CAllocationCounter counter;
    dispatch_all();
    EXPECT_EQ(counter.Count(), 0U);
    EXPECT_EQ(complete, 8);
}
