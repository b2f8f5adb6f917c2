#include "navdata/feeds/ais_target_manager.h"
#include "nmea/transports/instant_targets.h"

namespace {

/// Hands the list that a connection fetched to the keeper of targets; a damaged one is left out.
const struct CInstantListReader {
    CInstantListReader()
    {
        CInstantTargets::ReadInstantTargets = [](const std::string& path) {
            CAISTargetManager::the_manager.ReadInstantTargets(path);
        };
    }
} instant_list_reader;

} // namespace
