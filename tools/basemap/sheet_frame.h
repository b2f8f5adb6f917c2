#pragma once

#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/free_space.h"
#include "tools/basemap/graticule.h"
#include "tools/basemap/sheet_marks.h"

/// The edge of a chart: a white strip with degrees, title, scale, origin and the notice, and a bar of alternating black
/// and white minutes or degrees on its inner side. A world chart has no edge at its sides, where it joins itself.
class CSheetFrame {
public:
    static constexpr double kStrip = 24.0;  ///< pixels of the white strip
    static constexpr double kNotice = 22.0; ///< more of it below, for the texts
    static constexpr double kBar = 7.0;     ///< pixels of the bar

    /// Draws into `marks` and takes the edge from `space`.
    static void Draw(const CChartSheet& sheet, const CGraticule& graticule, CSheetMarks& marks, CFreeSpace& space);
    /// "1:1,500,000".
    static QString ScaleText(const CChartSheet& sheet);
    /// The words of the notice and of the origin.
    static const char* const kNotForNavigation;
    static const char* const kOrigin;
};
