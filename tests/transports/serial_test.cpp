#include "transport_test.h"

#include "core/files.h"
#include "core/folders.h"
#include "nmea/transports/serial_connection.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {

/// A pair of ends: what is written into one comes out of the other.
class CPtyPair {
public:
    CPtyPair()
    {
        char name[64] = {};
        if (openpty(&master, &slave, name, nullptr, nullptr) != 0) return;
        termios mode{};
        tcgetattr(slave, &mode);
        cfmakeraw(&mode);
        tcsetattr(slave, TCSANOW, &mode);
        fcntl(master, F_SETFL, O_NONBLOCK);
        path = name;
    }
    ~CPtyPair() { Unplug(); }
    CPtyPair(const CPtyPair&) = delete;
    CPtyPair& operator=(const CPtyPair&) = delete;

    bool Write(const std::string& text) const
    {
        return write(master, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    }
    std::string Read() const
    {
        char text[256];
        const ssize_t size = read(master, text, sizeof text);
        return size > 0 ? std::string(text, static_cast<std::size_t>(size)) : std::string();
    }
    speed_t Speed() const
    {
        termios mode{};
        tcgetattr(master, &mode);
        return cfgetispeed(&mode);
    }
    void Unplug()
    {
        if (slave >= 0) close(slave);
        if (master >= 0) close(master);
        slave = master = -1;
    }

    std::string path;

private:
    int master = -1;
    int slave = -1;
};

/// Acts as a user who owns no device, where the tests run as one who may do everything.
class CPlainUser {
public:
    CPlainUser() { is_switched = geteuid() == 0 && seteuid(kNobody) == 0; }
    ~CPlainUser()
    {
        if (is_switched && seteuid(0) != 0) std::abort();
    }
    CPlainUser(const CPlainUser&) = delete;
    CPlainUser& operator=(const CPlainUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool is_switched = false;
};

class Serial : public CTransportTest {
protected:
    void SetUp() override
    {
        CTransportTest::SetUp();
        ASSERT_FALSE(pty.path.empty());
    }
    void Open()
    {
        ASSERT_TRUE(connection.Setup(pty.path, 38400));
        ASSERT_TRUE(connection.Open()) << connection.status;
        EXPECT_FALSE(connection.closed);
    }
    bool WaitHeard(std::size_t count)
    {
        return WaitFor([&] { return heard.size() >= count; }, true);
    }
    std::string DebugLogText()
    {
        CDataConnection::stopDebug({});
        std::string text;
        read_whole_file(getTmpDirectory("nmea_debug.txt"), text);
        return text;
    }

