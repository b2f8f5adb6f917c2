#include "chart/chart_list.h"
#include "chartview/rastelle_view.h"
#include "core/clock.h"
#include "core/message_sink.h"
#include "core/user_data_changed.h"

#include <cmath>
#include <utility>

// Step zoom, pinch and the change of charts by zooming.

namespace {

/// The picture is stretched by these at a step, so that it goes on from where it was and eases to the new level.
constexpr double kStretchIn = 0.75;
constexpr double kStretchOut = 1.5;
constexpr double kPinchStep = 1.75;   ///< a pinch changes the level above this stretch
constexpr double kPinchOutMost = 0.7; ///< below this a pinch asks for a coarser chart
constexpr double kSettledAbove = 1.01;
constexpr double kSettledBelow = 0.99;
constexpr double kLargestStretch = 2.0;
constexpr double kSmallestStretch = 0.5;
constexpr double kSecondsBetweenHints = 172800.0;

bool OneChartOnly()
{
    return p_chart_list != nullptr && p_chart_list->size() == 1;
}

} // namespace

void CRastelleView::DoZoom(int delta)
{
    at_start_chart = false;
    const int level = params.level + delta;
    if (delta == 0 || level < kMinLevel || level > max_level || !IsOpen()) return;
    double x = 0.0;
    double y = 0.0;
    double anchor_x = 0.0;
    double anchor_y = 0.0;
    params.ScreenToImage(pointer_x, pointer_y, x, y);
    params.ScreenToImage(gps_anchor_x, gps_anchor_y, anchor_x, anchor_y);
    NoteUserDataChanged();
    params.SetLevel(level);
    params.AdjustOffset(pointer_x, pointer_y, x, y);
    if (locked_on_gps) {
        params.ImageToScreen(anchor_x, anchor_y, gps_anchor_x, gps_anchor_y);
        UnlockIfAnchorLeft();
    }
    moved_screen();
}

void CRastelleView::ZoomSmoothly(int delta)
{
    smooth_scale *= delta < 0 ? kStretchIn : kStretchOut;
    has_inertia = true; // for the stretch to ease
    DoZoom(delta);
}

void CRastelleView::PlainZoom(int delta)
{
    const bool possible = delta < 0 ? params.level > kMinLevel : params.level < max_level;
    if (possible) ZoomSmoothly(delta);
    Repaint();
}

void CRastelleView::SmoothZoom(int delta)
{
    SmoothZoomAtPoint(delta, (screen.left + screen.right) / 2.0, (screen.top + screen.bottom) / 2.0);
}

void CRastelleView::SmoothZoomAtPoint(int delta, double x, double y)
{
    if (opening) return;
    SetPointer(x, y);
    StopInertia();
    dragging = false;
    if (delta == 0 || !IsOpen()) {
        Repaint();
    } else {
        const int step = delta < 0 ? -1 : 1;
        if (!TheViewSettings().change_scale_by_zooming || !StepZoomByChart(step)) PlainZoom(step);
    }
}

bool CRastelleView::StepZoomByChart(int step)
{
    CentreOn(pointer_x, pointer_y);
    GetCurrentMapView();
    const bool at_finest_of_one = OneChartOnly() && params.level == kMinLevel;
    const bool by_level = step < 0 ? params.level >= 0 : params.level < max_level - 1 && !at_finest_of_one;
    if (by_level) {
        ZoomSmoothly(step);
    } else if (step > 0 && at_finest_of_one) {
        RestoreCentre();
        return false;
    } else if (!OpenNextChart(step)) {
        if (at_finest_of_one && step < 0) ShowZoomHintIfAppropriate();
        RestoreCentre();
        return false;
    }
    RestoreCentre();
    return true;
}

bool CRastelleView::OpenNextChart(int direction)
{
    if (p_chart_list == nullptr || !IsOpen()) return false;
    const CChartOutline* const found = direction < 0 ? p_chart_list->ScaleIn(wanted_lat, wanted_lon, wanted_scale)
                                                     : p_chart_list->ScaleOut(wanted_lat, wanted_lon, wanted_scale);
    if (found == nullptr) return false;
    ShowChart(hWnd(), std::string(found->path), {});
    return true;
}

int CRastelleView::ChangeMapScale(int direction)
{
    if (opening || direction == 0) return 0;
    CentreOnScreen();
    GetCurrentMapView();
    return OpenNextChart(direction) ? 1 : 0;
}

void CRastelleView::ShowZoomHintIfAppropriate()
{
    const double now = GetTimeNow();
    CViewSettings& settings = TheViewSettings();
    if (std::abs(now - settings.time_of_last_zoom_hint) < kSecondsBetweenHints) return;
    settings.time_of_last_zoom_hint = now;
    SaveViewSettings();
    TheMessageSink().Hint(hWnd(), "To view additional maps, tap the Maps button, then \"Chart Harbour\".\n\nSign-in or "
                                  "Create an Account when prompted.");
}

void CRastelleView::onPinchBegin(double x, double y, double dist_sq)
{
    onSingleTouchDown(x, y);
    if (std::exchange(drag_object, nullptr) != nullptr) TouchDown(x, y, true); // two fingers move the chart
    touch_moved = true;                                                        // a pinch never ends in a tap
    pinch_start = PinchDistance(dist_sq);
    pinch_base_scale = 1.0;
}

int CRastelleView::PinchDistance(double dist_sq)
{
    return static_cast<int>(std::clamp(dist_sq, 1.0, 1e9));
}

void CRastelleView::onPinchMove(double x, double y, double dist_sq)
{
    if (pinch_start == 0) {
        onPinchBegin(x, y, dist_sq);
        return;
    }
    onSingleTouchMove(x, y);
    smooth_scale = pinch_base_scale * std::sqrt(static_cast<double>(PinchDistance(dist_sq)) / pinch_start);
    while (smooth_scale > kPinchStep && params.level > kMinLevel && IsOpen()) {
        smooth_scale /= 2.0;
        pinch_base_scale /= 2.0;
        DoZoom(-1);
    }
    Repaint();
}

void CRastelleView::onPinchEnd()
{
    dragging = false;
    touch_down = false;
    pinch_start = 0;
    has_inertia = true; // for the stretch to ease
    if (!IsOpen()) {
        smooth_scale = 1.0;
        return;
    }
    if (!TheViewSettings().change_scale_by_zooming || !PinchToNextChart()) SettlePinch();
    Repaint();
}

bool CRastelleView::PinchToNextChart()
{
    CentreOn(pointer_x, pointer_y);
    GetCurrentMapView();
    const bool out = smooth_scale < kPinchOutMost && params.level >= max_level - 1;
    const bool in = smooth_scale > kPinchStep && params.level < 0;
    const bool opened = (out && OpenNextChart(1)) || (in && OpenNextChart(-1));
    if (!opened && OneChartOnly() && params.level == kMinLevel) ShowZoomHintIfAppropriate();
    RestoreCentre();
    return opened;
}

void CRastelleView::SettlePinch()
{
    if (smooth_scale > 1.0) {
        while (smooth_scale > kSettledAbove && params.level > kMinLevel) {
            smooth_scale /= 2.0;
            pinch_base_scale /= 2.0;
            DoZoom(-1);
        }
        smooth_scale = std::min(smooth_scale, kLargestStretch);
    } else {
        while (smooth_scale < kSettledBelow && params.level < max_level) {
            smooth_scale *= 2.0;
            pinch_base_scale *= 2.0;
            DoZoom(1);
        }
        smooth_scale = std::max(smooth_scale, kSmallestStretch);
    }
}
