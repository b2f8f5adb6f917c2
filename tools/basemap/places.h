#pragma once

#include <string>
#include <vector>

enum class PlaceKind { country, sea, island, cape, lake, town };

/// One name of the place list.
struct CPlace {
    std::string name; ///< UTF-8
    double lat = 0.0; ///< degrees
    double lon = 0.0; ///< degrees
    int population = 0;
    PlaceKind kind = PlaceKind::town;
    int rank = 9;         ///< 0 most important; worth showing from zoom rank + 2
    double size_nm = 0.0; ///< half the extent; 0 for a point
};

/// Reads the place list (data/world/README.md), keeping its order; false when it cannot be read.
bool ReadPlaces(const std::string& path, std::vector<CPlace>& out);
