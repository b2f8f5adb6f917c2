#pragma once

#include "core/heartbeat.h"
#include "nmea/data_connection.h"
#include "nmea/line_assembler.h"
#include "nmea/transports/instant_targets.h"
#include "nmea/transports/reconnect_pause.h"

#include <string>

#include <QObject>
#include <QTcpSocket>

/// Sentences from a TCP server, and to it. Opening does not wait for the connection. A connection that is lost stays so
/// unless the user asked for reconnecting: then it is tried again after a pause that grows from 2 to 60 seconds.
/// `closed` is cleared by Open even when it fails.
class CTCPIPConnection : public QObject, public CDataConnection, protected CHeartbeat::Counter {
    Q_OBJECT

public:
    class Persistant;
    /// What the user sets up; also kept as the class's settings.
    struct Options {
        std::string host = "192.168.15.1";
        int port = 39150;
        bool instant_acquisition = false; ///< fetch the list of targets of a Vesper AIS unit
        bool reconnect = false;
    };
    static Options last_options;     ///< setting
    static std::string last_network; ///< setting: name of the network that it was set up in; empty: any

    CTCPIPConnection();
    ~CTCPIPConnection() override;

    /// Keeps options and present network as the settings.
    static void Remember(const Options& chosen);
    /// Uses the server, in whatever network.
    bool Setup(const std::string& host, int port, bool instant_acquisition);
    void SetReconnect(bool on) { options.reconnect = on; }
    void Configure(ZT_HWND view, const std::function<void(bool)>& done) override;
    bool Open() override;
    void Close() override;
    bool Output(const char* text) override;

    using CDataConnection::OnUpdate;

    const Options& setup() const { return options; }

protected:
    /// Counts the pause before the next attempt.
    void OnHeartbeat() override;

private slots:
    void onDataAvailable();
    void onConnected();
    void onStateChanged();

private:
    void ConnectToHost();
    void NoteLost();
    void ReadLines();
    void DiscardInput();

    QTcpSocket socket;
    Options options;
    std::string required_network;
    CInstantTargets instant_targets;
    CReconnectPause pause;
    CLineAssembler assembler;
};
