#pragma once

#include "core/listener.h"
#include "nmea/instrument_sentences.h"

/// Makes the true wind, damped in two time scales, of what the instrument network sends ready-made, and publishes the
/// faster one through Listener<CDataTrueWind>; who wants the average reads theAverageTrueWind.
class Feed_TrueWind_from_MWD : Listener<CNMEA_Instruments::MWD> {
public:
    static Feed_TrueWind_from_MWD the_feed;

    Feed_TrueWind_from_MWD() { Connect(); }
    void OnUpdate(CNMEA_Instruments::MWD& sentence) override;
};
