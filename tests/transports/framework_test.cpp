#include "transport_test.h"

#include "core/files.h"
#include "nmea/connection_background.h"
#include "nmea/transports/log_file.h"
#include "nmea/transports/no_connection.h"
#include "nmea/transports/simulation.h"
#include "nmea/transports/tcp_connection.h"
#include "ui/file_dialogs.h"

#include <optional>

#include <QQuickItem>

namespace {

using Type = CDataConnection::CConnectionType;

class ConnectionFramework : public CTransportTest {
protected:
    void TearDown() override
    {
        SetFileDialog({});
        SetBackgroundActivity(nullptr);
        CNMEASimulation::filename.clear();
        CTransportTest::TearDown();
    }
    static Type* Row(int id)
    {
        Type* row = Type::first_type;
        while (row != nullptr && row->id != id) row = row->next;
        return row;
    }
    /// Selects the type, with a file dialog that answers `path`; what the selection answered.
    std::optional<bool> Select(int id, const std::optional<std::string>& path = {})
    {
        SetFileDialog([path](ZT_HWND, const CFileRequest&, const FileChosen& chosen) { chosen(path); });
        std::optional<bool> answer;
        CDataConnection::onConnectionSelected({}, Row(id), [&](bool opened) { answer = opened; });
        return answer;
    }
    std::string WriteFile(const char* name, const std::string& content) const
    {
        write_to_file(root.file(name), content);
        return root.file(name);
    }
};

TEST_F(ConnectionFramework, TheMenuHasEveryTypeInOrder)
{
    std::vector<std::string> names;
    for (const Type* row = Type::first_type; row != nullptr; row = row->next) {
        names.emplace_back(row->name);
        const std::unique_ptr<CDataConnection> made(CDataConnection::Create(row->id));
        ASSERT_NE(made, nullptr) << row->name;
        EXPECT_EQ(made->type, row->id);
        EXPECT_TRUE(made->closed && made->output_filter.empty() && made->input_filter.empty()) << row->name;
        EXPECT_EQ(made->debuggable, row->id == 83 || row->id == 73 || row->id == 79) << row->name;
        EXPECT_EQ(made->simulated, row->id == 74) << row->name;
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"Serial", "Location Service", "UDP/IP", "TCP/IP", "Simulation File", "None"}));
    EXPECT_EQ(CDataConnection::Create(72), nullptr);
}

TEST_F(ConnectionFramework, AnUnknownTypeFallsBackToTheLocationService)
{
    for (const int number : {0, 72, -1}) {
        CDataConnection::gps_connection_type = number;
        CDataConnection::CreateConnection();
        EXPECT_TRUE(CDataConnection::usingDefaultType());
        EXPECT_TRUE(PersistantData::SaveAll());
        EXPECT_EQ(Setting("CDataConnection:gps_connection_type"), "0x47") << number;
    }
}

TEST_F(ConnectionFramework, SelectingAnswersWhetherItOpened)
{
    const std::string good = WriteFile("good.txt", Water(1));
    struct Case {
        const char* name;
        int id;
        std::optional<std::string> path;
        bool opened;
        int type_afterwards;
        const char* status;
    };
    const Case cases[] = {
        {"none", 70, {}, true, 70, "GPS Connection set to \"None\""},
        {"simulation", 74, good, true, 74, ""},
        {"cancelled", 74, {}, false, 0, "before"},
        {"file_is_gone", 74, root.file("gone.txt"), false, 0, "before"},
    };
    for (const Case& test : cases) {
        sink.status = "before";
        EXPECT_EQ(Select(test.id, test.path), test.opened) << test.name;
        EXPECT_EQ(CDataConnection::gps_connection_type, test.type_afterwards) << test.name;
        EXPECT_EQ(sink.status, test.status) << test.name;
        ASSERT_NE(CDataConnection::theConnection, nullptr) << test.name;
        EXPECT_EQ(CDataConnection::theConnection->closed, !test.opened) << test.name;
        if (!test.opened) continue;
        EXPECT_EQ(Setting("CDataConnection:gps_connection_type"), test.id == 70 ? "0x46" : "0x4a");
    }
    EXPECT_EQ(CNMEASimulation::filename, root.file("gone.txt")) << "kept, to be asked for again";
}

TEST_F(ConnectionFramework, AnAnswerThatComesLateOpensNothingElse)
{
    FileChosen late;
    SetFileDialog([&](ZT_HWND, const CFileRequest&, FileChosen chosen) { late = std::move(chosen); });
    std::optional<bool> answer;
    CDataConnection::onConnectionSelected({}, Row(74), [&](bool opened) { answer = opened; });
    EXPECT_FALSE(answer);
    Select(70);
    late(WriteFile("good.txt", Water(1)));
    EXPECT_EQ(answer, false);
    EXPECT_EQ(CDataConnection::gps_connection_type, 70);
}

