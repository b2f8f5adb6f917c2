#pragma once

#include "chart/square_map.h"
#include "core/geometry.h"

class QPainter;

/// Paints a grid of squares: its own where they are there, otherwise what the coarser or the finer level has for the
/// cell. `offset` leads from level coordinates to the painter's. A coarser square covers the cells under it that come
/// before the last empty one, row by row, even those that have their own. `placeholders` is set when a square of the
/// grid stands in for missing data. Allocates nothing once the squares have their pixmaps.
void PaintSquares(QPainter& painter, const square_map& map, const DblPoint& offset, bool& placeholders);
