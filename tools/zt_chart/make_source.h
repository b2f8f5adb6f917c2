#pragma once

#include "tools/common/cubic_fit.h"

#include <functional>
#include <string>

#include <QImage>

/// A picture with its place on the earth, what `make` starts from. Pixel (0, 0) is the picture's top left corner.
struct CMakeSource {
    QImage image;
    pixel_to_position position; ///< empty when the input tells no place
    std::string world_file;     ///< the one that told the place; empty when none did
};

/// Where the position of a picture's pixels comes from when it is given by hand; at most one is set.
struct CMakePlace {
    std::string world_file;
    std::vector<double> bounds;  ///< south, west, north, east, degrees; or empty
    std::vector<double> corners; ///< latitude, longitude of top left, top right, bottom right, bottom left; or empty
    bool mercator = false;       ///< rows are evenly spaced on Mercator, not in latitude; for `bounds`

    bool Given() const { return !world_file.empty() || !bounds.empty() || !corners.empty(); }
};

/// Reads a picture through Qt, or what Qt cannot read through GDAL, with its place: as given, else from a world file
/// beside it, else as GDAL tells. False, with `error` set, when one of the two is not to be had.
bool ReadMakeSource(const std::string& path, const CMakePlace& place, CMakeSource& out, std::string& error);

/// What GDAL reads (see gdal_source.cpp); false with `error` in a build without it. `with_image` false asks for the
/// place alone.
bool ReadGdalSource(const std::string& path, bool with_image, CMakeSource& out, std::string& error);
