#pragma once

#include <cstdint>

/// The satellites that the receiver hears. Published through Listener<CDataGPSSatelliteSignals>.
struct CDataGPSSatelliteSignals {
    static constexpr int kSlots = 24;

    /// From GSV sentences a is the elevation, b the azimuth (low 8 bits), c the signal strength; from the location
    /// service a is the signal strength, b the elevation, c the azimuth.
    struct Satellite {
        std::uint8_t prn = 0; ///< 0: the record is empty
        std::uint8_t a = 0;
        bool in_use = false;
        std::uint8_t b = 0;
        std::uint16_t c = 0;
    };

    Satellite table[kSlots];
    int satellites_in_view = 0;
    int satellites_in_use = 0;

    void ClearTable();
};
