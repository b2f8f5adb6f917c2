#include "dialog_test.h"

#include "core/files.h"
#include "nmea/transports/serial_connection.h"
#include "nmea/transports/serial_setup.h"
#include "nmea/transports/simulation.h"
#include "nmea/transports/tcp_connection.h"
#include "nmea/transports/udp_connection.h"
#include "ui/zt_popup_menu.h"

#include <optional>

namespace {

class SetupDialogs : public CDialogTest {
protected:
    void TearDown() override
    {
        CSerialConnection::last_device.clear();
        CSerialConnection::last_baud = 0;
        CTCPIPConnection::last_options = {};
        CUDPConnection::last_port = 2000;
        CNMEASimulation::filename.clear();
        CDialogTest::TearDown();
    }
    void Configure(CDataConnection& connection)
    {
        answer.reset();
        connection.Configure({}, [this](bool accepted) { answer = accepted; });
        ASSERT_TRUE(WaitOpened());
        EXPECT_FALSE(answer);
    }
    void Choose(const char* combo, int row) { Find(combo)->setProperty("currentIndex", row); }

    std::optional<bool> answer;
};

TEST_F(SetupDialogs, SerialTakesARowOfEachList)
{
    CSerialConnection connection;
    Configure(connection);
    ExpectUsable({"port", "baud", "acceptButton", "rejectButton"});
    EXPECT_EQ(Find("baud")->property("currentIndex").toInt(), -1) << "never set up";
    const int last = Find("port")->property("count").toInt() - 1;
    Find("port")->setProperty("currentIndex", last);
    EXPECT_EQ(Find("port")->property("currentText").toString(), "tty0");
    // By the keys alone: to the second list, and up to a row of it.
    Find("port")->forceActiveFocus();
    Key(Qt::Key_Tab);
    EXPECT_TRUE(Find("baud")->hasActiveFocus());
    for (int i = 0; i < 5; ++i) Key(Qt::Key_Down);
    EXPECT_EQ(Find("baud")->property("currentText").toString(), "38400");
    Click("acceptButton");
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(connection.device(), "/dev/tty0");
    EXPECT_EQ(connection.label, "tty0");
    EXPECT_EQ(connection.baud(), 38400);
    EXPECT_EQ(Setting("CSerialConnection:device"), "/dev/tty0");
    EXPECT_EQ(Setting("CSerialConnection:baud"), "0x9600");

    CSerialConnection again;
    Configure(again);
    EXPECT_EQ(Find("port")->property("currentText").toString(), "tty0");
    EXPECT_EQ(Find("baud")->property("currentText").toString(), "38400");
    Choose("baud", -1);
    Click("acceptButton");
    EXPECT_EQ(answer, false) << "a row is missing";
    EXPECT_TRUE(WaitClosed());
    Configure(again);
    Choose("baud", 0);
    Key(Qt::Key_Escape);
    EXPECT_EQ(answer, false);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(again.baud(), 38400);
}

TEST_F(SetupDialogs, TcpTakesHostPortAndOptions)
{
    CTCPIPConnection connection;
    Configure(connection);
    ExpectUsable({"host", "port", "instantAcquisition", "reconnect", "acceptButton", "rejectButton"});
    EXPECT_EQ(Find("host")->property("text").toString(), "192.168.15.1");
    EXPECT_EQ(Find("port")->property("text").toString(), "39150");
    EXPECT_FALSE(Find("reconnect")->property("checked").toBool());
    Type("host", " mux.local ");
    Type("port", "70000");
    Click("acceptButton");
    EXPECT_FALSE(answer) << "the dialog stays";
    EXPECT_EQ(Find("problem")->property("text").toString(), "The port is a number from 1 to 65535");
    Type("host", " ");
    Click("acceptButton");
    EXPECT_EQ(Find("problem")->property("text").toString(), "The host is missing");
    Type("host", " mux.local ");
    Type("port", "10110");
    Click("reconnect");
    Click("instantAcquisition");
    Click("port");
    Key(Qt::Key_Return);
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(connection.setup().host, "mux.local");
    EXPECT_EQ(connection.setup().port, 10110);
    EXPECT_TRUE(connection.setup().reconnect && connection.setup().instant_acquisition);
    EXPECT_EQ(Setting("CTCPIPConnection:ip_address"), "mux.local");
    EXPECT_EQ(Setting("CTCPIPConnection:port"), "0x277e");
    EXPECT_EQ(Setting("CTCPIPConnection:reconnect"), "1");
    EXPECT_EQ(Setting("CTCPIPConnection:instant_acquisition"), "1");

    Configure(connection);
    EXPECT_TRUE(Find("reconnect")->property("checked").toBool());
    Type("host", "other");
    Click("rejectButton");
    EXPECT_EQ(answer, false);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(CTCPIPConnection().setup().host, "mux.local");
}

TEST_F(SetupDialogs, UdpTakesAPort)
{
    CUDPConnection connection;
    Configure(connection);
    ExpectUsable({"port", "acceptButton", "rejectButton"});
    for (const char* wrong : {"", "0", "65536", "12x", "-5", "1 2", "99999999999999999999"}) {
        Type("port", wrong);
        Click("acceptButton");
        EXPECT_FALSE(answer) << wrong;
        ASSERT_NE(Find("problem"), nullptr) << wrong;
    }
    Type("port", " 65535 ");
    Click("acceptButton");
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(connection.port(), 65535);
    EXPECT_EQ(Setting("CUDPConnection:port"), "0xffff");
    Configure(connection);
    Click("rejectButton");
    EXPECT_EQ(answer, false);
    EXPECT_TRUE(WaitClosed());
}

TEST_F(SetupDialogs, WithoutAWindowTheAnswerIsNo)
{
    SetUiContext(nullptr);
    CSerialConnection serial;
    CTCPIPConnection tcp;
    CUDPConnection udp;
    CNMEASimulation simulation;
    for (CDataConnection* connection : std::initializer_list<CDataConnection*>{&serial, &tcp, &udp, &simulation}) {
        answer.reset();
        connection->Configure({}, [this](bool accepted) { answer = accepted; });
        EXPECT_EQ(answer, false);
    }
    answer.reset();
    CDataConnection::SelectConnectionType({}, [this](bool opened) { answer = opened; });
    EXPECT_EQ(answer, false);
    SetUiContext(ui.get());
}

/// The menu of types.
class ConnectionMenu : public SetupDialogs {
protected:
    void Select()
    {
        answer.reset();
        CDataConnection::SelectConnectionType(ZT_HWND(ui->layer, 20, 20), [this](bool opened) { answer = opened; });
        EXPECT_TRUE(WaitFor([&] { return Entry("None") != nullptr; }));
    }
    QQuickItem* Entry(const char* text) const
    {
        return FindIn(ui->window->contentItem(), [&](const QQuickItem* item) {
            return item->property("isMenuEntry").isValid() && item->property("text").toString() == text;
        });
    }
    bool WaitAnswered() const
    {
        return WaitFor([this] { return answer.has_value(); });
    }
};

TEST_F(ConnectionMenu, AChoiceOpensTheConnection)
{
    CDataConnection::gps_connection_type = CDataConnection::kUDP;
    Select();
    EXPECT_TRUE(Entry("UDP/IP")->property("highlighted").toBool() ||
                Entry("UDP/IP")->property("appearance").toInt() == Appearance::kCurrent);
    EXPECT_EQ(Entry("Serial")->property("appearance").toInt(), Appearance::kNormal);
    QTest::qWait(250); // the menu's opening
    Click(Entry("None"));
    EXPECT_TRUE(WaitAnswered());
    EXPECT_EQ(answer, true);
    EXPECT_EQ(CDataConnection::gps_connection_type, CDataConnection::kNone);
    EXPECT_TRUE(WaitClosed());
}

TEST_F(ConnectionMenu, AClosedMenuChangesNothing)
{
    CDataConnection::gps_connection_type = CDataConnection::kNone;
    CDataConnection::CreateConnection();
    const CDataConnection* const before = CDataConnection::theConnection;
    Select();
    Key(Qt::Key_Escape);
    EXPECT_TRUE(WaitAnswered());
    EXPECT_EQ(answer, false);
    EXPECT_EQ(CDataConnection::theConnection, before);
    EXPECT_EQ(CDataConnection::gps_connection_type, CDataConnection::kNone);
    EXPECT_TRUE(WaitClosed());
}

TEST_F(ConnectionMenu, FromTheMenuThroughTheDialogToData)
{
    Select();
    QTest::qWait(250);
    Click(Entry("UDP/IP"));
    ASSERT_TRUE(WaitOpened());
    Type("port", "47113");
    Click("acceptButton");
    EXPECT_EQ(answer, true) << sink.status;
    EXPECT_TRUE(WaitClosed());
    QUdpSocket sender;
    const std::string line = Water(11);
    sender.writeDatagram(line.data(), static_cast<qint64>(line.size()), QHostAddress::LocalHost, 47113);
    EXPECT_TRUE(WaitFor([&] { return heard == std::vector<int>{11}; }));
}

} // namespace
