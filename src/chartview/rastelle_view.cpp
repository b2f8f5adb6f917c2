#include "chartview/rastelle_view.h"

#include "chart/rastelle.h"
#include "chartview/overlay_tool.h"
#include "chartview/view_services.h"
#include "core/user_data_changed.h"
#include "overlays/gps_position.h"

#include <cmath>
#include <utility>

namespace {

/// Objects this near to the screen, in chart pixels, are mapped and drawn with it.
constexpr double kViewMargin = 50.0;

CRastelleView* last_used = nullptr;

/// `part` of `whole`, or the half when it is not strictly inside.
double FractionOf(double part, double whole)
{
    const double fraction = part / whole;
    return fraction > 0.0 && fraction < 1.0 ? fraction : 0.5;
}

} // namespace

CRastelleView::CRastelleView(IViewHost* view_host) : host(view_host)
{
    Listener<CDataGPSPosition>::Connect();
    Listener<COverlayObject>::Connect();
    gps_lat = COverlayGPSPosition::theLatestPosition.latitude;
    gps_lon = COverlayGPSPosition::theLatestPosition.longitude;
    NoteUse();
}

CRastelleView::~CRastelleView()
{
    if (ToolIsActive()) TheOverlayTool()->Deselect();
    if (last_used == this) last_used = nullptr;
}

void CRastelleView::NoteUse()
{
    last_used = this;
}

CRastelleView* CRastelleView::LastUsed()
{
    return last_used;
}

bool CRastelleView::IsOpen() const
{
    return Chart() != nullptr && Chart()->open && projection.valid;
}

void CRastelleView::Repaint()
{
    if (repaint_held > 0) {
        repaint_wanted = true;
    } else if (host != nullptr) {
        host->InvalidateView();
    }
}

void CRastelleView::RepaintArea(const FRect& area)
{
    if (repaint_held > 0) {
        repaint_wanted = true;
    } else if (host != nullptr && area.overlaps(screen)) {
        host->InvalidateArea(area);
    }
}

void CRastelleView::CentreOnScreen()
{
    CentreOn((screen.left + screen.right) / 2.0, (screen.top + screen.bottom) / 2.0);
}

void CRastelleView::CentreOn(double x, double y)
{
    centre_x = x;
    centre_y = y;
}

void CRastelleView::RestoreCentre()
{
    if (!opening) CentreOnScreen(); // an opening chart still needs the place that was set for it
}

void CRastelleView::SetPointer(double x, double y)
{
    pointer_x = x;
    pointer_y = y;
}

void CRastelleView::UnlockIfAnchorLeft()
{
    if (!screen.contains(gps_anchor_x, gps_anchor_y)) locked_on_gps = false;
}

void CRastelleView::MoveAnchorToGPS()
{
    if (!FollowsGPS()) return;
    if (!CurrentChartDoesContain(gps_lat, gps_lon)) {
        locked_on_gps = false;
        return;
    }
    LatLongToScreen(gps_lat, gps_lon, gps_anchor_x, gps_anchor_y);
    UnlockIfAnchorLeft();
}

void CRastelleView::DoScroll(double& dx, double& dy)
{
    if (!IsOpen() || !std::isfinite(dx) || !std::isfinite(dy)) {
        dx = dy = 0.0;
        return;
    }
    at_start_chart = false;
    params.ApplyDelta(dx, dy);
    NoteUserDataChanged();
    if (locked_on_gps) {
        gps_anchor_x += dx;
        gps_anchor_y += dy;
        UnlockIfAnchorLeft();
    }
    moved_screen();
}

void CRastelleView::moved_screen()
{
    NormaliseWrap();
    params.view_rect = ViewRect(screen);
    for (auto& [key, entry] : mapped) entry.mapping.move_screen();
    if (ToolIsActive()) TheOverlayTool()->OnViewMoved(*this);
    Repaint();
}

FRect CRastelleView::ViewRect(const FRect& rect) const
{
    FRect image = params.ScreenToImage(rect);
    image.left -= kViewMargin;
    image.top -= kViewMargin;
    image.right += kViewMargin;
    image.bottom += kViewMargin;
    return image;
}

void CRastelleView::NormaliseWrap()
{
    if (!wrap.active()) return;
    const double middle = (screen.left + screen.right) / 2.0 / params.scale + params.offset_x;
    const bool whole_world_shown = wrap.Width() * params.scale <= screen.width();
    wrap.NormaliseOffset(params, middle, whole_world_shown);
}

