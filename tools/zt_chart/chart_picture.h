#pragma once

#include "chart/rastelle.h"

#include <QImage>

/// A rectangle of output pixels at a level of a chart (see CRastelle::ReadRectRGB): output pixel 0 begins at chart
/// pixel 0, so chart pixel x is output pixel x / 2^level, rounded down.
struct CPictureRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

inline constexpr int kLowestLevel = -2;
inline constexpr int kHighestLevel = 6;

/// The pixels of ReadRectRGB; null when a tile could not be read.
QImage ReadPicture(CRastelle& chart, const CPictureRect& rect, int level);
/// The same as palette indices, with the chart's palette as the colour table.
QImage ReadIndexPicture(CRastelle& chart, const CPictureRect& rect, int level);
