#include "tools/basemap/chart_sheet.h"

#include "chart/rastelle_header.h"
#include "core/files.h"
#include "core/numbers.h"
#include "core/text.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr double kMetresPerDegree = 6378137.0 * kRadians; // of the equator, WGS 84
constexpr double kWorldCubic = 1.0 / 8.0;

int WholeTiles(double pixels)
{
    return static_cast<int>(std::ceil(pixels / kTileSide - 1e-6)) * kTileSide;
}

bool ParsePlan(const std::string& line, CSheetPlan& plan)
{
    std::vector<std::string> columns;
    break_string_args(line, '\t', columns);
    if (columns.size() != 7) return false;
    double* const numbers[] = {&plan.scale, &plan.south, &plan.north, &plan.west, &plan.east};
    for (std::size_t i = 0; i < 5; ++i) {
        const auto number = ParseDouble(columns[i + 2]);
        if (!number) return false;
        *numbers[i] = *number;
    }
    plan.name = columns[0];
    plan.title = columns[1];
    return plan.scale > 0.0 && plan.south < plan.north && plan.west < plan.east && plan.east - plan.west <= 360.0 &&
           plan.south > -85.0 && plan.north < 85.0;
}

} // namespace

bool ReadSheetPlans(const std::string& path, std::vector<CSheetPlan>& out, std::string& error)
{
    std::string text;
    error = "cannot read " + path;
    if (!read_whole_file(path, text)) return false;
    std::vector<std::string> lines;
    break_string_args(text, '\n', lines);
    for (const std::string& line : lines) {
        if (line.front() == '#') continue;
        error = path + ": " + line;
        if (!ParsePlan(line, out.emplace_back())) return false;
    }
    error.clear();
    return true;
}

CChartSheet::CChartSheet(const CSheetPlan& planned) : plan(planned), world(planned.IsWorld()), west(planned.west)
{
    const double middle = world ? 0.0 : (plan.south + plan.north) / 2;
    per_degree = kMetresPerDegree * std::cos(middle * kRadians) / (plan.scale * kPixelMetres);
    if (world) {
        width = static_cast<int>(std::lround(360.0 * per_degree / kTileSide)) * kTileSide;
        per_degree = width / 360.0;
    } else {
        width = WholeTiles((plan.east - plan.west) * per_degree);
        west -= (width / per_degree - (plan.east - plan.west)) / 2;
    }
    top = Stretched(plan.north);
    const double wanted = (top - Stretched(plan.south)) * per_degree;
    height = WholeTiles(wanted);
    if (!world) top += (height - wanted) / per_degree / 2;
}

double CChartSheet::Zoom() const
{
    return std::log2(per_degree * 360.0 / 256.0);
}

double CChartSheet::Stretched(double lat) const
{
    const double phi = lat * kRadians;
    return (world ? phi + kWorldCubic * phi * phi * phi : std::asinh(std::tan(phi))) / kRadians;
}

double CChartSheet::YAt(double lat) const
{
    return (top - Stretched(lat)) * per_degree;
}

double CChartSheet::LatitudeAt(double y) const
{
    const double stretched = (top - y / per_degree) * kRadians;
    if (!world) return std::atan(std::sinh(stretched)) / kRadians;
    double phi = stretched;
    for (int i = 0; i < 30; ++i) {
        phi -= (phi + kWorldCubic * phi * phi * phi - stretched) / (1 + 3 * kWorldCubic * phi * phi);
    }
    return phi / kRadians;
}

std::optional<CGeoFit> CChartSheet::Fit() const
{
    return FitGeoReference(ControlGrid(width, height, [this](double x, double y) {
        return std::optional(CControlPoint{x, y, LatitudeAt(y), LongitudeAt(x)});
    }));
}
