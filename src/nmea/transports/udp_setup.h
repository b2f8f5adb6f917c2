#pragma once

#include "nmea/transports/setup_dialog.h"

class CUDPConnection;

/// The port that datagrams are expected at.
class CDlg_udp_setup : public CNetworkSetupDialog {
    Q_OBJECT
    Q_PROPERTY(QString port READ port CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_udp_setup.qml";
    using CNetworkSetupDialog::CNetworkSetupDialog;

    static void show_dialog(ZT_HWND view, CUDPConnection* connection, const std::function<void(bool)>& done);
    void Init(CUDPConnection* to_set_up) { connection = to_set_up; }

    QString port() const;

    /// Takes the port and closes. What cannot be a port leaves the dialog open, with the problem.
    Q_INVOKABLE void accept(const QString& port);

private:
    CUDPConnection* connection = nullptr;
};
