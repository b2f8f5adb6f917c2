#pragma once

#include "nmea/transports/setup_dialog.h"

class CTCPIPConnection;

/// Where the TCP server is.
class CDlg_tcp_setup : public CNetworkSetupDialog {
    Q_OBJECT
    Q_PROPERTY(QString host READ host CONSTANT)
    Q_PROPERTY(QString port READ port CONSTANT)
    Q_PROPERTY(bool instantAcquisition READ instantAcquisition CONSTANT)
    Q_PROPERTY(bool reconnect READ reconnect CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_tcp_setup.qml";
    using CNetworkSetupDialog::CNetworkSetupDialog;

    static void show_dialog(ZT_HWND view, CTCPIPConnection* connection, const std::function<void(bool)>& done);
    void Init(CTCPIPConnection* to_set_up) { connection = to_set_up; }

    QString host() const;
    QString port() const;
    bool instantAcquisition() const;
    bool reconnect() const;

    /// Takes the values and closes. A host or port that cannot be one leaves the dialog open, with the problem.
    Q_INVOKABLE void accept(const QString& host, const QString& port, bool instant_acquisition, bool reconnect);

private:
    CTCPIPConnection* connection = nullptr;
};
