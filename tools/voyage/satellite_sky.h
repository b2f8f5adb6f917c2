#pragma once

#include "tools/voyage/sentence_writer.h"

#include <vector>

/// The satellites over the boat: an invented sky that turns slowly.
class CSatelliteSky {
public:
    explicit CSatelliteSky(double seconds);
    int InUse() const;
    /// GSA and the series of GSV.
    void Write(CSentenceWriter& out) const;

private:
    struct CSatellite {
        int prn;
        int elevation; ///< degrees
        int azimuth;   ///< degrees
        int snr;       ///< dB
        bool InUse() const { return elevation >= 12; }
    };
    std::vector<CSatellite> above;
};
