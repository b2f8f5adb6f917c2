#pragma once

#include "nmea/transports/setup_dialog.h"

#include <QStringList>

class CSerialConnection;

/// Chooses the serial port and its speed.
class CDlg_serial_setup : public CConnectionSetupDialog {
    Q_OBJECT
    Q_PROPERTY(QStringList ports READ ports CONSTANT)
    Q_PROPERTY(int portRow READ portRow CONSTANT)
    Q_PROPERTY(QStringList bauds READ bauds CONSTANT)
    Q_PROPERTY(int baudRow READ baudRow CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_serial_setup.qml";
    using CConnectionSetupDialog::CConnectionSetupDialog;

    static void show_dialog(ZT_HWND view, CSerialConnection* connection, const std::function<void(bool)>& done);
    void Init(CSerialConnection* to_set_up);

    /// Name and description of each port.
    QStringList ports() const { return m_labels; }
    /// Bits per second.
    static QStringList bauds();
    /// The rows of what is in use; -1: none of the list.
    int portRow() const { return m_port_row; }
    int baudRow() const { return m_baud_row; }

    /// Takes the chosen rows and closes; without a row in each list nothing is taken.
    Q_INVOKABLE void accept(int port_row, int baud_row);

private:
    CSerialConnection* connection = nullptr;
    QStringList m_labels;
    QStringList m_devices; ///< path of each row
    int m_port_row = -1;
    int m_baud_row = -1;
};
