#include "app/operating_system.h"

#include "app/window_geometry.h"

QRect COperatingSystem::windowGeometry(const QRect& saved, const QSize& saved_available, const QSize& available) const
{
    return WindowGeometry(saved, saved_available, available);
}
