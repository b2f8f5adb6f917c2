#include "chartview/view_keys.h"

#include "chartview/rastelle_view.h"
#include "chartview/view_services.h"
#include "core/display_metrics.h"

#include <Qt>

namespace {

constexpr double kScrollStep = 100.0; ///< logical pixels

struct ScrollKey {
    int key;
    double dx; ///< steps
    double dy;
};
constexpr ScrollKey kScrollKeys[] = {
    {Qt::Key_Home, 1, 1},   {Qt::Key_End, 1, -1},    {Qt::Key_Left, 1, 0},  {Qt::Key_Up, 0, 1},
    {Qt::Key_Right, -1, 0}, {Qt::Key_PageUp, -1, 1}, {Qt::Key_Down, 0, -1}, {Qt::Key_PageDown, -1, -1},
};

bool ScrollByKey(CRastelleView& view, int key)
{
    for (const ScrollKey& scroll : kScrollKeys) {
        if (scroll.key != key) continue;
        double dx = scroll.dx * kScrollStep * graphicsResolution;
        double dy = scroll.dy * kScrollStep * graphicsResolution;
        view.DoScroll(dx, dy);
        return true;
    }
    return false;
}

} // namespace

bool HandleViewKey(CRastelleView& view, int key)
{
    switch (key) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return TheViewServices().InvokeDoneButton();
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_VolumeUp:
        view.SmoothZoom(-1);
        return true;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
    case Qt::Key_VolumeDown:
        view.SmoothZoom(1);
        return true;
    case Qt::Key_I:
        view.ChangeMapScale(-1);
        return true;
    case Qt::Key_O:
        view.ChangeMapScale(1);
        return true;
    case Qt::Key_Delete:
        view.onDeleteKey();
        return true;
    default:
        return ScrollByKey(view, key);
    }
}
