#include "app/overlay_menus.h"

#include "app/app_data.h"
#include "app/zentara_app_model.h"
#include "chartview/map_settings.h"
#include "chartview/rastelle_view.h"
#include "core/display_metrics.h"
#include "navdata/position_format.h"
#include "navdata/units.h"
#include "overlays/gpx_import.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "ui/action_sheet.h"
#include "ui/file_dialogs.h"
#include "ui/message_boxes.h"

#include <QPointer>

namespace {

void ImportOverlays(const QPointer<CZentaraAppModel>& model, ZT_HWND hwnd)
{
    ImportFile(hwnd, "Import", "application/gpx+xml", "gpx", [model](const std::optional<std::string>& path) {
        if (!path || model == nullptr) return;
        CBounds bounds;
        if (!ImportGPXFile(*path, bounds)) {
            MessageBoxOK({}, "GPX Import Failed", "Failed to import file: " + *path);
            return;
        }
        save_all_app_data();
        if (!bounds.empty()) model->ShowAreaOnTheMap(bounds);
    });
}

} // namespace

void ShowOverlaysMenu(CZentaraAppModel& app, ZT_HWND hwnd)
{
    const QPointer<CZentaraAppModel> model(&app);
    const bool recording = CTrackManager::doRecordTrack;
    CActionSheetMenu menu("Overlays");
    // The list and the search have no dialogs yet.
    menu.Add("List Overlays", {}, "qrc:/Overlays.png", Appearance::kDisabled);
    menu.Add(
        "Add New Mark",
        [model] {
            if (model) model->AddNewMark();
        },
        "qrc:/add_mark.svg");
    menu.Add(
        "Add New Route",
        [model] {
            if (model) model->AddNewRoute();
        },
        "qrc:/add_route.svg");
    menu.Add(
        recording ? "Stop recording" : "Record Track", [] { g_track_manager.ToggleTrackRecording(); },
        recording ? "qrc:/stop_recording.svg" : "qrc:/record.svg");
    menu.Add("Search", {}, "qrc:/find_place.svg", Appearance::kDisabled);
    menu.Add(
        "Import", [model, hwnd] { ImportOverlays(model, hwnd); }, "qrc:/import.svg");
    menu.ShowMenu(hwnd);
}

void ShowMapMenu(CRastelleView& view, double x, double y)
{
    double lat = 0.0;
    double lon = 0.0;
    if (!view.ScreenTolatlong(x, y, lat, lon)) return;
    ZT_HWND hwnd = view.hWnd();
    hwnd.x = x / graphicsResolution;
    hwnd.y = y / graphicsResolution;
    std::string place;
    CUnits::Default->position_format->format(lat, lon, place);
    CActionSheetMenu menu(place);
    menu.Add(
        "Add New Mark", [lat, lon] { g_mark_manager.CreateNewMark(CRastelleView::LastUsed(), lat, lon); },
        "qrc:/add_mark.svg");
    menu.Add(
        "Add New Route", [hwnd] { g_mark_manager.CreateNewRoute(hwnd); }, "qrc:/add_route.svg");
    menu.ShowMenu(hwnd);
}

void AddMarkInView(CRastelleView& view)
{
    double lat = 0.0;
    double lon = 0.0;
    const bool found = view.IsLockedOnGPS() ? view.GetLatestGPSLatLon(lat, lon) : view.GetCenterLatLon(lat, lon);
    if (found) g_mark_manager.CreateNewMark(&view, lat, lon);
}
