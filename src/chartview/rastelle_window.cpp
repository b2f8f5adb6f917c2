#include "chartview/rastelle_window.h"

#include "chartview/view_keys.h"
#include "chartview/view_services.h"
#include "core/display_metrics.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QQuickWindow>

namespace {

/// What the window shows where no chart is.
constexpr QRgb kNoChart = 0xFFC4D3DC;

} // namespace

CDVI_Rastelle_Window::CDVI_Rastelle_Window(QQuickItem* parent) : CPaintAdaptor_q(parent)
{
    setOpaquePainting(true); // every pixel is painted: no clearing, no blending
    setActiveFocusOnTab(true);
}

CDVI_Rastelle_Window::~CDVI_Rastelle_Window()
{
    SetItem(nullptr);
    if (own_item != nullptr) own_item->DetachWindow();
}

void CDVI_Rastelle_Window::SetItem(CMapItem* map_item)
{
    if (item != nullptr && item != map_item) item->DetachWindow();
    item = map_item;
    SetOwner(map_item);
    setAcceptedMouseButtons(Qt::NoButton); // the declarative file's input layers say what comes here
}

void CDVI_Rastelle_Window::openMap()
{
    if (item == nullptr) {
        own_item = std::make_unique<CMapItem>(this);
        SetItem(own_item.get());
    }
    item->openMap();
    Invalidate();
}

void CDVI_Rastelle_Window::closeMap()
{
    if (item != nullptr) item->closeMap();
    onTick();
    Invalidate();
}

void CDVI_Rastelle_Window::setArranging(bool on)
{
    if (is_arranging == on) return;
    is_arranging = on;
    emit arrangingChanged();
}

bool CDVI_Rastelle_Window::gpsLockedOn() const
{
    return View() != nullptr && View()->IsLockedOnGPS();
}

QColor CDVI_Rastelle_Window::scaleBarColor() const
{
    return QColor::fromRgba(TheViewSettings().scale_bar_color.argb());
}

void CDVI_Rastelle_Window::UpdateResolution()
{
    if (window() != nullptr) SetGraphicsResolution(window()->effectiveDevicePixelRatio());
}

void CDVI_Rastelle_Window::Invalidate()
{
    whole_invalid = true;
    update(boundingRect().toAlignedRect());
}

void CDVI_Rastelle_Window::InvalidateArea(const FRect& area)
{
    if (whole_invalid) { // the element keeps one rectangle, and forgets an earlier update() of all
        Invalidate();
        return;
    }
    const double r = graphicsResolution;
    const double left = std::max(area.left / r, 0.0);
    const double top = std::max(area.top / r, 0.0);
    const double right = std::min(area.right / r, width());
    const double bottom = std::min(area.bottom / r, height());
    if (right > left && bottom > top) update(QRectF(left, top, right - left, bottom - top).toAlignedRect());
}

void CDVI_Rastelle_Window::itemChange(ItemChange change, const ItemChangeData& data)
{
    CPaintAdaptor_q::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(scene_graph_made);
        if (data.window != nullptr) // with its first picture, or after its old ones were lost
            scene_graph_made = connect(data.window, &QQuickWindow::sceneGraphInitialized, this,
                                       &CDVI_Rastelle_Window::Invalidate, Qt::QueuedConnection);
    }
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) UpdateResolution();
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged)
        Invalidate();
}

void CDVI_Rastelle_Window::geometryChange(const QRectF& now, const QRectF& before)
{
    CPaintAdaptor_q::geometryChange(now, before);
    Invalidate();
}

void CDVI_Rastelle_Window::paint(QPainter* painter)
{
    UpdateResolution();
    whole_invalid = false;
    const double r = graphicsResolution;
    painter->scale(1.0 / r, 1.0 / r);
    const CRastelleView* const view = View();
    const bool covered = view != nullptr && view->IsOpen() && view->SmoothScale() >= 1.0;
    if (!covered) painter->fillRect(QRectF(0.0, 0.0, width() * r, height() * r), QColor(kNoChart));
    if (item != nullptr) item->onDraw(painter, width() * r, height() * r);
}

void CDVI_Rastelle_Window::onTick()
{
    if (gps_locked_cache != gpsLockedOn()) {
        gps_locked_cache = gpsLockedOn();
        emit gpsLockedOnChanged();
    }
    onChangedScale();
}

void CDVI_Rastelle_Window::onChangedScale()
{
    const CRastelleView* const view = View();
    const bool shown = view != nullptr && TheViewSettings().show_scale_bar;
    const double scale = shown ? view->getDisplayedScale() * graphicsResolution : 0.0;
    if (scale_bar.Update(shown, scale, width())) emit scaleBarChanged();
}

