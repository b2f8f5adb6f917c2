#pragma once

#include "tools/voyage/boat_model.h"
#include "tools/voyage/sentence_writer.h"

#include <string>
#include <vector>

/// How a voyage is written down.
struct CVoyageOptions {
    double interval = 8.0;            ///< seconds between two fixes
    double start_time = 1781429400.0; ///< seconds since 1970; 2026-06-14 09:30 UTC
    bool traffic = true;              ///< with the AIS sentences of other ships
};

/// The demo voyage: from the Needles through the Solent against the wind and with the stream, to an anchorage off
/// St Helens, and out again.
CBoatModel SolentVoyage();

/// Sails the boat to its end and gives the log, with the sentences of a well-equipped yacht: RMC, GGA, VTG, HDG, VHW,
/// MWV (apparent and true), MWD and DPT with every fix; GSA, GSV and MTW now and then.
std::string WriteVoyage(CBoatModel boat, const CVoyageOptions& options = {});
