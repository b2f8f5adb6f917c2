#include "transport_test.h"

#include "core/files.h"
#include "core/folders.h"
#include "nmea/transports/tcp_connection.h"
#include "web/file_server.h"

#include <QTcpServer>

namespace {

/// A multiplexer on this computer.
class CSentenceServer {
public:
    CSentenceServer()
    {
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
            client = server.nextPendingConnection();
            ++accepted;
        });
        Listen(0);
    }
    void Listen(int number) { server.listen(QHostAddress::LocalHost, static_cast<quint16>(number)); }
    int port() const { return server.serverPort(); }
    void Send(const std::string& text)
    {
        client->write(text.data(), static_cast<qint64>(text.size()));
        client->flush();
    }
    void Drop()
    {
        client->abort();
        client = nullptr;
    }

    QTcpServer server;
    QTcpSocket* client = nullptr;
    int accepted = 0;
};

std::string read_targets; ///< what ReadInstantTargets was given

void ReadTargets(const std::string& path)
{
    read_whole_file(path, read_targets);
}

class Tcp : public CTransportTest {
protected:
    void TearDown() override
    {
        connection.Close();
        CInstantTargets::ReadInstantTargets = nullptr;
        CInstantTargets::list_port = CInstantTargets::kListPort;
        read_targets.clear();
        CDataConnection::stopDebug({});
        CTransportTest::TearDown();
    }
    void Open()
    {
        ASSERT_TRUE(connection.Setup("127.0.0.1", server.port(), false));
        ASSERT_TRUE(connection.Open());
        EXPECT_FALSE(connection.closed);
        ASSERT_TRUE(WaitFor([&] { return server.client != nullptr; }));
    }
    bool WaitHeard(std::size_t count)
    {
        return WaitFor([&] { return heard.size() >= count; });
    }
    /// Ticks until the server has been reached `times`; how many ticks that took.
    int TicksUntilAccepted(int times, int most)
    {
        int ticks = 0;
        while (server.accepted < times && ticks < most) {
            Pulse(1);
            ++ticks;
            QTest::qWait(1);
        }
        return ticks;
    }

    CSentenceServer server;
    CTCPIPConnection connection;
};

TEST_F(Tcp, ReadsAndWrites)
{
    Open();
    server.Send(Water(1) + Water(2).substr(0, 9));
    EXPECT_TRUE(WaitHeard(1));
    server.Send(Water(2).substr(9));
    EXPECT_TRUE(WaitHeard(2));
    EXPECT_EQ(heard, (std::vector<int>{1, 2}));
    EXPECT_TRUE(connection.Output("$ECRMB\r\n"));
    QByteArray received;
    EXPECT_TRUE(WaitFor([&] { return (received += server.client->readAll()) == "$ECRMB\r\n"; }));
    server.Drop();
    EXPECT_TRUE(WaitFor([&] { return !connection.Output("x"); }));
    EXPECT_EQ(connection.status, "Output failed");
    Pulse(700);
    QTest::qWait(20);
    EXPECT_EQ(server.accepted, 1) << "a lost connection stays lost";
}

TEST_F(Tcp, GarbageAndFloodsEndWithWhatFollows)
{
    CDataConnection::startDebug();
    Open();
    server.Send(std::string(30000, 'z') + "\n" + Water(3));
    EXPECT_TRUE(WaitHeard(1)) << "garbage larger than the socket's buffer does not silence the connection";
    std::string flood;
    for (int i = 0; i < 3000; ++i) flood += "!\n";
    server.Send(flood);
    server.Send("\n" + Water(5));
    EXPECT_TRUE(WaitFor([&] {
        if (heard.back() == 5) return true;
        server.Send("\n" + Water(5)); // the first may have been thrown away with the flood
        return false;
    }));
    CDataConnection::stopDebug({});
    std::string log;
    EXPECT_TRUE(read_whole_file(getTmpDirectory("nmea_debug.txt"), log));
    EXPECT_NE(log.find("Error: Data not NMEA format."), std::string::npos);
    EXPECT_NE(log.find("Error: too many sentences - discarding the input buffer"), std::string::npos);
}

TEST_F(Tcp, ANetworkThatIsNotTheOneSetUpIsAStatus)
{
    CTCPIPConnection::last_network = "Harbour";
    CTCPIPConnection elsewhere;
    CTCPIPConnection::last_network.clear();
    EXPECT_FALSE(elsewhere.Open());
    EXPECT_EQ(elsewhere.status, "TCP connection set up for Harbour");
    EXPECT_FALSE(elsewhere.closed);
    elsewhere.Setup("127.0.0.1", server.port(), false);
    EXPECT_TRUE(elsewhere.Open());
    EXPECT_TRUE(WaitFor([&] { return server.accepted == 1; }));
}

