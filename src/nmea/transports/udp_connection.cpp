#include "nmea/transports/udp_connection.h"

#include "core/persistant_data.h"
#include "core/text.h"
#include "nmea/transports/network_name.h"
#include "nmea/transports/port_number.h"
#include "nmea/transports/udp_setup.h"

#include <algorithm>

int CUDPConnection::last_port = 2000;
std::string CUDPConnection::last_network;

class CUDPConnection::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CUDPConnection") {}

    void DeclareData() override
    {
        Declare("port", last_port);
        Declare("network", last_network);
    }
};

namespace {

constexpr int kLinesPerRead = 200;
/// A flood must leave the main thread something: reading goes on at the next turn of the event loop.
constexpr int kDatagramsPerRead = 100;
constexpr int kMostDiscarded = 1000; ///< datagrams; more than a system keeps for a socket

CUDPConnection::Persistant udp_persistor;

} // namespace

CUDPConnection::CUDPConnection() : m_port(last_port), required_network(last_network)
{
    debuggable = true;
    connect(&socket, &QUdpSocket::readyRead, this, &CUDPConnection::onDataAvailable);
}

void CUDPConnection::Remember(int port_number)
{
    last_port = port_number;
    last_network = getCurrentNetworkName();
    udp_persistor.SetModified();
    PersistantData::SaveAll();
}

bool CUDPConnection::Setup(int port_number)
{
    m_port = port_number;
    required_network.clear();
    return true;
}

void CUDPConnection::Configure(ZT_HWND view, const std::function<void(bool)>& done)
{
    CDlg_udp_setup::show_dialog(view, this, done);
}

bool CUDPConnection::Open()
{
    closed = false;
    if (!required_network.empty() && required_network != getCurrentNetworkName()) {
        status = "UDP connection not opened because current network is not " + required_network;
        return false;
    }
    if (!IsPortNumber(m_port)) {
        status = stringprintf("Socket bind failed: %d is not a port", m_port);
        return false;
    }
    if (!socket.bind(QHostAddress::Any, static_cast<quint16>(m_port), QAbstractSocket::ShareAddress)) {
        status = stringprintf("Socket bind failed: %s", socket.errorString().toUtf8().constData());
        return false;
    }
    return true;
}

void CUDPConnection::Close()
{
    if (IsBound()) socket.close();
    read_position = read_end = 0;
    assembler.Reset();
    closed = true;
}

void CUDPConnection::onDataAvailable()
{
    if (!IsBound()) return;
    datagrams_left = kDatagramsPerRead;
    is_drained = false;
    ReadLines();
    if (is_drained || !IsBound()) return;
    // Of data that wait already the socket does not tell again.
    QMetaObject::invokeMethod(this, &CUDPConnection::onDataAvailable, Qt::QueuedConnection);
}

bool CUDPConnection::RefillBuffer()
{
    read_position = read_end = 0;
    while (datagrams_left-- > 0) {
        // Read until there is none, whatever hasPendingDatagrams says: only a read makes the socket tell of the next.
        const qint64 size = socket.readDatagram(datagram, kDatagramSize);
        is_drained = size < 0;
        if (is_drained) return false;
        read_end = static_cast<int>(std::min<qint64>(size, kDatagramSize));
        if (read_end > 0) return true; // an empty datagram is none
    }
    return false;
}

void CUDPConnection::ReadLines()
{
    int lines = 0;
    while (read_position < read_end || RefillBuffer()) {
        const CLineAssembler::Result result = assembler.Add(datagram[read_position++], *this);
        if (result == CLineAssembler::kLineOpen) continue;
        if (result == CLineAssembler::kOverflow) return;
        if (++lines < kLinesPerRead) continue;
        DiscardInput();
        return;
    }
}

void CUDPConnection::DiscardInput()
{
    datagrams_left = kMostDiscarded;
    while (RefillBuffer()) {
    }
    DebugLog("Error: too many sentences - discarding the input buffer");
}
