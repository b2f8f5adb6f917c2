#include "tools/basemap/compass_rose.h"

#include "tools/basemap/chart_palette.h"
#include "tools/basemap/lettering.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace {

constexpr double kCellWidth = 2200.0; // pixels of the part of a chart that gets one rose
constexpr double kCellHeight = 1700.0;
constexpr double kRoseMargin = 22.0;

QPointF OnCircle(double radius, double bearing)
{
    const double angle = bearing * std::numbers::pi / 180.0;
    return {radius * std::sin(angle), -radius * std::cos(angle)};
}

QPainterPath Ticks(double outer)
{
    QPainterPath path;
    for (int degree = 0; degree < 360; degree += 2) {
        const double length = degree % 30 == 0 ? 11.0 : degree % 10 == 0 ? 8.0 : 4.0;
        path.moveTo(OnCircle(outer, degree));
        path.lineTo(OnCircle(outer - length, degree));
    }
    return path;
}

/// One half of a point of the star: `side` is -1 or 1.
QPainterPath HalfPoint(double length, double shoulder, double bearing, double side)
{
    QPainterPath path;
    path.lineTo(OnCircle(length, bearing));
    path.lineTo(OnCircle(shoulder, bearing + side * 45.0));
    path.closeSubpath();
    return path;
}

void DrawStar(double radius, const QPointF& at, CSheetMarks& marks)
{
    const QColor ink(chart_colours::kRose);
    for (const bool minor : {true, false}) {
        for (int point = 0; point < 4; ++point) {
            const double bearing = point * 90.0 + (minor ? 45.0 : 0.0);
            const double length = radius * (minor ? 0.42 : 0.66);
            const double shoulder = radius * (minor ? 0.10 : 0.13);
            marks.Add(HalfPoint(length, shoulder, bearing, 1).translated(at), ink, ink, 0.8);
            marks.Add(HalfPoint(length, shoulder, bearing, -1).translated(at), QColor(chart_colours::kHalo), ink, 0.8);
        }
    }
}

void DrawRose(double radius, const QPointF& at, CSheetMarks& marks)
{
    const QColor ink(chart_colours::kRose);
    QPainterPath rings;
    rings.addEllipse(at, radius, radius);
    rings.addEllipse(at, radius - 14, radius - 14);
    marks.Add(rings, {}, ink, 1.2);
    marks.Add(Ticks(radius).translated(at), {}, ink, 1.0);
    DrawStar(radius, at, marks);
    CLettering figures;
    figures.size_px = radius > 70 ? 11.0 : 10.0;
    figures.condensed = true;
    for (int degree = 0; degree < 360; degree += 30) {
        QTransform place;
        place.translate(at.x(), at.y());
        place.rotate(degree);
        place.translate(0, -(radius - 14 - figures.size_px * 0.75));
        marks.Add(place.map(figures.Outline(QString::number(degree))), ink);
    }
    CLettering north;
    north.size_px = radius * 0.2;
    north.weight = QFont::Medium;
    marks.Add(north.Outline(QStringLiteral("N")).translated(at.x(), at.y() - radius - north.size_px * 0.75), ink);
}

/// The free place of open sea nearest to the middle of a part of the chart.
std::optional<QPointF> FindPlace(const QRectF& cell, double radius, const CLandMask& land, const CFreeSpace& space)
{
    constexpr double kGrid = 40.0;
    std::optional<QPointF> best;
    double best_distance = 1e300;
    const double reach = radius + kRoseMargin;
    for (double y = cell.top(); y < cell.bottom(); y += kGrid) {
        for (double x = cell.left(); x < cell.right(); x += kGrid) {
            const double distance = std::hypot(x - cell.center().x(), y - cell.center().y());
            if (distance >= best_distance) continue;
            const QRectF box(x - reach, y - reach - radius * 0.3, 2 * reach, 2 * reach + radius * 0.3);
            if (!space.IsFree(box) || land.LandShare(box.adjusted(-20, -20, 20, 20)) > 0.0) continue;
            best_distance = distance;
            best = QPointF(x, y);
        }
    }
    return best;
}

} // namespace

void DrawCompassRoses(const CChartSheet& sheet, const CLandMask& land, CSheetMarks& marks, CFreeSpace& space)
{
    const double radius = sheet.Width() > 2100 || !sheet.plan.IsWorld() ? 88.0 : 58.0;
    const int across = std::max(1, static_cast<int>(sheet.Width() / kCellWidth));
    const int down = std::max(1, static_cast<int>(sheet.Height() / kCellHeight));
    const QSizeF size(static_cast<double>(sheet.Width()) / across, static_cast<double>(sheet.Height()) / down);
    for (int row = 0; row < down; ++row) {
        for (int column = 0; column < across; ++column) {
            const QRectF cell(QPointF(column * size.width(), row * size.height()), size);
            const auto place = FindPlace(cell, radius, land, space);
            if (!place) continue;
            DrawRose(radius, *place, marks);
            const double reach = radius + 8;
            space.Take(
                QRectF(place->x() - reach, place->y() - reach - radius * 0.25, 2 * reach, 2 * reach + radius * 0.25));
        }
    }
}