bool CDVI_Rastelle_Window::onPressed(int button, double mouse_x, double mouse_y)
{
    forceActiveFocus();
    CRastelleView* const view = View();
    if (view == nullptr) return false;
    const double x = mouse_x * graphicsResolution;
    const double y = mouse_y * graphicsResolution;
    if (button == Qt::LeftButton) view->onMouseDown(x, y);
    if (button == Qt::RightButton) view->rightMouseDown(x, y);
    if (button == Qt::MiddleButton) view->centerMouseDown(x, y);
    return true;
}

void CDVI_Rastelle_Window::onPressAndHold(int button, double mouse_x, double mouse_y)
{
    CRastelleView* const view = View();
    if (view == nullptr || button != Qt::LeftButton || view->HasMoved()) return;
    view->rightMouseDown(mouse_x * graphicsResolution, mouse_y * graphicsResolution);
}

void CDVI_Rastelle_Window::onReleased(int button, double, double)
{
    // The press took the keyboard; if it opened a menu, that has it now.
    if (CRastelleView* const view = View()) view->onMouseUp(button == Qt::LeftButton);
}

void CDVI_Rastelle_Window::onMouseDragged(double mouse_x, double mouse_y)
{
    if (CRastelleView* const view = View())
        view->onMouseDragged(mouse_x * graphicsResolution, mouse_y * graphicsResolution);
}

void CDVI_Rastelle_Window::onMouseWheel(double delta, double mouse_x, double mouse_y)
{
    forceActiveFocus();
    const double bounded = std::isfinite(delta) ? std::clamp(delta, -1e6, 1e6) : 0.0;
    if (CRastelleView* const view = View())
        view->SmoothZoomAtPoint(static_cast<int>(bounded), mouse_x * graphicsResolution, mouse_y * graphicsResolution);
}

void CDVI_Rastelle_Window::onScrollGesture(QPointF delta, bool inverted)
{
    forceActiveFocus();
    const double factor = inverted ? graphicsResolution : -graphicsResolution;
    double dx = delta.x() * factor;
    double dy = delta.y() * factor;
    if (CRastelleView* const view = View()) view->DoScroll(dx, dy);
}

void CDVI_Rastelle_Window::onSingleTouchDown(double x, double y)
{
    forceActiveFocus();
    if (CRastelleView* const view = View()) view->onSingleTouchDown(x * graphicsResolution, y * graphicsResolution);
}

void CDVI_Rastelle_Window::onSingleTouchMove(double x, double y)
{
    if (CRastelleView* const view = View()) view->onSingleTouchMove(x * graphicsResolution, y * graphicsResolution);
}

void CDVI_Rastelle_Window::onSingleTouchUp()
{
    if (CRastelleView* const view = View()) view->onSingleTouchUp();
}

void CDVI_Rastelle_Window::onPinchBegin(double x, double y, double dsq)
{
    const double r = graphicsResolution;
    if (CRastelleView* const view = View()) view->onPinchBegin(x * r, y * r, dsq * r * r);
}

void CDVI_Rastelle_Window::onPinchMove(double x, double y, double dsq)
{
    const double r = graphicsResolution;
    if (CRastelleView* const view = View()) view->onPinchMove(x * r, y * r, dsq * r * r);
}

void CDVI_Rastelle_Window::onPinchEnd()
{
    if (CRastelleView* const view = View()) view->onPinchEnd();
}

void CDVI_Rastelle_Window::onClickZoom(int delta)
{
    if (CRastelleView* const view = View()) view->SmoothZoom(delta);
}

void CDVI_Rastelle_Window::onClickedMaps(QQuickItem* button)
{
    const ZT_HWND from = button != nullptr ? ZT_HWND(button, button->width() / 2.0, button->height() / 2.0) : hWnd();
    TheViewServices().ShowMapListDialog(View(), from, {});
}

void CDVI_Rastelle_Window::onClickedAddMark()
{
    if (CRastelleView* const view = View()) view->CreateNewMark();
}

void CDVI_Rastelle_Window::onClickedLockGPS()
{
    forceActiveFocus();
    CRastelleView* const view = View();
    if (view == nullptr) return;
    view->LockOnToGPS(hWnd(), true);
    gps_locked_cache = gpsLockedOn();
    emit gpsLockedOnChanged();
}

bool CDVI_Rastelle_Window::onKeyPressed(int key)
{
    CRastelleView* const view = View();
    return view != nullptr && !is_arranging && HandleViewKey(*view, key);
}
