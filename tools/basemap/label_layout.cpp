#include "tools/basemap/label_layout.h"

#include "tools/basemap/chart_palette.h"
#include "tools/basemap/lettering.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGap = 3.0;        // pixels kept free around a name
constexpr double kGreatSeas = 1.5;  // prominence from which a sea is set before the roses
constexpr double kTooLarge = 7.5;   // prominence at which a name means more than the chart shows
constexpr double kMostShore = 0.45; // share of land under the name of a sea

/// How the names of a kind look at a prominence (zoom levels beyond the one from which they are worth showing).
CLettering LetteringOf(PlaceKind kind, double prominence)
{
    CLettering look;
    const double p = std::max(prominence, 0.0);
    switch (kind) {
    case PlaceKind::sea:
        look.italic = true;
        look.size_px = std::min(13.0 + 2.4 * p, 32.0);
        look.spacing_px = look.size_px > 18 ? look.size_px * 0.14 : 0.5;
        break;
    case PlaceKind::country:
        look.capitals = true;
        look.weight = QFont::Medium;
        look.size_px = std::min(12.0 + 1.8 * p, 24.0);
        look.spacing_px = look.size_px * 0.22;
        break;
    case PlaceKind::island:
        look.italic = true;
        look.size_px = std::min(12.0 + 1.0 * p, 18.0);
        break;
    case PlaceKind::cape:
        look.italic = true;
        look.condensed = true;
        look.size_px = std::min(12.0 + 0.4 * p, 14.0);
        break;
    case PlaceKind::lake:
        look.italic = true;
        look.size_px = std::min(12.0 + 1.0 * p, 17.0);
        break;
    case PlaceKind::town:
        look.size_px = std::min(12.0 + 0.8 * p, 17.0);
        look.weight = p > 2.5 ? QFont::Medium : QFont::Normal;
        break;
    }
    return look;
}

QRgb ColourOf(PlaceKind kind)
{
    switch (kind) {
    case PlaceKind::sea:
    case PlaceKind::lake:
        return chart_colours::kSeaText;
    case PlaceKind::country:
        return chart_colours::kCountryText;
    case PlaceKind::island:
    case PlaceKind::cape:
        return chart_colours::kCapeText;
    case PlaceKind::town:
        break;
    }
    return chart_colours::kText;
}

/// The rim around a name: of the ground it mostly stands on, so that it does not show as a patch.
QColor HaloOf(PlaceKind kind)
{
    QColor halo(kind == PlaceKind::sea ? chart_colours::kSea
                                       : (kind == PlaceKind::country ? chart_colours::kLand : chart_colours::kHalo));
    halo.setAlphaF(kind == PlaceKind::sea || kind == PlaceKind::country ? 0.85F : 0.72F);
    return halo;
}

/// How early a kind comes among names of the same prominence.
double Precedence(PlaceKind kind)
{
    switch (kind) {
    case PlaceKind::country:
        return 2.5;
    case PlaceKind::sea:
        return 0.6;
    case PlaceKind::island:
        return 0.5;
    case PlaceKind::lake:
        return 0.0;
    case PlaceKind::town:
        return 0.2;
    case PlaceKind::cape:
        break;
    }
    return -0.4;
}

} // namespace

struct CLabelLayout::CName {
    const CPlace* place;
    double prominence;
    double x; ///< chart pixels
    double y;
};

CLabelLayout::CLabelLayout(const CChartSheet& on_sheet, const CLandMask& its_land, CSheetMarks& into,
                           CFreeSpace& its_space)
    : sheet(on_sheet), land(its_land), marks(into), space(its_space)
{}

