#pragma once

#include "nmea/transports/setup_dialog.h"

class CUDPConnection;

/// The port that datagrams are expected at.
class CDlg_udp_setup : public CConnectionSetupDialog {
    Q_OBJECT
    Q_PROPERTY(QString network READ network CONSTANT)
    Q_PROPERTY(QString port READ port CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_udp_setup.qml";
    using CConnectionSetupDialog::CConnectionSetupDialog;

    static void show_dialog(ZT_HWND view, CUDPConnection* connection, const std::function<void(bool)>& done);
    void Init(CUDPConnection* to_set_up) { connection = to_set_up; }

    /// The network that the computer has joined.
    static QString network();
    QString port() const;
    /// Why the last acceptance was refused; empty: it was not.
    QString problem() const { return m_problem; }

    /// Takes the port and closes. What cannot be a port leaves the dialog open, with the problem.
    Q_INVOKABLE void accept(const QString& port);

signals:
    void problemChanged();

private:
    CUDPConnection* connection = nullptr;
    QString m_problem;
};
