#include "nmea/transports/serial_setup.h"

#include "core/numbers.h"
#include "nmea/transports/serial_connection.h"

#include <QSerialPortInfo>

void CDlg_serial_setup::show_dialog(ZT_HWND view, CSerialConnection* connection, const std::function<void(bool)>& done)
{
    ShowSetupDialog<CDlg_serial_setup>(view, connection, done);
}

void CDlg_serial_setup::Init(CSerialConnection* to_set_up)
{
    connection = to_set_up;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const QString description = info.description();
        m_labels.append(description.isEmpty() ? info.portName() : info.portName() + " (" + description + ")");
        m_devices.append(info.systemLocation());
    }
    m_labels.append(QStringLiteral("tty0"));
    m_devices.append(QStringLiteral("/dev/tty0"));
    m_port_row = static_cast<int>(m_devices.indexOf(QString::fromStdString(connection->device())));
    m_baud_row = static_cast<int>(bauds().indexOf(QString::number(connection->baud())));
}

QStringList CDlg_serial_setup::bauds()
{
    return {"4800", "9600", "14400", "19200", "38400", "57600", "115200"};
}

void CDlg_serial_setup::accept(int port_row, int baud_row)
{
    const QStringList rates = bauds();
    if (port_row < 0 || port_row >= m_devices.size() || baud_row < 0 || baud_row >= rates.size()) {
        closeDialog(kRejected);
        return;
    }
    const std::string device = m_devices[port_row].toStdString();
    const int baud = ParseInt(rates[baud_row].toStdString()).value_or(0);
    connection->Setup(device, baud);
    CSerialConnection::Remember(device, baud);
    closeDialog(kAccepted);
}
