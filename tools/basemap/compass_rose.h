#pragma once

#include "tools/basemap/free_space.h"
#include "tools/basemap/land_mask.h"
#include "tools/basemap/sheet_marks.h"

/// Draws compass roses (true north, which is up) where a chart has open sea and room: one for each part of the chart of
/// about the size of a window.
void DrawCompassRoses(const CChartSheet& sheet, const CLandMask& land, CSheetMarks& marks, CFreeSpace& space);
