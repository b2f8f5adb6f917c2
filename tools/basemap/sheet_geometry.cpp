#include "tools/basemap/sheet_geometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMargin = 8.0;          // pixels around the chart that lines may need
constexpr double kThinning = 0.45;       // pixels; below what antialiasing shows
constexpr double kMercatorLimit = 85.05; // degrees
constexpr std::size_t kChunk = 48;       // segments of a solid line that are drawn together
constexpr std::size_t kWhole = ~std::size_t{0};

/// Projects onto one chart; longitudes are moved by `turn` degrees first.
class CProjector {
public:
    CProjector(const CChartSheet& on_sheet, double turn_degrees)
        : sheet(on_sheet)
        , turn(turn_degrees)
        , frame{-kMargin, -kMargin, sheet.Width() + kMargin, sheet.Height() + kMargin}
    {}

    bool MayShow(const CWorldShape& shape) const
    {
        const CBounds& b = shape.bounds;
        const double margin = kMargin / sheet.PixelsPerDegree();
        return shape.min_zoom <= sheet.Zoom() && b.lon_max + turn >= sheet.West() - margin &&
               b.lon_min + turn <= sheet.East() + margin && b.lat_max >= sheet.South() - margin &&
               b.lat_min <= sheet.North() + margin;
    }
    CPixelLine Project(const std::vector<DblPoint>& points) const
    {
        CPixelLine line;
        line.reserve(points.size());
        for (const DblPoint& p : points) {
            line.push_back({sheet.XAt(p.x + turn), sheet.YAt(std::clamp(p.y, -kMercatorLimit, kMercatorLimit))});
        }
        return line;
    }
    void AddRing(const CPixelLine& ring, CSheetAreas& areas) const
    {
        CPixelLine clipped = ClipRing(ring, frame);
        ThinOut(clipped, kThinning);
        if (clipped.size() > 2) areas.rings.push_back(std::move(clipped));
    }
    void AddLine(CPixelLine line, std::size_t longest, CSheetLines& lines) const
    {
        ThinOut(line, kThinning);
        ClipLine(line, frame, longest, lines.lines);
    }

private:
    const CChartSheet& sheet;
    double turn;
    FRect frame;
};

bool IsCut(const DblPoint& a, const DblPoint& b)
{
    const auto at_date_line = [](const DblPoint& p) { return std::abs(p.x) > 179.99999; };
    const auto at_pole = [](const DblPoint& p) { return p.y < -89.99999; };
    return (at_date_line(a) && at_date_line(b)) || (at_pole(a) && at_pole(b));
}

/// The ring's edges without those that only close a cut.
void AddShore(const CProjector& projector, const std::vector<DblPoint>& ring, const CPixelLine& pixels,
              CSheetLines& shore)
{
    CPixelLine run;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const std::size_t next = i + 1 < ring.size() ? i + 1 : 0;
        if (IsCut(ring[i], ring[next])) {
            if (run.size() > 1) projector.AddLine(std::move(run), kChunk, shore);
            run.clear();
            continue;
        }
        if (run.empty()) run.push_back(pixels[i]);
        run.push_back(pixels[next]);
    }
    if (run.size() > 1) projector.AddLine(std::move(run), kChunk, shore);
}

template <class Visit>
void ForEachShown(const CChartSheet& sheet, const std::vector<CWorldShape>& layer, Visit visit)
{
    for (const double turn : {-360.0, 0.0, 360.0}) {
        const CProjector projector(sheet, turn);
        for (const CWorldShape& shape : layer) {
            if (projector.MayShow(shape)) visit(projector, shape);
        }
    }
}

void AddAreas(const CChartSheet& sheet, const std::vector<CWorldShape>& layer, CSheetAreas& areas, CSheetAreas& icy,
              CSheetLines& shore)
{
    ForEachShown(sheet, layer, [&](const CProjector& projector, const CWorldShape& shape) {
        for (const auto& part : shape.parts) {
            const CPixelLine pixels = projector.Project(part);
            projector.AddRing(pixels, shape.antarctic ? icy : areas);
            AddShore(projector, part, pixels, shore);
        }
    });
    shore.FindBounds();
}

void AddLines(const CChartSheet& sheet, const std::vector<CWorldShape>& layer, std::size_t longest, CSheetLines& lines)
{
    ForEachShown(sheet, layer, [&](const CProjector& projector, const CWorldShape& shape) {
        for (const auto& part : shape.parts) projector.AddLine(projector.Project(part), longest, lines);
    });
    lines.FindBounds();
}

} // namespace

QPainterPath CSheetAreas::Band(double top, double bottom) const
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const FRect band{-1e9, top - kMargin, 1e9, bottom + kMargin};
    for (const CPixelLine& ring : rings) {
        const CPixelLine clipped = ClipRing(ring, band);
        if (clipped.size() < 3) continue;
        path.moveTo(clipped.front().x, clipped.front().y - top);
        for (std::size_t i = 1; i < clipped.size(); ++i) path.lineTo(clipped[i].x, clipped[i].y - top);
        path.closeSubpath();
    }
    return path;
}

void CSheetLines::FindBounds()
{
    bounds.clear();
    for (const CPixelLine& line : lines) bounds.push_back(BoundsOf(line));
}

CSheetGeometry::CSheetGeometry(const CChartSheet& sheet, const CWorldData& data)
{
    CSheetLines shelf_front;
    AddAreas(sheet, data.land, land, ice_land, shore);
    AddAreas(sheet, data.ice, ice_shelf, ice_shelf, shelf_front);
    AddAreas(sheet, data.lakes, lakes, lakes, lake_shore);
    AddLines(sheet, data.rivers, kChunk, rivers);
    // Dashes run on along a whole line.
    AddLines(sheet, data.borders, kWhole, borders);
}
