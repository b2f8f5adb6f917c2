#include "nmea/transports/location_service.h"
#include "nmea/transports/no_connection.h"
#include "nmea/transports/serial_connection.h"
#include "nmea/transports/simulation.h"
#include "nmea/transports/tcp_connection.h"
#include "nmea/transports/udp_connection.h"

namespace {

using Type = CDataConnection::CConnectionType;

template <class T>
CDataConnection* Make()
{
    return new T;
}

// Each joins at the head of the list: the menu shows them from the last to the first.
Type none_type("None", CDataConnection::kNone, Make<CNoConnection>);
Type simulation_type("Simulation File", CDataConnection::kSimulationFile, Make<CNMEASimulation>);
Type tcp_type("TCP/IP", CDataConnection::kTCP, Make<CTCPIPConnection>);
Type udp_type("UDP/IP", CDataConnection::kUDP, Make<CUDPConnection>);
Type location_type("Location Service", CDataConnection::kLocationService, Make<CLocationServiceConnection>);
Type serial_type("Serial", CDataConnection::kSerial, Make<CSerialConnection>);

} // namespace
