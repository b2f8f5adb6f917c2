#pragma once

#include "tools/common/cubic_fit.h"

#include <cstdint>
#include <string>
#include <vector>

/// One chart that the build renders, a row of the list of charts.
struct CSheetPlan {
    std::string name; ///< of the file, without folder and extension
    std::string title;
    double scale = 0.0; ///< N of the scale 1:N at the middle latitude (a world chart: at the equator)
    double south = 0.0; ///< degrees
    double north = 0.0;
    double west = 0.0;
    double east = 0.0; ///< above 180 for a chart over the date line

    bool IsWorld() const { return east - west >= 360.0; }
};

/// Reads the list of charts; false, with `error` naming the line, when it cannot be read.
bool ReadSheetPlans(const std::string& path, std::vector<CSheetPlan>& out, std::string& error);

/// How a planned chart lies on its pixels: whole tiles that cover the planned limits.
///
/// Regional charts are Mercator. No cubic follows Mercator over a hemisphere, so a world chart has parallels at the
/// height phi + phi^3 / 8 (phi in radians), which a cubic tells exactly and which comes close to Miller's cylindrical
/// projection.
class CChartSheet {
public:
    /// Metres that a pixel measures on the screen, for the scale 1:N (0.28 mm, the standard pixel of OGC 06-042).
    static constexpr double kPixelMetres = 0.00028;

    explicit CChartSheet(const CSheetPlan& plan);

    int Width() const { return width; }                   ///< pixels, a multiple of the tile's side
    int Height() const { return height; }                 ///< pixels
    double PixelsPerDegree() const { return per_degree; } ///< of longitude
    /// log2 of the world's width in units of 256 pixels.
    double Zoom() const;
    double West() const { return west; }
    double East() const { return west + width / per_degree; }
    double South() const { return LatitudeAt(height); }
    double North() const { return LatitudeAt(0.0); }

    double XAt(double lon) const { return (lon - west) * per_degree; }
    double YAt(double lat) const;
    double LongitudeAt(double x) const { return west + x / per_degree; }
    double LatitudeAt(double y) const;

    std::optional<CGeoFit> Fit() const;

    CSheetPlan plan;

private:
    double Stretched(double lat) const; ///< height of a parallel above the equator, in degrees of longitude

    bool world;
    int width = 0;
    int height = 0;
    double per_degree = 0.0;
    double west = 0.0;
    double top = 0.0; ///< Stretched() of the upper edge
};
