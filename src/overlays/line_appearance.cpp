#include "overlays/line_appearance.h"

#include "core/display_metrics.h"

#include <QColor>
#include <QPen>

namespace {

constexpr float kWidestLine = 100.0F; ///< logical pixels

constexpr Qt::PenStyle kPenStyles[CLineAppearance::kLineStyles] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine,
                                                                   Qt::DashDotLine, Qt::DashDotDotLine};

const QColor kUnderColour(0, 0, 0, 0x5F);

} // namespace

bool CLineAppearance::SerializeAppearance(CSerializable::IOStream& stream)
{
    CSerializable::Section section(stream);
    const bool whole = section.declarecolor(colour) && section.declare(line_width) && section.declare(line_style);
    if (section.reading()) KeepInBounds();
    return whole;
}

void CLineAppearance::KeepInBounds()
{
    if (!(line_width >= 0.0F && line_width <= kWidestLine)) line_width = CLineAppearance().line_width;
    if (line_style < 0 || line_style >= kLineStyles) line_style = 0;
}

QPen CLineAppearance::Pen() const
{
    const bool known = line_style >= 0 && line_style < kLineStyles;
    return QPen(QColor::fromRgba(colour.argb()), static_cast<double>(line_width) * graphicsResolution,
                known ? kPenStyles[line_style] : Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QPen CLineAppearance::UnderPen() const
{
    return QPen(kUnderColour, (1.1 * static_cast<double>(line_width) + 1.4) * graphicsResolution, Qt::SolidLine,
                Qt::RoundCap, Qt::RoundJoin);
}
