#include "nmea/transports/tcp_setup.h"

#include "nmea/transports/port_number.h"
#include "nmea/transports/tcp_connection.h"

void CDlg_tcp_setup::show_dialog(ZT_HWND view, CTCPIPConnection* connection, const std::function<void(bool)>& done)
{
    ShowSetupDialog<CDlg_tcp_setup>(view, connection, done);
}

QString CDlg_tcp_setup::host() const
{
    return QString::fromStdString(connection->setup().host);
}

QString CDlg_tcp_setup::port() const
{
    return QString::number(connection->setup().port);
}

bool CDlg_tcp_setup::instantAcquisition() const
{
    return connection->setup().instant_acquisition;
}

bool CDlg_tcp_setup::reconnect() const
{
    return connection->setup().reconnect;
}

void CDlg_tcp_setup::accept(const QString& host, const QString& port, bool instant_acquisition, bool reconnect)
{
    const int number = PortFromText(port.toStdString());
    const std::string server = host.trimmed().toStdString();
    const auto problem = server.empty() ? QStringLiteral("The host is missing")
                         : number == 0  ? QString::fromUtf8(kPortProblem)
                                        : QString();
    if (Refuse(problem)) return;
    CTCPIPConnection::Remember({server, number, instant_acquisition, reconnect});
    connection->SetReconnect(reconnect);
    connection->Setup(server, number, instant_acquisition);
    closeDialog(kAccepted);
}
