#include "tools/basemap/graticule.h"

#include <cmath>

namespace {

constexpr double kSteps[] = {1.0 / 12, 1.0 / 6, 0.25, 0.5, 1, 2, 5, 10, 15, 30}; // degrees
constexpr double kLeastDistance = 215.0;                                         // pixels between meridians

QString AngleText(double degrees, char positive, char negative)
{
    const int minutes = static_cast<int>(std::lround(std::abs(degrees) * 60));
    QString text = QString::number(minutes / 60) + QChar(0xB0);
    if (minutes % 60 != 0) text += QStringLiteral("%1'").arg(minutes % 60, 2, 10, QLatin1Char('0'));
    if (minutes != 0) text += QLatin1Char(degrees > 0 ? positive : negative);
    return text;
}

} // namespace

CGraticule::CGraticule(const CChartSheet& sheet)
{
    for (const double candidate : kSteps) {
        step = candidate;
        if (candidate * sheet.PixelsPerDegree() >= kLeastDistance) break;
    }
    meridians = MeridiansOf(sheet, step);
    parallels = ParallelsOf(sheet, step);
}

std::vector<CGraticule::CLine> CGraticule::MeridiansOf(const CChartSheet& sheet, double step)
{
    std::vector<CLine> lines;
    for (double i = std::ceil(sheet.West() / step); i * step <= sheet.East(); i += 1) {
        lines.push_back({i * step, sheet.XAt(i * step)});
    }
    return lines;
}

std::vector<CGraticule::CLine> CGraticule::ParallelsOf(const CChartSheet& sheet, double step)
{
    std::vector<CLine> lines;
    for (double i = std::ceil(sheet.South() / step); i * step <= sheet.North(); i += 1) {
        lines.push_back({i * step, sheet.YAt(i * step)});
    }
    return lines;
}

QString CGraticule::LatitudeText(double degrees)
{
    return AngleText(degrees, 'N', 'S');
}

QString CGraticule::LongitudeText(double degrees)
{
    const double turned = degrees - 360.0 * std::floor((degrees + 180.0) / 360.0);
    if (std::abs(std::abs(turned) - 180.0) < 1e-6) return QStringLiteral("180") + QChar(0xB0);
    return AngleText(turned, 'E', 'W');
}
