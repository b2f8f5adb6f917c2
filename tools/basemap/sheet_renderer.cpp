#include "tools/basemap/sheet_renderer.h"

#include "chart/chart_writer.h"
#include "tools/basemap/compass_rose.h"
#include "tools/basemap/label_layout.h"
#include "tools/basemap/land_mask.h"
#include "tools/basemap/sheet_frame.h"

#include <cmath>

#include <QPainter>

namespace {

constexpr int kBandTiles = 8; // tile rows painted at once

QPen LinePen(QRgb colour, double width)
{
    return {QColor(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

CSheetRenderer::CSheetRenderer(const CChartSheet& on_sheet, const CWorldData& data, const std::vector<CPlace>& places,
                               const CChartPalette& its_palette)
    : sheet(on_sheet)
    , palette(its_palette)
    , geometry(on_sheet, data)
    , graticule(on_sheet)
    , band(on_sheet.Width(), kBandTiles * kTileSide, QImage::Format_RGB32)
{
    const CLandMask land(sheet, geometry);
    CFreeSpace space(sheet.Width(), sheet.Height());
    CSheetFrame::Draw(sheet, graticule, marks, space);
    CLabelLayout labels(sheet, land, marks, space);
    labels.SetGreatSeas(places);
    DrawCompassRoses(sheet, land, marks, space);
    labels.SetNames(places);
    labels.SetDegrees(graticule);
}

void CSheetRenderer::TileRow(int tile_y, unsigned char* indices)
{
    const int first = tile_y - tile_y % kBandTiles;
    if (first != band_tile_row) {
        PaintBand(first * kTileSide);
        band_tile_row = first;
    }
    const auto width = static_cast<std::size_t>(sheet.Width());
    for (int row = 0; row < kTileSide; ++row) {
        const auto* pixels = reinterpret_cast<const QRgb*>(band.constScanLine((tile_y - first) * kTileSide + row));
        palette.Indices({pixels, width}, indices + static_cast<std::size_t>(row) * width);
    }
}

void CSheetRenderer::PaintBand(double top)
{
    const double bottom = top + band.height();
    band.fill(chart_colours::kSea);
    QPainter painter(&band);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintMap(painter, top, bottom);
    marks.PaintBand(painter, top, bottom);
}

void CSheetRenderer::PaintMap(QPainter& painter, double top, double bottom) const
{
    painter.fillPath(geometry.ice_shelf.Band(top, bottom), QColor(chart_colours::kIceShelf));
    painter.fillPath(geometry.land.Band(top, bottom), QColor(chart_colours::kLand));
    painter.fillPath(geometry.ice_land.Band(top, bottom), QColor(chart_colours::kIceLand));
    painter.setPen(LinePen(chart_colours::kRiver, sheet.Zoom() > 7 ? 1.5 : 1.0));
    PaintLines(painter, geometry.rivers, top, bottom);
    painter.fillPath(geometry.lakes.Band(top, bottom), QColor(chart_colours::kLake));
    painter.setPen(LinePen(chart_colours::kLakeShore, 1.0));
    PaintLines(painter, geometry.lake_shore, top, bottom);
    QPen border = LinePen(chart_colours::kBorder, sheet.Zoom() > 7 ? 1.8 : 1.3);
    border.setCapStyle(Qt::FlatCap);
    border.setDashPattern({6, 2.5, 1.2, 2.5});
    painter.setPen(border);
    PaintLines(painter, geometry.borders, top, bottom);
    PaintGraticule(painter, top, bottom);
    painter.setPen(LinePen(chart_colours::kShore, sheet.Zoom() > 4 ? 1.2 : 1.0));
    PaintLines(painter, geometry.shore, top, bottom);
}

void CSheetRenderer::PaintLines(QPainter& painter, const CSheetLines& lines, double top, double bottom) const
{
    constexpr double kReach = 3.0; // pixels that a pen reaches beside its line
    std::vector<QPointF> points;
    for (std::size_t i = 0; i < lines.lines.size(); ++i) {
        if (lines.bounds[i].bottom < top - kReach || lines.bounds[i].top > bottom + kReach) continue;
        points.clear();
        for (const DblPoint& p : lines.lines[i]) points.emplace_back(p.x, p.y - top);
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
}

void CSheetRenderer::PaintGraticule(QPainter& painter, double top, double bottom) const
{
    // Whole pixels: a line that fell between two would be twice as wide and half as dark.
    painter.setRenderHint(QPainter::Antialiasing, false);
    QColor colour(chart_colours::kGraticuleText);
    colour.setAlphaF(0.42F);
    for (const auto& meridian : graticule.meridians) {
        painter.fillRect(QRectF(std::floor(meridian.pixel), 0, 1, bottom - top), colour);
    }
    for (const auto& parallel : graticule.parallels) {
        painter.fillRect(QRectF(0, std::floor(parallel.pixel) - top, sheet.Width(), 1), colour);
    }
    painter.setRenderHint(QPainter::Antialiasing, true);
}

bool WriteSheet(const CChartSheet& sheet, const CWorldData& data, const std::vector<CPlace>& places,
                const CChartPalette& palette, const std::string& folder, std::string& error)
{
    const auto fit = sheet.Fit();
    if (!fit || fit->forward_px >= 1.0 || fit->inverse_px >= 1.0) {
        error = sheet.plan.name + ": the cubics do not fit within a pixel";
        return false;
    }
    CSheetRenderer renderer(sheet, data, places, palette);
    CChartWriter writer;
    writer.Size(sheet.Width() / kTileSide, sheet.Height() / kTileSide)
        .Title(sheet.plan.title)
        .LongTitle(sheet.plan.title + ". Base map, not for navigation")
        .Identifier(sheet.plan.name)
        .Edition("1")
        .Copyright(CSheetFrame::kOrigin)
        .ScaleText(CSheetFrame::ScaleText(sheet).toStdString())
        .SourceFileName("data/world")
        .Type("Basemap")
        .Georeferencing(fit->coefficients)
        .Palette(palette.Colours());
    const std::string path = folder + "/" + sheet.plan.name + ".rlt";
    const bool written = writer.Write(path, [&renderer](int tile_y, unsigned char* indices) {
        renderer.TileRow(tile_y, indices);
        return true;
    });
    if (!written) error = "cannot write " + path;
    return written;
}