std::vector<CLabelLayout::CName> CLabelLayout::Choose(const std::vector<CPlace>& places, bool great_seas) const
{
    std::vector<CName> names;
    for (const CPlace& place : places) {
        const bool early = place.kind == PlaceKind::country || (place.kind == PlaceKind::sea && place.rank == 0);
        const double prominence = sheet.Zoom() - (place.rank + (early ? 1 : 2));
        const bool great = place.kind == PlaceKind::sea && prominence >= kGreatSeas;
        if (prominence < 0.0 || great != great_seas || (place.kind != PlaceKind::town && prominence > kTooLarge))
            continue;
        for (const double turn : {-360.0, 0.0, 360.0}) {
            const CName name{&place, prominence, sheet.XAt(place.lon + turn), sheet.YAt(place.lat)};
            if (name.x > 0 && name.x < sheet.Width() && name.y > 0 && name.y < sheet.Height()) names.push_back(name);
        }
    }
    std::stable_sort(names.begin(), names.end(), [](const CName& a, const CName& b) {
        return a.prominence + Precedence(a.place->kind) > b.prominence + Precedence(b.place->kind);
    });
    return names;
}

double CLabelLayout::ReachOf(const CPlace& place) const
{
    return place.size_nm / 60.0 * sheet.PixelsPerDegree();
}

void CLabelLayout::SetAll(const std::vector<CName>& names)
{
    constexpr double kSmallIsland = 45.0; // pixels; a name does not fit into one, it stands beside
    constexpr double kSmallCountry = 70.0;
    constexpr double kPeninsula = 12.0; // a cape has no extent
    for (const CName& name : names) {
        const PlaceKind kind = name.place->kind;
        const double reach = ReachOf(*name.place);
        // An island state's name stands for its island too.
        if (kind == PlaceKind::island && countries.count(name.place->name) != 0) continue;
        if (kind == PlaceKind::country) countries.insert(name.place->name);
        if (kind == PlaceKind::town)
            SetTown(name);
        else if ((kind == PlaceKind::cape && reach < kPeninsula) || (kind == PlaceKind::island && reach < kSmallIsland))
            SetBeside(name, LetteringOf(kind, name.prominence), 0.8 * reach);
        else if (kind == PlaceKind::country && reach < kSmallCountry)
            SetBeside(name, LetteringOf(kind, 0.0), 0.9 * reach);
        else
            SetArea(name);
    }
}

void CLabelLayout::SetGreatSeas(const std::vector<CPlace>& places)
{
    SetAll(Choose(places, true));
}

void CLabelLayout::SetNames(const std::vector<CPlace>& places)
{
    SetAll(Choose(places, false));
}

std::optional<QPointF> CLabelLayout::FindWithin(const CName& name, const QRectF& box) const
{
    const PlaceKind kind = name.place->kind;
    const double reach = std::max(ReachOf(*name.place), 20.0);
    const double step_x = std::min(reach * 0.25, box.width() * 0.4);
    const double step_y = std::min(reach * 0.25, box.height() * 1.2);
    double best_cost = 1e300;
    std::optional<QPointF> best;
    for (int row = -2; row <= 2; ++row) {
        for (int column = -2; column <= 2; ++column) {
            const QPointF at(name.x + column * step_x, name.y + row * step_y);
            const QRectF place = box.translated(at);
            if (!space.IsFree(place)) continue;
            const double share = land.LandShare(place);
            if (kind == PlaceKind::sea && share > kMostShore) continue;
            const double wrong = kind == PlaceKind::sea ? share : kind == PlaceKind::country ? 1 - share : 0.0;
            const double cost = wrong * 6 + std::abs(row) * 0.3 + std::abs(column) * 0.25;
            if (cost >= best_cost) continue;
            best_cost = cost;
            best = at;
        }
    }
    return best;
}

std::optional<QPointF> CLabelLayout::FindBeside(const CName& name, const QRectF& box, double radius) const
{
    const double dx = box.width() / 2 + radius + 4;
    const double dy = box.height() / 2 + radius + 4;
    const double low = dy * 0.72; // a little under the name's middle, so that its corner meets the dot
    const QPointF offsets[] = {{dx, 0}, {-dx, 0}, {dx, -low}, {dx, low}, {-dx, -low}, {-dx, low}, {0, -dy}, {0, dy}};
    double best_cost = 1e300;
    double preference = 0.0;
    std::optional<QPointF> best;
    for (const QPointF& offset : offsets) {
        const QPointF at(name.x + offset.x(), name.y + offset.y());
        const QRectF place = box.translated(at);
        preference += 0.07;
        if (!space.IsFree(place)) continue;
        const double share = land.LandShare(place);
        const double cost = preference + std::min(share, 1 - share) * 1.5;
        if (cost >= best_cost) continue;
        best_cost = cost;
        best = at;
    }
    return best;
}

