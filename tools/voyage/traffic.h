#pragma once

#include "tools/voyage/ais_writer.h"

#include <string>
#include <vector>

/// A ship that goes to and fro along a line of positions.
struct CTrafficShip {
    struct CPlace {
        double lat; ///< degrees
        double lon; ///< degrees
    };

    CAisShip data;
    bool class_b = false;
    double speed = 0.0; ///< knots; 0: at anchor at the first place
    std::vector<CPlace> way;
    double start_metres = 0.0; ///< along the way, at the beginning

    /// Where it is so many seconds after the beginning.
    CAisMotion At(double seconds) const;
};

/// The ships round the voyage; names and numbers are invented.
std::vector<CTrafficShip> SolentTraffic();

/// Writes what is due of each ship in the `interval` seconds that end at `seconds` after the start.
void WriteTraffic(CSentenceWriter& out, const std::vector<CTrafficShip>& ships, double seconds, double interval,
                  double start_time);
