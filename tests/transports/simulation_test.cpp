#include "transport_test.h"

#include "core/files.h"
#include "nmea/transports/simulation.h"
#include "overlays/track_manager.h"

namespace {

/// Publishes a position under way for every wind sentence, as the feed does for those of a receiver, and records it.
class Simulation : public CTransportTest {
protected:
    void SetUp() override
    {
        CTransportTest::SetUp();
        Recorder().Connect();
        CTrackManager::doRecordTrack = true;
    }
    void TearDown() override
    {
        CTransportTest::TearDown();
        CNMEASimulation::filename.clear();
        CTrackManager::doRecordTrack = false;
        Recorder().Disconnect();
        g_track_manager.ClearAll();
    }
    static Listener<CDataGPSPosition>& Recorder() { return g_track_manager; }
    void Publish(unsigned status)
    {
        CDataGPSPosition position;
        position.set_latlon(0.01 * ++positions, 10.0);
        position.time = 1.7e9 + 60.0 * positions;
        position.status = status;
        DispatchToListeners(position);
    }
    static std::vector<std::string> TrackNames()
    {
        std::vector<std::string> names;
        for (const COverlayTrack* track : g_track_manager) names.push_back(track->name);
        return names;
    }
    void Play(const std::string& content)
    {
        ASSERT_TRUE(write_to_file(root.file("voyage.txt"), content));
        ASSERT_TRUE(CNMEASimulation::Setup(root.file("voyage.txt")));
        CDataConnection::gps_connection_type = CDataConnection::kSimulationFile;
        CDataConnection::CreateConnection();
        ASSERT_FALSE(CDataConnection::theConnection->closed);
        // The first second may be a short one.
        while (heard.empty() && seconds < 2) Second();
    }
    void Second()
    {
        ++seconds;
        Pulse(10);
    }

    int seconds = 0;
    int positions = 0;
    CHearing<CNMEA_Instruments::MWV> wind{[this](CNMEA_Instruments::MWV&) { Publish(CDataGPSPosition::kSimulated); }};
};

const std::string kPosition = WithChecksum("$IIMWV,10.0,R,5.0,N,A") + "\r\n";

TEST_F(Simulation, OnePositionASecondSetsThePace)
{
    Play(Water(1) + Water(2) + kPosition + Water(3) + kPosition + Water(4) + kPosition);
    EXPECT_EQ(heard, (std::vector<int>{1, 2}));
    Second();
    EXPECT_EQ(heard, (std::vector<int>{1, 2, 3}));
    Second();
    using Names = std::vector<std::string>;
    EXPECT_EQ(TrackNames(), Names{"Simulation"});
    Second();
    EXPECT_EQ(heard, (std::vector<int>{1, 2, 3, 4, 1, 2})) << "the end of the file is its beginning";
    EXPECT_EQ(TrackNames(), (Names{"Simulation", "Simulation"}));
    CDataConnection::AppWasDestroyed();
    EXPECT_EQ(TrackNames(), Names{"Simulation"}) << "the one just begun is dropped";
    Publish(CDataGPSPosition::kFix);
    ASSERT_EQ(TrackNames().size(), 2U);
    EXPECT_NE(TrackNames().back(), "Simulation") << "what follows is another track";
}

TEST_F(Simulation, WithoutPositionsThirtyLinesASecond)
{
    std::string content;
    for (int i = 0; i < 40; ++i) content += Water(i);
    Play(content);
    EXPECT_EQ(heard.size(), 30U);
    Second();
    // Ten more, the end of the file counts as one, and nineteen from the beginning.
    EXPECT_EQ(heard.size(), 59U);
    EXPECT_EQ(heard.back(), 18);
}

TEST_F(Simulation, OddFiles)
{
    const std::string long_line = "$" + std::string(250, 'x') + "$" + std::string(20, 'y');
    struct Case {
        const char* name;
        std::string content;
        std::vector<int> first; ///< what is heard of the first seconds
    };
    const Case cases[] = {
        {"byte_255_is_not_the_end", "\xFF\xFF" + Water(1) + kPosition, {1}},
        {"prefix_and_no_last_line_end", "12:00:01 " + Water(1) + "\n\n;" + Water(2) + kPosition.substr(0, 24), {1, 2}},
        {"long_line_splits", long_line + "\n" + Water(3) + kPosition, {3}},
        {"unix_line_ends", WithChecksum("$IIMTW,7.0,C") + "\n" + kPosition, {7}},
        {"empty", "", {}},
        {"no_sentence", std::string(3000, 'z'), {}},
    };
    for (const Case& test : cases) {
        heard.clear();
        seconds = 0;
        Play(test.content);
        if (heard.size() > test.first.size()) heard.resize(test.first.size());
        EXPECT_EQ(heard, test.first) << test.name;
    }
}

TEST_F(Simulation, AMegabyteWithoutASentenceDoesNotHoldUpTheProgram)
{
    const std::string rubbish(1 << 20, 'z');
    Play(rubbish + Water(5) + kPosition);
    EXPECT_TRUE(heard.empty());
    while (heard.empty() && seconds < 10) Second();
    EXPECT_EQ(heard, std::vector<int>{5});
    EXPECT_EQ(seconds, 5) << "a quarter of a megabyte a second";
}

TEST_F(Simulation, AFileThatIsNoneIsAStatus)
{
    for (const std::string& path : {root.path(), root.file("missing.txt"), std::string("/dev/zero"), std::string()}) {
        EXPECT_FALSE(CNMEASimulation::Setup(path)) << path;
        CDataConnection::gps_connection_type = CDataConnection::kSimulationFile;
        CDataConnection::CreateConnection();
        EXPECT_TRUE(CDataConnection::theConnection->closed);
        EXPECT_EQ(sink.status, "Simulation file error") << path;
        Second();
    }
}

} // namespace
