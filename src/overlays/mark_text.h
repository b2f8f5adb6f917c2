#pragma once

#include "core/simple_grid.h"

#include <string>

/// "1.25 NM 045°T": where a place (degrees) lies for a reader at the grid's origin, in the user's units. Empty for a
/// reader without a position.
std::string DistanceAndBearingText(const CSimpleGrid& reader, double lat, double lon);
