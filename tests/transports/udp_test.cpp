#include "transport_test.h"

#include "core/files.h"
#include "core/folders.h"
#include "nmea/transports/udp_connection.h"

#include <QUdpSocket>

namespace {

class Udp : public CTransportTest {
protected:
    void SetUp() override
    {
        CTransportTest::SetUp();
        QUdpSocket finder;
        ASSERT_TRUE(finder.bind(QHostAddress::LocalHost));
        port = finder.localPort();
        finder.close();
        ASSERT_TRUE(connection.Setup(port));
        ASSERT_TRUE(connection.Open()) << connection.status;
        EXPECT_FALSE(connection.closed);
    }
    void TearDown() override
    {
        CDataConnection::stopDebug({});
        CTransportTest::TearDown();
    }
    void Send(const std::string& datagram)
    {
        const auto size = static_cast<qint64>(datagram.size());
        ASSERT_EQ(sender.writeDatagram(datagram.data(), size, QHostAddress::LocalHost, port), size);
    }
    bool WaitHeard(const std::vector<int>& expected)
    {
        return WaitFor([&] { return heard == expected; });
    }

    QUdpSocket sender;
    quint16 port = 0;
    CUDPConnection connection;
};

TEST_F(Udp, DatagramsInOneGo)
{
    const std::string two = Water(2);
    Send(Water(1) + two.substr(0, 6));
    Send({});
    Send(two.substr(6));
    Send({});
    Send({});
    Send(Water(3) + Water(4));
    EXPECT_TRUE(WaitHeard({1, 2, 3, 4})) << heard.size();
    EXPECT_FALSE(connection.Output("$ECRMB\r\n")) << "it only receives";
}

TEST_F(Udp, ADatagramWithoutALineFeedDoesNotSilenceTheConnection)
{
    CDataConnection::startDebug();
    Send(std::string(4000, 'z'));
    Send("\n" + Water(7));
    EXPECT_TRUE(WaitHeard({7}));
    // Longer than the buffer: cut there, and what follows is a datagram of its own.
    Send(std::string(3000, '\n') + std::string(3000, 'y'));
    EXPECT_TRUE(WaitFor([&] {
        if (!heard.empty() && heard.back() == 8) return true;
        Send("\n" + Water(8));
        return false;
    }));
    CDataConnection::stopDebug({});
    std::string log;
    EXPECT_TRUE(read_whole_file(getTmpDirectory("nmea_debug.txt"), log));
    EXPECT_NE(log.find("Error: Data not NMEA format."), std::string::npos);
    EXPECT_NE(log.find("Error: too many sentences - discarding the input buffer"), std::string::npos);
}

TEST_F(Udp, AFloodLeavesTheEventLoopItsTurn)
{
    // More short datagrams than one turn takes, though no more than the system keeps: none is lost.
    const std::string line = Water(9);
    for (int i = 0; i < 12; ++i) {
        for (const char byte : line) Send({byte});
        Send({});
    }
    EXPECT_TRUE(WaitFor([&] { return heard.size() == 12; })) << heard.size();
}

TEST_F(Udp, ClosedWhileDataWait)
{
    Send(std::string(1000, 'z'));
    QTest::qWait(20);
    connection.Close();
    EXPECT_TRUE(connection.closed);
    QTest::qWait(20);
    ASSERT_TRUE(connection.Open());
    Send("\n" + Water(2));
    EXPECT_TRUE(WaitHeard({2}));
}

TEST_F(Udp, WhatCannotBeOpenedIsAStatus)
{
    QUdpSocket alone;
    ASSERT_TRUE(alone.bind(QHostAddress::Any, 0, QAbstractSocket::DontShareAddress));
    CUDPConnection busy;
    busy.Setup(alone.localPort());
    EXPECT_FALSE(busy.Open());
    EXPECT_EQ(busy.status.find("Socket bind failed: "), 0U) << busy.status;
    EXPECT_GT(busy.status.size(), 22U) << busy.status;
    EXPECT_FALSE(busy.closed);
    for (const int number : {0, -5, 65536}) {
        CUDPConnection bad;
        bad.Setup(number);
        EXPECT_FALSE(bad.Open());
        EXPECT_EQ(bad.status.find("Socket bind failed: "), 0U);
    }
    CUDPConnection::last_network = "Harbour";
    CUDPConnection elsewhere;
    CUDPConnection::last_network.clear();
    EXPECT_FALSE(elsewhere.Open());
    EXPECT_EQ(elsewhere.status, "UDP connection not opened because current network is not Harbour");
}

} // namespace
