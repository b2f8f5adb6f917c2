#include "ui/image_item.h"

void CImageItem::setImageSource(const QUrl& source)
{
    if (m_source == source) return;
    m_source = source;
    emit imageChanged();
}

void CImageItem::setFill(bool fill)
{
    if (m_fill == fill) return;
    m_fill = fill;
    emit fillChanged();
}
