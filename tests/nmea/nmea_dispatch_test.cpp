#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"
#include "nmea/mixed_sentences.h"
#include "nmea/nmea_sentence_type.h"
#include "nmea/sentence_tools.h"
#include "support/allocation_counter.h"

#include <algorithm>
#include <optional>
#include <random>

#include <gtest/gtest.h>

using namespace CNMEA_GPS;
using namespace CNMEA_Instruments;

namespace {

/// A test's own class: its identifier is not three letters behind a talker.
class CProprietary : public CNMEASentence {
public:
    bool Init(char* text) override
    {
        text[1] = 0;
        return accept;
    }
    static inline bool accept = true;
};

} // namespace

TEST(Dispatch, FramingAndChecksum)
{
    CHearing<MTW> water;
    EXPECT_NE(0, DispatchBody("$IIMTW,11.5,C"));
    EXPECT_NE(0, Dispatch("noise \x01" + WithChecksum("$IIMTW,11.5,C") + " and more"));
    EXPECT_NE(0, DispatchBody("!WIMTW,11.5,C"));
    EXPECT_EQ(water.count, 3);
    EXPECT_EQ(0, Dispatch("IIMTW,11.5,C*32"));
    EXPECT_EQ(0, Dispatch("$IIMTW,11.5,C"));
    EXPECT_EQ(0, Dispatch("$IIMTW,11.5,C*00"));
    EXPECT_EQ(0, Dispatch("! " + WithChecksum("$IIMTW,11.5,C")));
    EXPECT_EQ(0, Dispatch(""));
    EXPECT_EQ(water.count, 3);
}

TEST(Dispatch, ALineOfGivenLengthIsReadNoFurtherAndIsAlteredForListenersOnly)
{
    const auto dispatch = [](const std::string& line, std::size_t room) {
        const auto tight = std::make_unique<char[]>(line.size() + room);
        std::memcpy(tight.get(), line.data(), line.size());
        const int result = CNMEASentence::DispatchSentence(tight.get(), line.size(), nullptr);
        EXPECT_TRUE(room != 0 || std::string_view(tight.get(), line.size()) == line) << line;
        return result;
    };
    for (const char* text : {"$IIMTW,11.5,C", "~$IIMTW,a long field that nobody expects", "$", "$A", "$IIMT", ""}) {
        const std::string line = *text != 0 ? WithChecksum(text) : "";
        EXPECT_EQ(0, dispatch(line, 0)) << line;
        for (std::size_t cut = 1; cut <= std::min<std::size_t>(4, line.size()); ++cut)
            EXPECT_EQ(0, dispatch(line.substr(0, line.size() - cut), 0)) << line;
    }
    CHearing<MTW> water;
    EXPECT_NE(0, dispatch(WithChecksum("$IIMTW,11.5,C"), 1));
    EXPECT_EQ(0, dispatch(std::string("$IIMTW,11\0,C*", 14) + "1B", 1)) << "a NUL in it";
    EXPECT_EQ(water.count, 1);
}

TEST(Dispatch, TypesAreFoundByTheirPrefix)
{
    struct CCase {
        const char* text;
        const char* identifier;
    };
    const CCase cases[] = {{"$GPRMC,1", "RMC"}, {"!XXRMCX,1", "RMC"}, {"$\x01\x02XDR", "XDR"},
                           {"$GPRM", nullptr},  {"$RMC,1", nullptr},  {"$GP", nullptr},
                           {"$", nullptr},      {"", nullptr},        {"$GPrmc,1", nullptr}};
    for (const CCase& c : cases) {
        const CNMEASentenceType* type = CNMEASentenceType::FindType(std::string(c.text).c_str());
        EXPECT_STREQ(type != nullptr ? type->id : "none", c.identifier != nullptr ? c.identifier : "none") << c.text;
    }
    std::vector<std::string> known;
    for (const CNMEASentenceType* type = CNMEASentenceType::list; type != nullptr; type = type->next) {
        known.emplace_back(type->id);
        EXPECT_EQ(CNMEASentenceType::FindType((std::string("$GP") + type->id + ",").c_str()), type) << type->id;
    }
    EXPECT_GE(known.size(), 15U);
}

