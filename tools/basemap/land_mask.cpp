#include "tools/basemap/land_mask.h"

#include <algorithm>
#include <cmath>

#include <QImage>
#include <QPainter>

CLandMask::CLandMask(const CChartSheet& sheet, const CSheetGeometry& geometry)
    : columns(sheet.Width() / kReduction)
    , rows(sheet.Height() / kReduction)
    , sums(static_cast<std::size_t>(columns + 1) * static_cast<std::size_t>(rows + 1), 0)
{
    QImage image(columns, rows, QImage::Format_Grayscale8);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.scale(1.0 / kReduction, 1.0 / kReduction);
    for (const CSheetAreas* areas : {&geometry.ice_shelf, &geometry.land, &geometry.ice_land}) {
        painter.fillPath(areas->Band(0, sheet.Height()), Qt::white);
    }
    painter.end();
    const auto stride = static_cast<std::size_t>(columns + 1);
    for (int y = 0; y < rows; ++y) {
        const unsigned char* pixels = image.constScanLine(y);
        std::uint32_t in_row = 0;
        for (int x = 0; x < columns; ++x) {
            in_row += pixels[x] > 127 ? 1 : 0;
            const std::size_t at = static_cast<std::size_t>(y + 1) * stride + static_cast<std::size_t>(x + 1);
            sums[at] = sums[at - stride] + in_row;
        }
    }
}

double CLandMask::LandShare(const QRectF& rect) const
{
    const auto cell = [](double value, int count) {
        return static_cast<std::size_t>(std::clamp(value / kReduction, 0.0, static_cast<double>(count)));
    };
    const std::size_t left = cell(std::floor(rect.left()), columns);
    const std::size_t right = std::max(left + 1, cell(rect.right() + kReduction - 1, columns));
    const std::size_t top = cell(std::floor(rect.top()), rows);
    const std::size_t bottom = std::max(top + 1, cell(rect.bottom() + kReduction - 1, rows));
    if (right > static_cast<std::size_t>(columns) || bottom > static_cast<std::size_t>(rows)) return 0.0;
    const auto stride = static_cast<std::size_t>(columns + 1);
    const std::uint32_t land = sums[bottom * stride + right] - sums[top * stride + right] -
                               sums[bottom * stride + left] + sums[top * stride + left];
    return land / (static_cast<double>(right - left) * static_cast<double>(bottom - top));
}
