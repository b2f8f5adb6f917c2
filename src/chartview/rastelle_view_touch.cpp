#include "chartview/overlay_tool.h"
#include "chartview/rastelle_view.h"
#include "core/clock.h"
#include "core/display_metrics.h"
#include "core/heartbeat.h"

#include <algorithm>
#include <cmath>

// Fingers and mouse, inertia, and what the heartbeat drives.

namespace {

constexpr double kTickSeconds = CHeartbeat::kTickMilliseconds / 1000.0;
constexpr double kVelocityKept = 0.9; ///< per tick
constexpr double kSlowest = 1.0;      ///< pixels per tick at which inertia ends
constexpr double kEasePerTick = 0.25;
constexpr double kLongPress = 0.8; ///< seconds that a finger rests for a menu

double Square(double dx, double dy)
{
    return dx * dx + dy * dy;
}

} // namespace

void CRastelleView::StopInertia()
{
    velocity_x = 0.0;
    velocity_y = 0.0;
}

bool CRastelleView::ToolIsActive() const
{
    const IOverlayTool* const tool = TheOverlayTool();
    return tool != nullptr && tool->IsActiveIn(*this);
}

void CRastelleView::TouchDown(double x, double y, bool with_inertia)
{
    touch_down = true;
    has_inertia = with_inertia || smooth_scale != 1.0;
    touch_time = GetTimeNow();
    dragging = true;
    StopInertia(); // a finger on the chart holds it
    SetPointer(x, y);
    press_x = x;
    press_y = y;
}

void CRastelleView::onSingleTouchDown(double x, double y)
{
    NoteUse();
    touch_moved = false;
    drag_object = nullptr;
    finger_down = true;
    press_time = GetTimeNow();
    if (ToolIsActive() && IsHit(TheOverlayTool()->Selected(), x, y, graphicsTouchPrecisionSq)) {
        touch_down = true;
        SetPointer(x, y);
        press_x = x;
        press_y = y;
        drag_object = TheOverlayTool()->Selected();
        return;
    }
    TouchDown(x, y, true);
}

void CRastelleView::DragObject(double x, double y)
{
    if (!touch_moved) return;
    TheOverlayTool()->Move(*this, x - pointer_x, y - pointer_y);
    SetPointer(x, y);
}

void CRastelleView::onSingleTouchMove(double x, double y)
{
    if (!touch_down) { // the finger that stays after a pinch takes the chart from where it is
        TouchDown(x, y, true);
        return;
    }
    if (Square(x - press_x, y - press_y) > graphicsTouchPrecisionSq) touch_moved = true;
    if (drag_object != nullptr && ToolIsActive()) {
        DragObject(x, y);
        return;
    }
    double dx = x - pointer_x;
    double dy = y - pointer_y;
    const double elapsed = GetTimeNow() - touch_time;
    if (elapsed >= kTickSeconds) {
        velocity_x = dx * (kTickSeconds / elapsed);
        velocity_y = dy * (kTickSeconds / elapsed);
    }
    DoScroll(dx, dy);
    SetPointer(pointer_x + dx, pointer_y + dy);
}

void CRastelleView::onSingleTouchUp()
{
    dragging = false;
    touch_down = false;
    finger_down = false;
    drag_object = nullptr;
    if (!touch_moved) onTap(pointer_x, pointer_y, graphicsTouchPrecisionSq);
}

void CRastelleView::onMouseDown(double x, double y)
{
    NoteUse();
    touch_moved = false;
    SetPointer(x, y);
    press_x = x;
    press_y = y;
    drag_object = nullptr;

    if (ToolIsActive() && IsHit(TheOverlayTool()->Selected(), x, y, graphicsClickPrecisionSq)) {
        drag_object = TheOverlayTool()->Selected();
        return;
    }
    const FPoint at{static_cast<float>(x), static_cast<float>(y)};
    const DblPoint image = ImagePoint(x, y);
    COverlayObject* const taken = AskObjectsFromTop(
        x, y, graphicsClickPrecisionSq, [&](COverlayObject& object) { return object.onMouseDown(this, at, image); });
    drag_object = taken;
    if (taken == nullptr) TouchDown(x, y, false);
}

void CRastelleView::onMouseDragged(double x, double y)
{
    if (Square(x - press_x, y - press_y) > graphicsClickPrecisionSq) touch_moved = true;
    if (drag_object == nullptr || !ToolIsActive()) {
        onSingleTouchMove(x, y);
    } else {
        DragObject(x, y);
    }
}

void CRastelleView::onMouseUp(bool left_button)
{
    dragging = false;
    touch_down = false;
    if (!left_button) return;
    if (drag_object != nullptr) drag_object->onMouseUp(this);
    if (!touch_moved) onTap(pointer_x, pointer_y, graphicsClickPrecisionSq);
    drag_object = nullptr;
}

void CRastelleView::centerMouseDown(double x, double y)
{
    touch_moved = true;
    double dx = (screen.left + screen.right) / 2.0 - x;
    double dy = (screen.top + screen.bottom) / 2.0 - y;
    StopInertia();
    DoScroll(dx, dy);
}

void CRastelleView::onDeleteKey()
{
    if (ToolIsActive() && TheOverlayTool()->Selected() != nullptr) TheOverlayTool()->OnDelete();
}

void CRastelleView::EaseStretch()
{
    const double rest = 1.0 - smooth_scale;
    smooth_scale += std::clamp(rest, -kEasePerTick, kEasePerTick);
}

void CRastelleView::WatchLongPress()
{
    if (!finger_down || touch_moved || GetTimeNow() - press_time < kLongPress) return;
    finger_down = false;
    drag_object = nullptr;
    rightMouseDown(press_x, press_y);
}

void CRastelleView::onTimer()
{
    WatchLongPress();
    ++repaint_held; // one repaint at most for the whole tick
    if (!dragging && has_inertia) {
        velocity_x *= kVelocityKept;
        velocity_y *= kVelocityKept;
        EaseStretch();
        const bool slow = std::abs(velocity_x) < kSlowest && std::abs(velocity_y) < kSlowest;
        if (slow && smooth_scale == 1.0) has_inertia = false;
        double dx = velocity_x;
        double dy = velocity_y;
        DoScroll(dx, dy);
        Repaint();
    }
    const bool new_squares = TimerCallback();
    const bool new_odd_squares = odd_copy != nullptr && odd_copy->TimerCallback();
    if (new_squares || new_odd_squares) Repaint();
    --repaint_held;
    if (std::exchange(repaint_wanted, false)) Repaint();
}