TEST_F(Tcp, ReconnectsWithAGrowingPauseAndOneAttemptAtATime)
{
    connection.SetReconnect(true);
    Open();
    const int port = server.port();
    server.server.close();
    server.Drop();
    ASSERT_TRUE(WaitFor([&] { return !sink.status.empty(); }));
    EXPECT_EQ(sink.status, "No TCP connection to 127.0.0.1, port " + std::to_string(port) + ": trying again");
    // Refused after 2 s and after 4 s more.
    Pulse(20);
    QTest::qWait(50);
    Pulse(40);
    QTest::qWait(50);
    server.Listen(port);
    EXPECT_EQ(server.accepted, 1);
    EXPECT_NEAR(TicksUntilAccepted(2, 200), 80, 10) << "then after 8 s";
    EXPECT_TRUE(WaitFor([&] { return sink.status.empty(); })) << "connected";
    Pulse(700);
    QTest::qWait(20);
    EXPECT_EQ(server.accepted, 2) << "no attempt beside a working connection";
    // A sentence makes the pause short again.
    server.Send(Water(6));
    EXPECT_TRUE(WaitHeard(1));
    server.Drop();
    ASSERT_TRUE(WaitFor([&] { return !sink.status.empty(); }));
    EXPECT_NEAR(TicksUntilAccepted(3, 100), 20, 10);
    connection.Close();
    Pulse(700);
    QTest::qWait(20);
    EXPECT_EQ(server.accepted, 3);
}

TEST_F(Tcp, ThePauseGrowsToAMinute)
{
    CReconnectPause pause;
    std::vector<int> seconds;
    for (int i = 0; i < 7; ++i) {
        pause.Begin();
        pause.Begin();
        int ticks = 1;
        while (!pause.Tick()) ++ticks;
        seconds.push_back(ticks / 10);
        EXPECT_FALSE(pause.Tick());
    }
    EXPECT_EQ(seconds, (std::vector<int>{2, 4, 8, 16, 32, 60, 60}));
}

TEST_F(Tcp, TheListOfTargetsIsFetchedFromItsOwnPort)
{
    CFileServer list;
    CInstantTargets::ReadInstantTargets = ReadTargets;
    CInstantTargets::list_port = list.port();
    struct Case {
        const char* name;
        QByteArray answer;
        const char* read;
    };
    const Case cases[] = {
        {"a_list", CFileServer::Whole("<targets/>"), "<targets/>"},
        {"no_list", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n", ""},
        {"too_large", "HTTP/1.1 200 OK\r\n\r\n" + QByteArray((16 << 20) + 1, 'x'), ""},
    };
    for (const Case& test : cases) {
        read_targets.clear();
        list.request.clear();
        list.answer = test.answer;
        CInstantTargets targets;
        targets.Fetch("127.0.0.1");
        targets.Prepare();
        targets.Fetch("127.0.0.1");
        EXPECT_TRUE(WaitFor([&] { return !list.request.isEmpty() && !targets.IsWanted(); })) << test.name;
        EXPECT_EQ(list.request, "GET /targets/getTargets HTTP/1.1");
        EXPECT_EQ(read_targets, test.read) << test.name;
        EXPECT_TRUE(listDirectory(getTmpDirectory()).empty()) << "no file is left";
    }
}

TEST_F(Tcp, OnlyAUnitOfThatKindIsAskedForItsList)
{
    CFileServer list;
    list.answer = CFileServer::Whole("<targets/>");
    CInstantTargets::ReadInstantTargets = ReadTargets;
    CInstantTargets::list_port = list.port();
    connection.Setup("127.0.0.1", server.port(), true);
    ASSERT_TRUE(connection.Open());
    ASSERT_TRUE(WaitFor([&] { return server.client != nullptr; }));
    server.Send(Water(1));
    EXPECT_TRUE(WaitHeard(1));
    EXPECT_EQ(list.request, "") << "another port";

    QTcpServer unit;
    if (!unit.listen(QHostAddress::LocalHost, CInstantTargets::kSentencePort)) GTEST_SKIP() << "the port is taken";
    connection.Setup("127.0.0.1", CInstantTargets::kSentencePort, true);
    ASSERT_TRUE(connection.Open());
    EXPECT_TRUE(WaitFor([] { return read_targets == "<targets/>"; }));
}

TEST_F(Tcp, SettingsThatAreNoPortOpenNothing)
{
    for (const int port : {0, -1, 65536, 39150 + 65536}) {
        connection.Setup("127.0.0.1", port, false);
        EXPECT_TRUE(connection.Open()) << port;
        EXPECT_FALSE(connection.Output("x"));
    }
}

} // namespace