TEST_F(ConnectionFramework, OnlyWhatTheFilterAllowsGoesOutAndNothingEchoes)
{
    CNMEALogfile log;
    ASSERT_TRUE(log.Setup(root.file("out.txt")));
    ASSERT_TRUE(log.Open());
    log.output_filter.add("Allow II");
    log.output_filter.add("Deny IIMWV");
    CWirelessConnection other;
    DispatchBody("$IIMTW,4.0,C", &other);
    DispatchBody("$IIMWV,1,R,2,N,A", &other);
    DispatchBody("$GPRMC,x", &other);
    DispatchBody("$IIMTW,5.0,C", &log);
    DispatchToListeners(*std::make_unique<ShutDown>());
    EXPECT_FALSE(log.Output("late"));
    std::string text;
    ASSERT_TRUE(read_whole_file(root.file("out.txt"), text));
    EXPECT_EQ(text, WithChecksum("$IIMTW,4.0,C") + "\r\n\n---- Power Down-----\n\n\n");
    EXPECT_FALSE(log.Setup(root.path()));
    EXPECT_EQ(log.status, "File open error");
}

TEST_F(ConnectionFramework, RawTextIsCopiedOnlyForAConnectionWithRules)
{
    CDataConnection::gps_connection_type = CDataConnection::kNone;
    CDataConnection::CreateConnection();
    EXPECT_EQ(Listener<CNMEA_Raw>::pDatasource, nullptr);
    write_to_file(PersistantData::Filename(), "CDataConnection:output_filters:n=2\n"
                                              "CDataConnection:output_filters[0]=Deny II\n"
                                              "CDataConnection:output_filters[1]=Allow IIMTW\n");
    PersistantData::LoadAll("zentara");
    CDataConnection::gps_connection_type = CDataConnection::kNone;
    CDataConnection::CreateConnection();
    EXPECT_NE(Listener<CNMEA_Raw>::pDatasource, nullptr);
    bool verdict = false;
    CDataConnection::theConnection->output_filter.apply("$IIMTW,", verdict);
    EXPECT_TRUE(verdict);
}

struct Background : IBackgroundActivity {
    bool AnythingRunning() const override { return running; }
    bool RecordsInBackground() const override { return wanted; }
    bool IsRecordingTrack() const override { return recording; }
    bool running = false;
    bool wanted = false;
    bool recording = false;
};

TEST_F(ConnectionFramework, APauseKeepsTheConnectionThatHasWork)
{
    struct Case {
        const char* name;
        bool running, wanted, recording, kept;
    };
    const Case cases[] = {
        {"idle", false, false, false, false},
        {"download", true, false, false, true},
        {"recording_in_background", false, true, true, true},
        {"recording_unwanted", false, false, true, false},
        {"not_recording", false, true, false, false},
    };
    Background background;
    SetBackgroundActivity(&background);
    CDataConnection::gps_connection_type = CDataConnection::kNone;
    for (const Case& test : cases) {
        background.running = test.running;
        background.wanted = test.wanted;
        background.recording = test.recording;
        CDataConnection::AppWasResumed();
        const CDataConnection* const before = CDataConnection::theConnection;
        ASSERT_NE(before, nullptr);
        CDataConnection::AppWasPaused();
        EXPECT_EQ(CDataConnection::theConnection, test.kept ? before : nullptr) << test.name;
        CDataConnection::AppWasDestroyed();
    }
    CDataConnection::AppWasPaused(); // without a connection
}

TEST_F(ConnectionFramework, TheDebugLogIsSavedWhereTheUserWants)
{
    QQuickItem view;
    CFileRequest asked;
    // The second place is usually on another file system.
    const std::string elsewhere = "/dev/shm/zt_nmea_debug_" + std::to_string(getpid());
    for (const std::string& place : {root.file("saved.txt"), elsewhere}) {
        SetFileDialog([&](ZT_HWND, const CFileRequest& request, const FileChosen& chosen) {
            asked = request;
            chosen(place);
        });
        CDataConnection::DebugLog("not yet");
        CDataConnection::startDebug();
        EXPECT_TRUE(CDataConnection::isDebugging());
        CDataConnection::DebugLog("first");
        CDataConnection::DebugLog("");
        CDataConnection::stopDebug(ZT_HWND(&view));
        EXPECT_FALSE(CDataConnection::isDebugging());
        CDataConnection::DebugLog("no longer");
        std::string text;
        EXPECT_TRUE(read_whole_file(place, text)) << place;
        EXPECT_EQ(text, "first\n\n");
        EXPECT_FALSE(isRegularFile(root.file("tmp/nmea_debug.txt")));
        std::remove(place.c_str());
    }
    EXPECT_TRUE(asked.save);
    EXPECT_EQ(asked.mime_type + " " + asked.name, "text/plain nmea_debug.txt");

    asked.name.clear();
    CDataConnection::startDebug();
    CDataConnection::stopDebug({});
    EXPECT_EQ(asked.name, "") << "without a view nobody is asked";
    EXPECT_TRUE(isRegularFile(root.file("tmp/nmea_debug.txt")));
}

} // namespace