void CRastelleView::setScreenRect(double left, double top, double w, double h)
{
    const FRect rect{left, top, left + w, top + h};
    if (rect == screen) return;
    const FRect old = screen;
    const double old_centre_x = centre_x;
    const double old_centre_y = centre_y;
    screen = rect;
    CentreOnScreen();
    if (opening) return;

    if (FollowsGPS()) {
        gps_anchor_x = std::round(left + FractionOf(gps_anchor_x - old.left, old.width()) * w);
        gps_anchor_y = std::round(top + FractionOf(gps_anchor_y - old.top, old.height()) * h);
        GotoLocation(hWnd(), gps_lat, gps_lon, false);
    } else {
        double x = 0.0;
        double y = 0.0;
        params.ScreenToImage(old_centre_x, old_centre_y, x, y);
        params.AdjustOffset(centre_x, centre_y, x, y);
        if (!screen.contains(gps_anchor_x, gps_anchor_y)) {
            gps_anchor_x = centre_x;
            gps_anchor_y = centre_y;
        }
    }
    moved_screen();
    GotoLocation(std::exchange(area_to_show, {}));
}

void CRastelleView::ImageToLatLong(double x, double y, double& lat, double& lon) const
{
    projection.xy_to_latlong(wrap.Normalise(x), y, lat, lon);
    lon = std::remainder(lon, 360.0);
}

bool CRastelleView::PixelOf(double lat, double lon, double& x, double& y) const
{
    if (!projection.valid) return false;
    projection.latlong_to_xy(lat, lon, x, y);
    x = wrap.Normalise(x);
    const bool between_edges = wrap.active() || (x >= -0.5 && x < width - 0.5);
    return between_edges && y >= -0.5 && y < height - 0.5;
}

double CRastelleView::ScaleAtLevel(double x, double y) const
{
    return std::ldexp(getScaleAt(wrap.Normalise(x), y), params.level);
}

double CRastelleView::getDisplayedScale() const
{
    if (!IsOpen()) return 0.0;
    double x = 0.0;
    double y = 0.0;
    params.ScreenToImage((screen.left + screen.right) / 2.0, (screen.top + screen.bottom) / 2.0, x, y);
    return ScaleAtLevel(x, y) / smooth_scale;
}

bool CRastelleView::ScreenTolatlong(double x, double y, double& lat, double& lon) const
{
    if (!IsOpen()) return false;
    DblPoint image;
    params.ScreenToImage(x, y, image.x, image.y);
    return PositionOf(image, lat, lon);
}

bool CRastelleView::PositionOf(const DblPoint& place, double& lat, double& lon) const
{
    if (!IsOpen()) return false;
    ImageToLatLong(place.x, place.y, lat, lon);
    return true;
}

bool CRastelleView::LatLongToScreen(double lat, double lon, double& x, double& y) const
{
    if (!IsOpen()) return false;
    double image_x = 0.0;
    double image_y = 0.0;
    projection.latlong_to_xy(lat, lon, image_x, image_y);
    if (wrap.active()) {
        const double middle = (screen.left + screen.right) / 2.0 / params.scale + params.offset_x;
        image_x += std::round((middle - image_x) / wrap.Width()) * wrap.Width();
    }
    params.ImageToScreen(image_x, image_y, x, y);
    return true;
}

bool CRastelleView::GetCenterLatLon(double& lat, double& lon) const
{
    return ScreenTolatlong((screen.left + screen.right) / 2.0, (screen.top + screen.bottom) / 2.0, lat, lon);
}

bool CRastelleView::GetCenterAreaOfView(CBounds& area) const
{
    area = {};
    for (const double down : {0.25, 0.75}) {
        for (const double across : {0.25, 0.75}) {
            double lat = 0.0;
            double lon = 0.0;
            if (!ScreenTolatlong(screen.left + across * screen.width(), screen.top + down * screen.height(), lat, lon))
                return false;
            area.add(lat, lon);
        }
    }
    return true;
}

bool CRastelleView::GetLatestGPSLatLon(double& lat, double& lon) const
{
    lat = gps_lat;
    lon = gps_lon;
    return GPSIsKnown();
}

void CRastelleView::CreateNewMark()
{
    TheViewServices().CreateNewMark(*this);
}

void CRastelleView::CreateNewRoute()
{
    TheViewServices().CreateNewRoute(*this);
}
