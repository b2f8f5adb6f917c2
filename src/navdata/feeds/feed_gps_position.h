#pragma once

#include "core/listener.h"
#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"

#include <cstdint>

/// Makes the own ship's position of the receivers' sentences. Of several receivers one wins: a combined one (GN) before
/// GPS (GP) before all others. RMC sets the position; GGA and VTG do so only until the first RMC has been taken. A
/// position of exactly 0, 0, outside -90..90 and -180..180, or not finite is no position.
class CFeedRMC_to_GPSPosition : Listener<CNMEA_GPS::RMC>,
                                Listener<CNMEA_GPS::GGA>,
                                Listener<CNMEA_GPS::VTG>,
                                Listener<CNMEA_GPS::GSV>,
                                Listener<CNMEA_GPS::GSA>,
                                Listener<CNMEA_Instruments::HDG> {
public:
    static CFeedRMC_to_GPSPosition the_feed;

    CFeedRMC_to_GPSPosition();

    /// Whether a sentence of `talker` is taken, where `current` is the talker taken so far (0: none); moves `current`.
    /// While there is no fix every talker may take over.
    static bool check_talker(char talker, char& current);

    void OnUpdate(CNMEA_GPS::RMC& sentence) override;
    void OnUpdate(CNMEA_GPS::GGA& sentence) override;
    void OnUpdate(CNMEA_GPS::VTG& sentence) override;
    void OnUpdate(CNMEA_GPS::GSV& sentence) override;
    void OnUpdate(CNMEA_GPS::GSA& sentence) override;
    /// Sets the heading without publishing it: it reaches listeners with the next position.
    void OnUpdate(CNMEA_Instruments::HDG& sentence) override;

private:
    void TakePosition(double lat, double lon);

    char rmc_talker = 0;
    char gsv_talker = 0;
    bool rmc_seen = false;
    bool gga_seen = false;
    std::uint8_t active[CNMEA_GPS::GSA::kChannels] = {}; ///< satellites of the last GSA; 0: none
};
