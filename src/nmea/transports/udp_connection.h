#pragma once

#include "nmea/data_connection.h"
#include "nmea/line_assembler.h"

#include <string>

#include <QObject>
#include <QUdpSocket>

/// Sentences from the datagrams that arrive at a port, on all interfaces. It receives only. A line may span datagrams.
/// `closed` is cleared by Open even when it fails.
class CUDPConnection : public QObject, public CDataConnection {
    Q_OBJECT

public:
    class Persistant;
    static int last_port;            ///< setting
    static std::string last_network; ///< setting: name of the network that it was set up in; empty: any

    CUDPConnection();

    /// Keeps port and present network as the settings.
    static void Remember(int port_number);
    /// Uses the port, in whatever network.
    bool Setup(int port_number);
    void Configure(ZT_HWND view, const std::function<void(bool)>& done) override;
    bool Open() override;
    void Close() override;

    int port() const { return m_port; }

private slots:
    void onDataAvailable();

private:
    static constexpr int kDatagramSize = 4000; ///< what is longer is cut

    bool IsBound() const { return socket.state() == QAbstractSocket::BoundState; }
    bool RefillBuffer();
    void ReadLines();
    void DiscardInput();

    QUdpSocket socket;
    int m_port = 0;
    std::string required_network;
    CLineAssembler assembler;
    char datagram[kDatagramSize];
    int read_position = 0;
    int read_end = 0;
    int datagrams_left = 0;  ///< that this read may still take
    bool is_drained = false; ///< this read found no more datagram
};
