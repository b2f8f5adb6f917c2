#include "chart/chart_list.h"
#include "chart/rastelle.h"
#include "chartview/rastelle_view.h"
#include "chartview/view_services.h"
#include "core/files.h"
#include "core/message_sink.h"
#include "core/user_data_changed.h"
#include "overlays/overlay_source.h"

#include <cmath>

// Opening and closing of charts, and the way of a view from one chart to the next.
//
//   closed --onOpen--> opening --ok--> open --onOpen--> opening ...
//                         |
//                         +--failed--> opening (the chart before) or closed

namespace {

/// A chart with this header flag may not be downloaded as a whole.
constexpr std::uint32_t kRestrictedChart = 0x40;
constexpr long kRestrictedBytes = 0x2EE00000;
constexpr int kLevels = 3;
constexpr int kLevelsOfRestrictedChart = 2;

/// A chart is shown at the level that brings chart scale over wanted scale between these.
constexpr double kMagnifyAbove = 1.5;
constexpr double kReduceBelow = 0.75;

constexpr double kCoarserThanAnyChart = 1e6; ///< nautical miles per pixel

} // namespace

void CRastelleView::onOpen(ZT_HWND parent, const char* path, bool keep_view, done_function done)
{
    if (keep_view) {
        CentreOnScreen();
        GetCurrentMapView();
    }
    StartOpening(parent, path, std::move(done));
}

void CRastelleView::StartOpening(ZT_HWND parent, const std::string& path, done_function done)
{
    attempted_path = path;
    opening = true;
    at_start_chart = false;
    CloseChart();
    CCachedRastelle::Open(parent, attempted_path.c_str(),
                          [this, done = std::move(done)](bool ok) { open_rlt_callback(ok, done); });
}

void CRastelleView::CloseChart()
{
    odd_copy.reset();
    CCachedRastelle::Close();
    wrap.Clear();
    projection.valid = false;
}

void CRastelleView::open_rlt_callback(bool ok, const done_function& done)
{
    if (ok) {
        OnOpened();
        opening = false;
    } else {
        opening = false;
        OnOpenFailed();
    }
    if (done) done(ok);
}

void CRastelleView::OnOpened()
{
    const CRastelle& opened = *Chart();
    const Geo_ref_coeff_t& georeferencing = opened.header->georeferencing;
    projection.init(georeferencing.forward, georeferencing.inverse, width, height, opened.datum_lat_shift,
                    opened.datum_lon_shift);
    wrap.Init(projection);
    if (wrap.active()) {
        odd_copy = std::make_unique<CCachedRastelle>();
        odd_copy->Open(hWnd(), attempted_path.c_str(), [](bool) {});
    }
    changed_projection();

    const bool restricted = (opened.header->flags & kRestrictedChart) != 0;
    max_level = restricted ? kLevelsOfRestrictedChart : kLevels;
    if (restricted && CRastelle::getRltFileSize(attempted_path) > kRestrictedBytes) {
        ShowMessage(hWnd(), "Reasonable use policy",
                    "You have reached the maximum amount of this map permitted to be stored on your device at any one "
                    "time. To download more, you must first delete the map to clear out all previously downloaded "
                    "areas.");
    }
    last_path = attempted_path;
    NoteUserDataChanged();
    if (p_chart_list != nullptr) p_chart_list->current = p_chart_list->FindFile(last_path, 0.0);

    SetCurrentMapView();
    MoveAnchorToGPS();
    CentreOnScreen();
    Repaint();
}

void CRastelleView::OnOpenFailed()
{
    if (p_chart_list != nullptr) p_chart_list->RemoveChart(attempted_path);
    if (last_path != attempted_path && isRegularFile(last_path)) {
        StartOpening(hWnd(), last_path, {});
    } else {
        Repaint();
    }
}

void CRastelleView::Close()
{
    CentreOnScreen();
    GetCurrentMapView();
    CloseChart();
    Repaint();
}

void CRastelleView::CloseAndReOpenCurrentMap()
{
    const std::string path = last_path;
    Close();
    if (isRegularFile(path)) StartOpening(hWnd(), path, {});
}

void CRastelleView::RestoreCurrentMapView()
{
    if (!(wanted_lat <= 90.0)) return;
    CentreOnScreen();
    ShowBestChart(hWnd(), {});
}

void CRastelleView::OpenStartChart()
{
    if (p_chart_list == nullptr || p_chart_list->size() == 0 || IsOpen() || opening) return;
    const CViewSettings& settings = TheViewSettings();
    const CChartOutline* found =
        p_chart_list->FindBestChart(settings.app_default_lat, settings.app_default_lon, kCoarserThanAnyChart);
    if (found == nullptr) found = &*p_chart_list->Outlines().rbegin();
    // Where the chart has the start position it is shown around it, sharp; otherwise the whole of it.
    wanted_lat = settings.app_default_lat;
    wanted_lon = settings.app_default_lon;
    wanted_scale = 0.0;
    StartOpening(hWnd(), std::string(found->path), {});
    at_start_chart = IsOpen();
}

void CRastelleView::ShowChart(ZT_HWND parent, const std::string& path, done_function done)
{
    if (!IsOpen() || path != last_path) {
        StartOpening(parent, path, std::move(done));
        return;
    }
    SetCurrentMapView();
    MoveAnchorToGPS();
    CentreOnScreen();
    if (done) done(true);
}

bool CRastelleView::ShowBestChart(ZT_HWND parent, done_function done)
{
    const CChartOutline* const found =
        p_chart_list != nullptr ? p_chart_list->FindBestChart(wanted_lat, wanted_lon, wanted_scale) : nullptr;
    if (found == nullptr) {
        DownloadBestFreeMap(wanted_lat, wanted_lon, std::move(done));
        return false;
    }
    ShowChart(parent, std::string(found->path), std::move(done));
    return true;
}

void CRastelleView::DownloadBestFreeMap(double lat, double lon, done_function done)
{
    TheViewServices().DownloadBestFreeMap(*this, lat, lon, std::move(done));
}

void CRastelleView::changed_projection()
{
    ++projection_generation;
    IOverlaySource::GetUpdatesFromAllSources(COverlayObject::kChanged, *this);
    for (auto& [key, entry] : mapped) {
        if (entry.generation != projection_generation) MapObject(*key.object, entry);
    }
}

void CRastelleView::GetCurrentMapView()
{
    if (!IsOpen()) return;
    double x = 0.0;
    double y = 0.0;
    params.ScreenToImage(centre_x, centre_y, x, y);
    ImageToLatLong(x, y, wanted_lat, wanted_lon);
    wanted_scale = ScaleAtLevel(x, y);
}

void CRastelleView::SetCurrentMapView()
{
    double x = 0.0;
    double y = 0.0;
    if (!(wanted_lat < 90.0) || !PixelOf(wanted_lat, wanted_lon, x, y)) {
        StopInertia();
        params.SetLevel(max_level - 1);
        x = width / 2;
        y = height / 2;
    } else if (!(wanted_scale > 0.0)) {
        params.SetLevel(0);
    } else {
        StopInertia();
        params.SetLevel(LevelFor(getScaleAt(x, y) / wanted_scale));
    }
    params.AdjustOffset(centre_x, centre_y, x, y);
    moved_screen();
}

int CRastelleView::LevelFor(double ratio) const
{
    int level = 0;
    while (ratio > kMagnifyAbove && level > kMinLevel) {
        ratio /= 2.0;
        --level;
    }
    while (ratio < kReduceBelow && level < max_level) {
        ratio *= 2.0;
        ++level;
    }
    return level;
}
