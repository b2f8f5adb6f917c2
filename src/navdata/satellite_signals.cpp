#include "navdata/satellite_signals.h"

void CDataGPSSatelliteSignals::ClearTable()
{
    for (Satellite& satellite : table) satellite = Satellite();
}
