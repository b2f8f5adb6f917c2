#include "nmea/transports/network_name.h"

std::string getCurrentNetworkName()
{
    return {};
}
