#include "nmea/transports/tcp_connection.h"

#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "core/text.h"
#include "nmea/transports/network_name.h"
#include "nmea/transports/port_number.h"
#include "nmea/transports/tcp_setup.h"

#include <cstring>

#include <QSignalBlocker>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

CTCPIPConnection::Options CTCPIPConnection::last_options;
std::string CTCPIPConnection::last_network;

class CTCPIPConnection::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CTCPIPConnection") {}

    void DeclareData() override
    {
        Declare("ip_address", last_options.host);
        Declare("port", last_options.port);
        Declare("network", last_network);
        Declare("instant_acquisition", last_options.instant_acquisition);
        Declare("reconnect", last_options.reconnect);
    }
};

namespace {

constexpr int kSocketBufferSize = 4000;
constexpr int kLinesPerTurn = 200;

CTCPIPConnection::Persistant tcp_persistor;

/// A server that lost its power says no good-bye: 20 s of silence are followed by three questions, 10 s apart.
void NoticeDeadServer(int handle)
{
    const int on = 1;
    const int idle_seconds = 20;
    const int interval_seconds = 10;
    const int questions = 3;
    setsockopt(handle, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    setsockopt(handle, IPPROTO_TCP, TCP_KEEPIDLE, &idle_seconds, sizeof idle_seconds);
    setsockopt(handle, IPPROTO_TCP, TCP_KEEPINTVL, &interval_seconds, sizeof interval_seconds);
    setsockopt(handle, IPPROTO_TCP, TCP_KEEPCNT, &questions, sizeof questions);
}

} // namespace

CTCPIPConnection::CTCPIPConnection() : Counter(1), options(last_options), required_network(last_network)
{
    debuggable = true;
    socket.setReadBufferSize(kSocketBufferSize);
    connect(&socket, &QTcpSocket::readyRead, this, &CTCPIPConnection::onDataAvailable);
    connect(&socket, &QTcpSocket::connected, this, &CTCPIPConnection::onConnected);
    connect(&socket, &QTcpSocket::stateChanged, this, &CTCPIPConnection::onStateChanged);
}

CTCPIPConnection::~CTCPIPConnection()
{
    Close();
}

void CTCPIPConnection::Remember(const Options& chosen)
{
    last_options = chosen;
    last_network = getCurrentNetworkName();
    tcp_persistor.SetModified();
    PersistantData::SaveAll();
}

bool CTCPIPConnection::Setup(const std::string& host, int port, bool instant_acquisition)
{
    options.host = host;
    options.port = port;
    options.instant_acquisition = instant_acquisition;
    required_network.clear();
    return true;
}

void CTCPIPConnection::Configure(ZT_HWND view, const std::function<void(bool)>& done)
{
    CDlg_tcp_setup::show_dialog(view, this, done);
}

bool CTCPIPConnection::Open()
{
    closed = false;
    if (!required_network.empty() && required_network != getCurrentNetworkName()) {
        status = "TCP connection set up for " + required_network;
        return false;
    }
    instant_targets.Cancel();
    if (options.instant_acquisition && options.port == CInstantTargets::kSentencePort) instant_targets.Prepare();
    ConnectToHost();
    return true;
}

void CTCPIPConnection::ConnectToHost()
{
    pause.Cancel();
    assembler.Reset();
    if (socket.state() != QAbstractSocket::UnconnectedState) {
        const QSignalBlocker no_loss(&socket);
        socket.abort();
    }
    if (!IsPortNumber(options.port)) return;
    socket.connectToHost(QString::fromStdString(options.host), static_cast<quint16>(options.port));
}

void CTCPIPConnection::Close()
{
    closed = true;
    instant_targets.Cancel();
    if (socket.state() != QAbstractSocket::UnconnectedState) socket.abort();
    pause.Cancel();
}

bool CTCPIPConnection::Output(const char* text)
{
    const auto length = static_cast<qint64>(std::strlen(text));
    if (!socket.isOpen() || socket.write(text, length) < length) {
        status = "Output failed";
        return false;
    }
    DebugLog(text);
    return true;
}

void CTCPIPConnection::onConnected()
{
    if (options.reconnect) {
        NoticeDeadServer(static_cast<int>(socket.socketDescriptor()));
        if (!status.empty()) ClearStatusMessage();
        status.clear();
    }
    instant_targets.Fetch(options.host);
}

void CTCPIPConnection::onStateChanged()
{
    if (socket.state() == QAbstractSocket::UnconnectedState && options.reconnect && !closed) NoteLost();
}

void CTCPIPConnection::NoteLost()
{
    pause.Begin();
    status = stringprintf("No TCP connection to %s, port %d: trying again", options.host.c_str(), options.port);
    SetStatusMessage(status);
}

void CTCPIPConnection::OnHeartbeat()
{
    if (!pause.Tick()) return;
    if (socket.state() == QAbstractSocket::UnconnectedState) ConnectToHost();
}

void CTCPIPConnection::onDataAvailable()
{
    ReadLines();
    if (socket.bytesAvailable() == 0) return;
    // The socket tells of data that wait only when more arrive.
    QMetaObject::invokeMethod(this, &CTCPIPConnection::onDataAvailable, Qt::QueuedConnection);
}

void CTCPIPConnection::ReadLines()
{
    int lines = 0;
    char byte = 0;
    while (socket.getChar(&byte)) {
        const CLineAssembler::Result result = assembler.Add(byte, *this);
        if (result == CLineAssembler::kLineOpen) continue;
        if (result == CLineAssembler::kOverflow) return;
        pause.Worked();
        if (++lines < kLinesPerTurn) continue;
        DiscardInput();
        return;
    }
}

void CTCPIPConnection::DiscardInput()
{
    char byte = 0;
    while (socket.getChar(&byte)) {
    }
    DebugLog("Error: too many sentences - discarding the input buffer");
}
