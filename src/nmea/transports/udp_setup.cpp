#include "nmea/transports/udp_setup.h"

#include "nmea/transports/port_number.h"
#include "nmea/transports/udp_connection.h"

void CDlg_udp_setup::show_dialog(ZT_HWND view, CUDPConnection* connection, const std::function<void(bool)>& done)
{
    ShowSetupDialog<CDlg_udp_setup>(view, connection, done);
}

QString CDlg_udp_setup::port() const
{
    return QString::number(connection->port());
}

void CDlg_udp_setup::accept(const QString& port)
{
    const int number = PortFromText(port.toStdString());
    if (Refuse(number == 0 ? QString::fromUtf8(kPortProblem) : QString())) return;
    CUDPConnection::Remember(number);
    connection->Setup(number);
    closeDialog(kAccepted);
}
