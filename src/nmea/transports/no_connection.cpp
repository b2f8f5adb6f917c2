#include "nmea/transports/no_connection.h"

bool CNoConnection::Open()
{
    status = "GPS Connection set to \"None\"";
    closed = false;
    return true;
}