TEST(Dispatch, TypesComeAndGo)
{
    CNMEASentenceType* const before = CNMEASentenceType::list;
    CHearing<CProprietary> hearing;
    {
        CNMEASentenceTypeOf<CProprietary> type("PZTX,Go", 1);
        CNMEASentenceTypeOf<CProprietary> newer("MTW");
        EXPECT_EQ(CNMEASentenceType::list, &newer);
        EXPECT_EQ(CNMEASentenceType::FindType("$IIMTW"), &newer);
        EXPECT_NE(0, DispatchBody("$PZTX,GoNow"));
        EXPECT_EQ(0, DispatchBody("$PZTX,G"));
        EXPECT_EQ(hearing.count, 1);
        EXPECT_NE(type.pool, nullptr);
        CNMEASentenceTypeOf<CProprietary> everything("", 40);
        EXPECT_EQ(CNMEASentenceType::FindType("$"), &everything);
    }
    EXPECT_EQ(CNMEASentenceType::list, before);
    EXPECT_STREQ(CNMEASentenceType::FindType("$IIMTW")->id, "MTW");
    EXPECT_EQ(0, DispatchBody("$PZTX,GoNow"));
}

TEST(Dispatch, RawTextGoesOutUnlessTheSentenceWasHandled)
{
    CWirelessConnection connection;
    std::string last;
    CHearing<CNMEA_Raw> raw([&](CNMEA_Raw& text) {
        EXPECT_EQ(text.source, &connection);
        last = text.text;
    });
    const auto heard = [&raw] { return std::exchange(raw.count, 0); };

    EXPECT_NE(0, DispatchBody("$XXZZZ,1", &connection)) << "an unknown sentence";
    EXPECT_EQ(last, WithChecksum("$XXZZZ,1") + "\r\n");
    EXPECT_EQ(heard(), 1);
    EXPECT_NE(0, DispatchBody("$IIMTW,1,C", &connection)) << "one nobody listens for";
    EXPECT_EQ(heard(), 1);
    EXPECT_EQ(0, DispatchBody("$IIMTW,1,C")) << "from no connection";
    EXPECT_EQ(heard(), 0);

    bool stop = true;
    CHearing<MTW> water([&](MTW&) { Listener<MTW>::pDatasource->stop = stop; });
    EXPECT_NE(0, DispatchBody("$IIMTW,1,C", &connection)) << "handled";
    EXPECT_EQ(heard(), 0);
    EXPECT_NE(0, DispatchBody("$IIMTW,1,F", &connection)) << "rejected, after one that was handled";
    EXPECT_EQ(heard(), 1);
    stop = false;
    EXPECT_NE(0, DispatchBody("$IIMTW,2,C", &connection)) << "listened to";
    EXPECT_EQ(last, WithChecksum("$IIMTW,2,C") + "\r\n");
    EXPECT_EQ(heard(), 1);
    EXPECT_EQ(water.count, 2);

    EXPECT_NE(0, DispatchBody("$XX" + std::string(191, 'x'), &connection)) << "197 characters";
    EXPECT_EQ(last.size(), 199U);
    EXPECT_NE(0, DispatchBody("$XX" + std::string(192, 'x'), &connection)) << "198 characters";
    EXPECT_EQ(last, "");
}

TEST(Dispatch, WithoutRawListenersTheResultIsThatOfTheSentence)
{
    CWirelessConnection connection;
    EXPECT_EQ(0, DispatchBody("$IIMTW,1,C", &connection));
    CHearing<MTW> water;
    EXPECT_NE(0, DispatchBody("$IIMTW,1,C", &connection));
    EXPECT_EQ(0, DispatchBody("$IIMTW,1,F", &connection));
    EXPECT_EQ(water.count, 1);
}

TEST(Dispatch, TheInputFilterComesFirst)
{
    CWirelessConnection connection;
    connection.input_filter.add("Deny II");
    CHearing<MTW> water;
    CHearing<CNMEA_Raw> raw;
    EXPECT_EQ(0, DispatchBody("$IIMTW,1,C", &connection));
    EXPECT_NE(0, DispatchBody("$WIMTW,1,C", &connection));
    EXPECT_NE(0, DispatchBody("$IIMTW,1,C"));
    EXPECT_EQ(water.count, 2);
    EXPECT_EQ(raw.count, 1);
}

