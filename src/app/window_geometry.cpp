#include "app/window_geometry.h"

#include <algorithm>

QRect WindowGeometry(const QRect& saved, const QSize& saved_available, const QSize& available)
{
    const bool usable = saved_available == available && saved.isValid();
    int width = usable ? saved.width() : 0;
    int height = usable ? saved.height() : 0;
    if (width < 640) width = 1024;
    if (height < 480) height = 768;
    width = std::min(width, available.width());
    height = std::min(height, available.height());
    const QPoint centred((available.width() - width) / 2, (available.height() - height) / 2);
    return {usable ? saved.topLeft() : centred, QSize(width, height)};
}