    CPtyPair pty;
    CSerialConnection connection;
};

TEST_F(Serial, ReadsAndWrites)
{
    Open();
    EXPECT_EQ(pty.Speed(), speed_t{B38400});
    EXPECT_EQ(connection.label, pty.path.substr(pty.path.rfind('/') + 1));
    EXPECT_EQ(connection.status, "");
    ASSERT_TRUE(pty.Write(Water(1) + Water(2).substr(0, 7)));
    EXPECT_TRUE(WaitHeard(1));
    ASSERT_TRUE(pty.Write(Water(2).substr(7)));
    EXPECT_TRUE(WaitHeard(2));
    EXPECT_EQ(heard, (std::vector<int>{1, 2}));
    EXPECT_TRUE(connection.Output("$ECRMB\r\n"));
    std::string received;
    EXPECT_TRUE(WaitFor([&] { return (received += pty.Read()) == "$ECRMB\r\n"; }, true)) << received;
    connection.Close();
    EXPECT_FALSE(connection.Output("x"));
    EXPECT_TRUE(connection.closed);
}

TEST_F(Serial, APortThatRefusesWritingIsReadAllTheSame)
{
    ASSERT_EQ(chmod(pty.path.c_str(), S_IRUSR | S_IRGRP | S_IROTH), 0);
    {
        const CPlainUser user;
        Open();
    }
    EXPECT_EQ(connection.status, "Opened " + pty.path + " read-only\n");
    ASSERT_TRUE(pty.Write(Water(4)));
    EXPECT_TRUE(WaitHeard(1));
    EXPECT_FALSE(connection.Output("$ECRMB\r\n"));
    EXPECT_EQ(pty.Read(), "");
}

TEST_F(Serial, AFloodIsCutAndLoggedAndWhatFollowsIsHeard)
{
    Open();
    CDataConnection::startDebug();
    std::string flood;
    for (int i = 0; i < 150; ++i) flood += Water(i % 90);
    ASSERT_TRUE(pty.Write(flood.substr(0, 3000)));
    // All of it at one read, so that the limit of a read is met.
    QTest::qWait(50);
    Pulse(1);
    EXPECT_EQ(heard.size(), 100U);
    ASSERT_TRUE(pty.Write("\n" + Water(99)));
    EXPECT_TRUE(WaitFor([&] { return heard.back() == 99; }, true));
    EXPECT_NE(DebugLogText().find("Error: too many sentences - discarding the input buffer"), std::string::npos);
}

TEST_F(Serial, GarbageIsReadInPiecesAndTheNextSentenceIsHeard)
{
    Open();
    CDataConnection::startDebug();
    ASSERT_TRUE(pty.Write(std::string(1000, 'z') + "\n" + Water(8)));
    EXPECT_TRUE(WaitHeard(1));
    const std::string log = DebugLogText();
    std::size_t faults = 0;
    for (std::size_t at = log.find("not NMEA"); at != std::string::npos; at = log.find("not NMEA", at + 1)) ++faults;
    EXPECT_EQ(faults, 5U) << "199 bytes and the dropped one, five times";
}

TEST_F(Serial, UnpluggedInMidLineItIsClosedAndTheStatusSaysSo)
{
    Open();
    ASSERT_TRUE(pty.Write(Water(1) + "$IIMTW,2"));
    EXPECT_TRUE(WaitHeard(1));
    pty.Unplug();
    EXPECT_TRUE(WaitFor([&] { return !sink.status.empty(); }, true));
    EXPECT_EQ(sink.status, "Serial port " + pty.path + " was unplugged");
    EXPECT_EQ(connection.status, sink.status);
    EXPECT_FALSE(connection.Output("x"));
    EXPECT_FALSE(connection.closed) << "so that resuming makes it anew";
    // Nothing spins: with nothing to do, the processor rests.
    rusage before{};
    rusage after{};
    getrusage(RUSAGE_SELF, &before);
    QTest::qWait(200);
    getrusage(RUSAGE_SELF, &after);
    const auto used = (after.ru_utime.tv_sec - before.ru_utime.tv_sec) * 1000000 + after.ru_utime.tv_usec -
                      before.ru_utime.tv_usec + (after.ru_stime.tv_sec - before.ru_stime.tv_sec) * 1000000 +
                      after.ru_stime.tv_usec - before.ru_stime.tv_usec;
    EXPECT_LT(used, 100000) << "microseconds of 200000";
    EXPECT_EQ(heard.size(), 1U);
}

TEST_F(Serial, APortThatDoesNotOpenIsAStatus)
{
    for (const char* device : {"/dev/null", "/dev/no_such_port", ""}) {
        CSerialConnection bad;
        bad.Setup(device, 4800);
        EXPECT_FALSE(bad.Open());
        EXPECT_EQ(bad.status.find(std::string("Open serial port ") + device + ", Failed, errno: "), 0U) << bad.status;
        EXPECT_EQ(bad.status.back(), '\n');
        EXPECT_FALSE(bad.closed);
        Pulse(3);
        EXPECT_FALSE(bad.Output("x"));
    }
}

TEST_F(Serial, ANewConnectionHasTheSettings)
{
    CSerialConnection::Remember(pty.path, 9600);
    EXPECT_EQ(Setting("CSerialConnection:device"), pty.path);
    const CSerialConnection made;
    EXPECT_EQ(made.device(), pty.path);
    EXPECT_EQ(made.baud(), 9600);
    CSerialConnection::Remember({}, 0);
    CSerialConnection never_set_up;
    EXPECT_EQ(never_set_up.baud(), 0);
    never_set_up.Setup(pty.path, 0);
    EXPECT_TRUE(never_set_up.Open()) << never_set_up.status;
}

} // namespace
