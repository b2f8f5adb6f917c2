#include "overlays/dialogs/overlay_edit_dialogs.h"

#include "overlays/dialogs/edit_line_dialog.h"
#include "overlays/dialogs/edit_mark_dialog.h"
#include "overlays/dialogs/icon_dialog.h"
#include "overlays/dialogs/line_appearance_dialog.h"
#include "overlays/gpx_write.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "ui/file_dialogs.h"
#include "ui/message_boxes.h"

#include <string_view>

#include <QtQml>

namespace {

/// Writes the object, if it is still there.
bool WriteIfAlive(const std::string& path, CSyncable* object)
{
    for (COverlayMark* mark : g_mark_manager.marks) {
        if (mark == object && !mark->deleted) return WriteGPXFile(path, *mark);
    }
    for (COverlayRoute* route : g_mark_manager.routes) {
        if (route == object && !route->deleted) return WriteGPXFile(path, *route);
    }
    for (COverlayTrack* track : g_track_manager) {
        if (track == object && !track->deleted) return WriteGPXFile(path, *track);
    }
    return false;
}

/// The object's name without what no file name should have.
std::string FileName(const std::string& name)
{
    std::string out;
    for (const char c : name) {
        const bool plain =
            static_cast<unsigned char>(c) >= 0x20 && std::string_view("/\\:*?\"<>|").find(c) == std::string_view::npos;
        out += plain ? c : '_';
    }
    if (out.empty() || out.front() == '.') out = "overlay" + out;
    return out + ".gpx";
}

} // namespace

void COverlayEditDialogs::EditMark(ZT_HWND parent, COverlayMark& mark)
{
    const bool of_template = &mark == &g_mark_manager.DefaultMark() || &mark == &g_mark_manager.DefaultWaypoint();
    CZTDialog::ShowDialog<CDlg_edit_mark>(parent, [&](CDlg_edit_mark* dialog) { dialog->SetMark(mark, of_template); });
}

void COverlayEditDialogs::EditRoute(ZT_HWND parent, COverlayRoute& route)
{
    const bool of_template = &route == &g_mark_manager.DefaultRoute();
    CZTDialog::ShowDialog<CDlg_edit_route>(parent,
                                           [&](CDlg_edit_route* dialog) { dialog->SetRoute(route, of_template); });
}

void COverlayEditDialogs::EditTrack(ZT_HWND parent, COverlayTrack& track)
{
    const bool of_template = &track == &g_track_manager.DefaultTrack();
    CZTDialog::ShowDialog<CDlg_edit_track>(parent,
                                           [&](CDlg_edit_track* dialog) { dialog->SetTrack(track, of_template); });
}

void COverlayEditDialogs::SaveAs(ZT_HWND parent, CSyncable& object)
{
    ExportFileAs(parent, "Save as", "application/gpx+xml", "gpx", FileName(object.name),
                 [saved = &object](const std::optional<std::string>& path) {
                     if (path && !WriteIfAlive(*path, saved))
                         MessageBoxOK({}, "Save as", "The file could not be written: " + *path);
                 });
}

void qml_register_overlay_dialogs()
{
    constexpr const char* module = "com.zentara.zt";
    qmlRegisterType<CDlg_edit_mark>(module, 1, 0, "CDlg_edit_mark");
    qmlRegisterType<CDlg_edit_route>(module, 1, 0, "CDlg_edit_route");
    qmlRegisterType<CDlg_edit_track>(module, 1, 0, "CDlg_edit_track");
    qmlRegisterType<CDlg_icon>(module, 1, 0, "CDlg_icon");
    qmlRegisterType<CDlg_line_appearance>(module, 1, 0, "CDlg_line_appearance");
}
