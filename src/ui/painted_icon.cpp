#include "ui/painted_icon.h"

#include "ui/colorized_image.h"

#include <QPainter>
#include <QQuickWindow>

CPaintedIcon::CPaintedIcon(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void CPaintedIcon::setIconName(const QString& name)
{
    if (m_name == name) return;
    m_name = name;
    Load();
    emit iconNameChanged();
}

void CPaintedIcon::setColor(const QColor& color)
{
    if (m_color == color) return;
    m_color = color;
    Load();
    emit colorchanged();
}

void CPaintedIcon::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickPaintedItem::geometryChange(now, before);
    if (now.size() != before.size()) Load();
}

void CPaintedIcon::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    Load();
}

void CPaintedIcon::Load()
{
    if (!isComponentComplete()) return;
    const double ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1.0;
    const GraphicsColor tint(m_color.redF(), m_color.greenF(), m_color.blueF(), m_color.alphaF());
    m_image = LoadColorizedImage_fitted(m_name.toStdString(), tint, nullptr, (size() * ratio).toSize());
    m_image.setDevicePixelRatio(ratio);
    update();
}

void CPaintedIcon::paint(QPainter* painter)
{
    if (m_image.isNull()) return;
    const QSizeF shown = m_image.deviceIndependentSize();
    painter->drawImage(QPointF((width() - shown.width()) / 2.0, (height() - shown.height()) / 2.0), m_image);
}