void CLabelLayout::Place(const CName& name, const QPainterPath& outline, const QRectF& box, const QPointF& at)
{
    const PlaceKind kind = name.place->kind;
    const bool wide = kind == PlaceKind::sea || kind == PlaceKind::country;
    space.Take(box.translated(at));
    marks.AddText(outline.translated(at), QColor(ColourOf(kind)), HaloOf(kind), wide ? 2.2 : 1.6);
}

bool CLabelLayout::SetArea(const CName& name)
{
    const CLettering look = LetteringOf(name.place->kind, name.prominence);
    const QPainterPath outline = look.Outline(QString::fromStdString(name.place->name));
    const QRectF box = outline.boundingRect().adjusted(-kGap, -kGap, kGap, kGap);
    const auto at = FindWithin(name, box);
    if (at) Place(name, outline, box, *at);
    return at.has_value();
}

bool CLabelLayout::SetBeside(const CName& name, const CLettering& look, double radius)
{
    const QPainterPath outline = look.Outline(QString::fromStdString(name.place->name));
    const QRectF box = outline.boundingRect().adjusted(-kGap, -kGap, kGap, kGap);
    const auto at = FindBeside(name, box, std::max(0.0, radius - kGap));
    if (at) Place(name, outline, box, *at);
    return at.has_value();
}

bool CLabelLayout::SetTown(const CName& name)
{
    const int population = name.place->population;
    const double radius = population >= 1000000 ? 3.4 : population >= 100000 ? 2.8 : 2.2;
    const QRectF dot(name.x - radius - 1, name.y - radius - 1, 2 * radius + 2, 2 * radius + 2);
    if (!space.IsFree(dot) || !SetBeside(name, LetteringOf(PlaceKind::town, name.prominence), radius + kGap))
        return false;
    space.Take(dot);
    QPainterPath circle;
    circle.addEllipse(QPointF(name.x, name.y), radius, radius);
    marks.Add(circle, QColor(chart_colours::kHalo), QColor(chart_colours::kText), 1.3);
    return true;
}

bool CLabelLayout::SetSmallDegree(const QString& text, double x, double y)
{
    CLettering look;
    look.size_px = 12;
    look.condensed = true;
    const QPainterPath outline = look.Outline(text).translated(x, y);
    const QRectF box = outline.boundingRect().adjusted(-kGap, -kGap, kGap, kGap);
    // On land the line goes without: a figure there reads as a height.
    if (!space.IsFree(box) || land.LandShare(box) > 0.0) return false;
    space.Take(box);
    marks.AddText(outline, QColor(chart_colours::kGraticuleText), QColor(chart_colours::kSea), 2.5);
    return true;
}

void CLabelLayout::SetDegrees(const CGraticule& graticule)
{
    const double cell_px = graticule.step * sheet.PixelsPerDegree();
    const int every = std::max(2, static_cast<int>(std::lround(900.0 / cell_px)));
    for (std::size_t row = 0; row < graticule.parallels.size(); ++row) {
        for (std::size_t column = 0; column < graticule.meridians.size(); ++column) {
            const auto& meridian = graticule.meridians[column];
            const auto& parallel = graticule.parallels[row];
            const std::size_t phase = column + (row % 2) * static_cast<std::size_t>(every / 2);
            if (phase % static_cast<std::size_t>(every) != 0) continue;
            SetSmallDegree(CGraticule::LatitudeText(parallel.degrees), meridian.pixel + cell_px * 0.5, parallel.pixel);
            const double below = row > 0 ? graticule.parallels[row - 1].pixel : parallel.pixel + cell_px;
            SetSmallDegree(CGraticule::LongitudeText(meridian.degrees), meridian.pixel, (parallel.pixel + below) / 2);
        }
    }
}
