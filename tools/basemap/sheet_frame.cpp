#include "tools/basemap/sheet_frame.h"

#include "tools/basemap/chart_palette.h"
#include "tools/basemap/lettering.h"

#include <cmath>

#include <QLocale>

const char* const CSheetFrame::kNotForNavigation = "NOT FOR NAVIGATION";
const char* const CSheetFrame::kOrigin =
    "Shorelines, rivers, borders: GSHHG 2.3.7 (LGPL).  Names: GeoNames (CC BY 4.0)";

namespace {

constexpr double kLeastPiece = 14.0; // pixels of one piece of the bar
constexpr double kDegreeSize = 13.0;
constexpr double kTextSize = 14.0;

/// Draws the edge of one chart.
class CFramePainter {
public:
    CFramePainter(const CChartSheet& on_sheet, const CGraticule& its_graticule, CSheetMarks& into)
        : sheet(on_sheet)
        , graticule(its_graticule)
        , marks(into)
        , width(on_sheet.Width())
        , height(on_sheet.Height())
        , side(on_sheet.plan.IsWorld() ? 0.0 : CSheetFrame::kStrip)
        , top(CSheetFrame::kStrip)
        , bottom(height - CSheetFrame::kStrip - CSheetFrame::kNotice)
    {}

    void Draw()
    {
        DrawStrips();
        DrawBars();
        DrawDegrees();
        DrawTexts();
    }

private:
    void Rectangle(double left, double upper, double right, double lower, QRgb colour)
    {
        QPainterPath path;
        path.addRect(
            QRectF(QPointF(std::round(left), std::round(upper)), QPointF(std::round(right), std::round(lower))));
        marks.Add(path, QColor(colour));
    }

    void DrawStrips()
    {
        Rectangle(0, 0, width, top, chart_colours::kHalo);
        Rectangle(0, bottom, width, height, chart_colours::kHalo);
        if (side <= 0) return;
        Rectangle(0, 0, side, height, chart_colours::kHalo);
        Rectangle(width - side, 0, width, height, chart_colours::kHalo);
    }

    /// The finest division of the graticule's step whose pieces are long enough to see.
    double PieceDegrees() const
    {
        double piece = graticule.step;
        for (const int parts : {2, 3, 4, 5, 6, 10, 12, 15, 20, 30}) {
            const double finer = graticule.step / parts;
            const bool round = std::abs(std::remainder(finer * 60, 1.0)) < 1e-6;
            if (round && finer * sheet.PixelsPerDegree() >= kLeastPiece) piece = finer;
        }
        return piece;
    }

    void DrawBars()
    {
        const double bar = CSheetFrame::kBar;
        const double left = side > 0 ? side : 0;
        const double right = side > 0 ? width - side : width;
        Rectangle(left, top, right, top + bar, chart_colours::kFrame);
        Rectangle(left, bottom - bar, right, bottom, chart_colours::kFrame);
        if (side > 0) {
            Rectangle(left, top, left + bar, bottom, chart_colours::kFrame);
            Rectangle(right - bar, top, right, bottom, chart_colours::kFrame);
        }
        const double piece = PieceDegrees();
        for (const auto& line : CGraticule::MeridiansOf(sheet, piece)) {
            if (std::llround(line.degrees / piece) % 2 != 0) continue;
            const double from = std::max(line.pixel, left + bar);
            const double to = std::min(line.pixel + piece * sheet.PixelsPerDegree(), side > 0 ? right - bar : right);
            if (to <= from) continue;
            Rectangle(from, top + 1, to, top + bar - 1, chart_colours::kHalo);
            Rectangle(from, bottom - bar + 1, to, bottom - 1, chart_colours::kHalo);
        }
        if (side <= 0) return;
        for (const auto& line : CGraticule::ParallelsOf(sheet, piece)) {
            if (std::llround(line.degrees / piece) % 2 != 0) continue;
            const double from = std::max(sheet.YAt(line.degrees + piece), top + bar);
            const double to = std::min(line.pixel, bottom - bar);
            if (to <= from) continue;
            Rectangle(left + 1, from, left + bar - 1, to, chart_colours::kHalo);
            Rectangle(right - bar + 1, from, right - 1, to, chart_colours::kHalo);
        }
    }

