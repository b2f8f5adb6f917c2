#include "nmea/transports/qml_register_transports.h"

#include "nmea/transports/serial_setup.h"
#include "nmea/transports/tcp_setup.h"
#include "nmea/transports/udp_setup.h"

#include <QtQml>

void qml_register_transports()
{
    constexpr const char* module = "com.zentara.zt";
    qmlRegisterType<CDlg_serial_setup>(module, 1, 0, "CDlg_serial_setup");
    qmlRegisterType<CDlg_tcp_setup>(module, 1, 0, "CDlg_tcp_setup");
    qmlRegisterType<CDlg_udp_setup>(module, 1, 0, "CDlg_udp_setup");
}
