#pragma once

#include "core/bounds.h"
#include "core/geometry.h"

#include <string>
#include <vector>

/// One area (outer ring and holes, closed) or one open line; vertices are (longitude, latitude), degrees.
struct CWorldShape {
    float min_zoom = 0.0F;  ///< drawn from this zoom on; at zoom z the world is 256 * 2^z pixels wide
    bool antarctic = false; ///< land that is nearly all under ice
    CBounds bounds;
    std::vector<std::vector<DblPoint>> parts;
};

/// What the vector files hold, layer by layer.
struct CWorldData {
    std::vector<CWorldShape> land;
    std::vector<CWorldShape> lakes;
    std::vector<CWorldShape> ice;
    std::vector<CWorldShape> rivers;
    std::vector<CWorldShape> borders;
};

/// Reads a gzip-compressed vector file (its format: data/world/README.md). False, with `error` set, when it is not
/// readable as one.
bool ReadWorldData(const std::string& path, CWorldData& out, std::string& error);
