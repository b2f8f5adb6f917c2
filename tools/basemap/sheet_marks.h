#pragma once

#include <vector>

#include <QColor>
#include <QPainterPath>
#include <QRectF>

class QPainter;

/// One shape drawn over the map: a fill, an outline, or both. Chart pixels.
struct CSheetMark {
    QPainterPath path;
    QColor fill;            ///< invalid for none
    QColor stroke;          ///< invalid for none
    double stroke_px = 0.0; ///< round joins
    QRectF bounds;          ///< of all that is painted
};

/// Everything that lies over the map of one chart, in order of painting.
class CSheetMarks {
public:
    void Add(const QPainterPath& path, const QColor& fill, const QColor& stroke = {}, double stroke_px = 0.0);
    /// A text with a rim around it that sets it off from what it covers.
    void AddText(const QPainterPath& text, const QColor& colour, const QColor& halo, double halo_px);
    /// Paints what touches rows `top` to `bottom`, moved up by `top`.
    void PaintBand(QPainter& painter, double top, double bottom) const;

private:
    std::vector<CSheetMark> marks;
};