TEST(Dispatch, AKeptSentenceIsNotUsedAgain)
{
    VHW* kept = nullptr;
    CHearing<VHW> hearing([&](VHW& vhw) {
        if (kept == nullptr) {
            kept = &vhw;
            ++kept->use_count;
        }
    });
    DispatchBody("$IIVHW,,,1,M,5,N");
    DispatchBody("$IIVHW,,,2,M,6,N");
    DispatchBody("$IIVHW,,,3,M,,");
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->heading, 1.0F);
    EXPECT_EQ(kept->speed, 5.0F);
    ASSERT_EQ(kept->use_count, 1U);
    kept->Release();
}

TEST(Dispatch, AListenerMayDispatchAndLeave)
{
    std::optional<CHearing<MTW>> water;
    std::vector<float> heard;
    water.emplace([&](MTW& mtw) {
        heard.push_back(mtw.temperature);
        if (heard.size() == 1) DispatchBody("$IIMTW,2,C");
        heard.push_back(mtw.temperature);
        if (heard.size() == 4) water.reset();
    });
    CWirelessConnection connection;
    CHearing<CNMEA_Raw> raw;
    EXPECT_NE(0, DispatchBody("$IIMTW,1,C", &connection));
    EXPECT_EQ(heard, (std::vector<float>{1, 2, 2, 1}));
    EXPECT_EQ(raw.count, 1);
    EXPECT_EQ(Listener<MTW>::pDatasource, nullptr);
}

TEST(Raw, OwnTextGetsItsChecksum)
{
    std::string last = "none";
    CHearing<CNMEA_Raw> hearing([&](CNMEA_Raw& raw) { last = raw.text; });
    CNMEA_Raw raw;
    std::strcpy(raw.text, "$ECAPB,A");
    raw.AddChecksumAndDispatch();
    EXPECT_EQ(last, WithChecksum("$ECAPB,A") + "\r\n");
    EXPECT_TRUE(raw.Matches(3, "APB"));
    EXPECT_TRUE(raw.Matches(3, ""));
    EXPECT_FALSE(raw.Matches(3, "APBX"));
    EXPECT_FALSE(raw.Matches(-1, "A"));
    EXPECT_FALSE(raw.Matches(150, "A"));
    const std::string longest = "$" + std::string(193, 'x');
    const auto send = [](const std::string& text) {
        CNMEA_Raw longer;
        text.copy(longer.text, text.size());
        longer.AddChecksumAndDispatch();
    };
    send(longest);
    EXPECT_EQ(last, WithChecksum(longest) + "\r\n");
    send(longest + "y");
    EXPECT_EQ(hearing.count, 2);
}

TEST(Dispatch, ASteadyStreamAllocatesNothing)
{
    const CHearingOfAll hearing;
    const std::vector<std::string> sentences = MixedSentences(10'000);
    std::vector<char> buffer(256);
    const auto send = [&](const std::string& sentence) {
        std::memcpy(buffer.data(), sentence.c_str(), sentence.size() + 1);
        CNMEASentence::DispatchSentence(buffer.data(), nullptr);
    };
    for (int i = 0; i < 100; ++i) send(sentences[static_cast<std::size_t>(i)]);
    const CAllocationCounter allocations;
    for (const std::string& sentence : sentences) send(sentence);
    EXPECT_EQ(allocations.Count(), 0U);
    EXPECT_GT(hearing.Count(), 9000);
}

TEST(Dispatch, TheOrderOfSentencesDoesNotMatter)
{
    std::vector<std::string> sentences = MixedSentences(500);
    const auto results = [](const std::vector<std::string>& lines) {
        std::vector<double> times;
        CHearing<RMC> rmc([&](RMC& data) { times.push_back(data.time * 1000.0 + data.latitude + data.speed); });
        CHearing<GSV> gsv([&](GSV& data) {
            times.push_back(data.satellites[0].prn * 1000 + data.satellites[3].snr + data.message_number * 0.1);
        });
        CHearing<DPT> dpt([&](DPT& data) { times.push_back(-data.depth - data.offset_keel); });
        for (const std::string& line : lines) Dispatch(line);
        std::sort(times.begin(), times.end());
        return times;
    };
    const std::vector<double> in_order = results(sentences);
    std::shuffle(sentences.begin(), sentences.end(), std::mt19937(5));
    EXPECT_EQ(results(sentences), in_order);
    EXPECT_FALSE(in_order.empty());
}
