#pragma once

#include "tools/basemap/chart_sheet.h"

#include <vector>

#include <QString>

/// The meridians and parallels of a chart.
struct CGraticule {
    struct CLine {
        double degrees; ///< longitude may pass 180
        double pixel;   ///< x of a meridian, y of a parallel
    };

    explicit CGraticule(const CChartSheet& sheet);

    double step = 0.0; ///< degrees between lines
    std::vector<CLine> meridians;
    std::vector<CLine> parallels;

    /// The multiples of `step` on the chart's edges.
    static std::vector<CLine> MeridiansOf(const CChartSheet& sheet, double step);
    static std::vector<CLine> ParallelsOf(const CChartSheet& sheet, double step);
    /// "50°N", "4°30'W", "180°".
    static QString LatitudeText(double degrees);
    static QString LongitudeText(double degrees);
};
