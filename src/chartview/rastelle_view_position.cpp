#include "chart/chart_list.h"
#include "chartview/overlay_tool.h"
#include "chartview/rastelle_view.h"
#include "overlays/gps_position.h"

#include <algorithm>
#include <cmath>

// Own ship, places and areas.

namespace {

/// A first position nearer to 0, 0 than this (degrees) is a receiver without a fix.
constexpr double kNoRealPosition = 0.001;
/// Scale of the view at the start position, nautical miles per pixel.
constexpr double kStartScale = 0.18274;
constexpr double kMinutesPerDegree = 60.0;
/// A view may come out this much more detailed than was wanted.
constexpr double kMostDetailGained = 0.75;

/// The own ship sets the place of the bearings unless a tool has set that of its object.
[[maybe_unused]] const bool own_ship_asks_for_the_tool = [] {
    COverlayGPSPosition::tool_is_active = [] { return TheOverlayTool() != nullptr; };
    return true;
}();

bool IsRealPosition(double lat, double lon)
{
    return std::hypot(lat, lon) >= kNoRealPosition;
}

} // namespace

void CRastelleView::OnUpdate(CDataGPSPosition& position)
{
    gps_lat = position.latitude;
    gps_lon = position.longitude;
    if (!GPSIsKnown()) return;
    if (IsOpen() || opening) {
        if (locked_on_gps)
            GotoLocation(hWnd(), gps_lat, gps_lon, false);
        else if (at_start_chart)
            LeaveStartChart();
    } else {
        ChooseFirstChart();
    }
}

void CRastelleView::ChooseFirstChart()
{
    const CViewSettings& settings = TheViewSettings();
    const bool real = IsRealPosition(gps_lat, gps_lon);
    wanted_lat = real ? gps_lat : settings.app_default_lat;
    wanted_lon = real ? gps_lon : settings.app_default_lon;
    wanted_scale = 0.0;
    if (p_chart_list == nullptr || !(wanted_lat <= 90.0) || !(wanted_lon <= 360.0)) return;

    const CChartOutline* found = p_chart_list->FindBestChart(wanted_lat, wanted_lon, 0.0);
    if (found == nullptr) {
        found = p_chart_list->FindBestChart(settings.app_default_lat, settings.app_default_lon, kStartScale);
        if (found != nullptr) {
            locked_on_gps = false;
            wanted_lat = settings.app_default_lat;
            wanted_lon = settings.app_default_lon;
            wanted_scale = kStartScale;
        }
    }
    if (found == nullptr || found->path == last_path) {
        DownloadBestFreeMap(wanted_lat, wanted_lon, {});
    } else {
        CentreOnScreen();
        StartOpening(hWnd(), std::string(found->path), {});
    }
}

void CRastelleView::LeaveStartChart()
{
    if (!IsRealPosition(gps_lat, gps_lon) || p_chart_list == nullptr) return;
    at_start_chart = false;
    if (p_chart_list->FindBestChart(gps_lat, gps_lon, 0.0) == nullptr) return;
    GotoBestMap(hWnd(), gps_lat, gps_lon, 0.0, {});
}

void CRastelleView::LockOnToGPS(ZT_HWND parent, bool on)
{
    locked_on_gps = on;
    if (!on) return;
    StopInertia();
    CentreOnScreen();
    gps_anchor_x = centre_x;
    gps_anchor_y = centre_y;
    if (GPSIsKnown()) GotoLocation(parent, gps_lat, gps_lon, false);
}

void CRastelleView::GotoLocation(ZT_HWND parent, double lat, double lon, bool recentre)
{
    if (opening || !(lat <= 90.0)) return;
    if (recentre) {
        locked_on_gps = false;
        CentreOnScreen();
    }
    if (!IsOpen() || !CurrentChartDoesContain(lat, lon)) {
        GetCurrentMapView();
        if (!recentre) CentreOn(gps_anchor_x, gps_anchor_y);
        GoToBestChart(parent, lat, lon, wanted_scale, {});
        return;
    }
    double x = 0.0;
    double y = 0.0;
    PixelOf(lat, lon, x, y);
    if (recentre) {
        StopInertia();
        params.AdjustOffset(centre_x, centre_y, x, y);
        SetPointer(centre_x, centre_y);
        DoZoom(-params.level);
    } else {
        const CViewParams before = params;
        params.AdjustOffset(gps_anchor_x, gps_anchor_y, x, y);
        if (params.offset_x == before.offset_x && params.offset_y == before.offset_y) return;
    }
    moved_screen();
}

void CRastelleView::GotoLocation(const CBounds& area)
{
    if (area.empty() || opening) return;
    if (screen.width() <= 0.0 || screen.height() <= 0.0) { // a file on the command line comes before the window's size
        area_to_show = area;
        return;
    }
    const double lat = (area.lat_min + area.lat_max) / 2.0;
    const double lon = (area.lon_min + area.lon_max) / 2.0;
    const double high = (area.lat_max - area.lat_min) * kMinutesPerDegree;
    const double wide = (area.lon_max - area.lon_min) * kMinutesPerDegree * std::cos(lat * M_PI / 180.0);
    locked_on_gps = false;
    const double needed = std::max(high / std::max(1.0, screen.height()), wide / std::max(1.0, screen.width()));
    GotoBestMap(hWnd(), lat, lon, needed / kMostDetailGained, {});
}

void CRastelleView::GotoBestMap(ZT_HWND parent, double lat, double lon, double scale, done_function done)
{
    CentreOnScreen();
    GoToBestChart(parent, lat, lon, scale, std::move(done));
}

void CRastelleView::GoToBestChart(ZT_HWND parent, double lat, double lon, double scale, done_function done)
{
    const bool possible = lat >= -90.0 && lat <= 90.0 && lon >= -400.0 && lon <= 400.0;
    if (!possible || opening) {
        if (done) done(false);
        return;
    }
    wanted_lat = lat;
    wanted_lon = lon;
    wanted_scale = std::isfinite(scale) ? scale : 0.0;
    ShowBestChart(parent, std::move(done));
    RestoreCentre();
}
