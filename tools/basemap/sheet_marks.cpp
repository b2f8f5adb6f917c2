#include "tools/basemap/sheet_marks.h"

#include <QPainter>

void CSheetMarks::Add(const QPainterPath& path, const QColor& fill, const QColor& stroke, double stroke_px)
{
    const double margin = stroke_px / 2 + 2;
    marks.push_back({path, fill, stroke, stroke_px, path.boundingRect().adjusted(-margin, -margin, margin, margin)});
}

void CSheetMarks::AddText(const QPainterPath& text, const QColor& colour, const QColor& halo, double halo_px)
{
    Add(text, halo, halo, 2 * halo_px);
    Add(text, colour);
}

void CSheetMarks::PaintBand(QPainter& painter, double top, double bottom) const
{
    painter.save();
    painter.translate(0, -top);
    for (const CSheetMark& mark : marks) {
        if (mark.bounds.bottom() < top || mark.bounds.top() > bottom) continue;
        const QPen pen(mark.stroke, mark.stroke_px, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(mark.stroke.isValid() ? pen : QPen(Qt::NoPen));
        painter.setBrush(mark.fill.isValid() ? QBrush(mark.fill) : QBrush(Qt::NoBrush));
        painter.drawPath(mark.path);
    }
    painter.restore();
}
