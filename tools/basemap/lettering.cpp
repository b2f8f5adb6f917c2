#include "tools/basemap/lettering.h"

QPainterPath CLettering::Outline(const QString& text) const
{
    QFont font(condensed ? QStringLiteral("Roboto Condensed") : QStringLiteral("Roboto"));
    font.setPixelSize(static_cast<int>(size_px + 0.5));
    font.setItalic(italic);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing_px);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addText(0, 0, font, capitals ? text.toUpper() : text);
    const QRectF bounds = path.boundingRect();
    // Centred on the height of a capital, not of this text, so that names on one line stand level.
    path.translate(-bounds.center().x(), size_px * 0.36);
    return path;
}