    void Text(const CLettering& lettering, const QString& text, double x, double y, QRgb colour, double turn = 0.0)
    {
        QTransform place;
        place.translate(x, y);
        place.rotate(turn);
        marks.Add(place.map(lettering.Outline(text)), QColor(colour));
    }

    void DrawDegrees()
    {
        CLettering degrees;
        degrees.size_px = kDegreeSize;
        degrees.condensed = true;
        constexpr double kRoom = 40.0; // from a corner
        for (const auto& line : graticule.meridians) {
            if (line.pixel < kRoom || line.pixel > width - kRoom) continue;
            const QString text = CGraticule::LongitudeText(line.degrees);
            Text(degrees, text, line.pixel, top / 2, chart_colours::kFrame);
            Text(degrees, text, line.pixel, bottom + CSheetFrame::kStrip / 2, chart_colours::kFrame);
        }
        if (side <= 0) return;
        for (const auto& line : graticule.parallels) {
            if (line.pixel < top + kRoom || line.pixel > bottom - kRoom) continue;
            const QString text = CGraticule::LatitudeText(line.degrees);
            Text(degrees, text, side / 2, line.pixel, chart_colours::kFrame, -90);
            Text(degrees, text, width - side / 2, line.pixel, chart_colours::kFrame, 90);
        }
    }

    void DrawTexts()
    {
        const double y = height - CSheetFrame::kNotice / 2 - 3;
        CLettering plain;
        plain.size_px = kTextSize;
        CLettering bold = plain;
        bold.weight = QFont::Medium;
        const QString middle =
            sheet.plan.IsWorld() ? QStringLiteral("at the equator") : QStringLiteral("at ") + MiddleLatitude();
        const QString title = QString::fromStdString(sheet.plan.title) + QStringLiteral("   ") +
                              CSheetFrame::ScaleText(sheet) + QLatin1Char(' ') + middle;
        const QPainterPath left = bold.Outline(title);
        marks.Add(left.translated(side + 6 + left.boundingRect().width() / 2, y), QColor(chart_colours::kFrame));
        const QPainterPath right = plain.Outline(QString::fromLatin1(CSheetFrame::kOrigin));
        marks.Add(right.translated(width - side - 6 - right.boundingRect().width() / 2, y),
                  QColor(chart_colours::kFrame));
        bold.spacing_px = 1.5;
        Text(bold, QString::fromLatin1(CSheetFrame::kNotForNavigation), MiddleBetween(left, right), y,
             chart_colours::kRose);
    }

    double MiddleBetween(const QPainterPath& left, const QPainterPath& right) const
    {
        return (side + left.boundingRect().width() + width - side - right.boundingRect().width()) / 2;
    }

    QString MiddleLatitude() const
    {
        const double middle = (sheet.plan.south + sheet.plan.north) / 2;
        return CGraticule::LatitudeText(std::round(middle * 2) / 2);
    }

    const CChartSheet& sheet;
    const CGraticule& graticule;
    CSheetMarks& marks;
    double width;
    double height;
    double side; ///< width of the strips at the sides
    double top;
    double bottom;
};

} // namespace

void CSheetFrame::Draw(const CChartSheet& sheet, const CGraticule& graticule, CSheetMarks& marks, CFreeSpace& space)
{
    CFramePainter(sheet, graticule, marks).Draw();
    const double edge = kStrip + kBar + 3;
    space.Take(QRectF(0, 0, sheet.Width(), edge));
    space.Take(QRectF(0, sheet.Height() - edge - kNotice, sheet.Width(), edge + kNotice));
    if (sheet.plan.IsWorld()) return;
    space.Take(QRectF(0, 0, edge, sheet.Height()));
    space.Take(QRectF(sheet.Width() - edge, 0, edge, sheet.Height()));
}

QString CSheetFrame::ScaleText(const CChartSheet& sheet)
{
    return QStringLiteral("1:") + QLocale(QLocale::English).toString(sheet.plan.scale, 'f', 0);
}
