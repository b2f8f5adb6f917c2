#include "app/app_data.h"
#include "app/file_kind.h"
#include "app/zentara_app_model.h"
#include "chartview/rastelle_view.h"
#include "overlays/gpx_import.h"
#include "ui/message_boxes.h"

namespace {

/// What the user is told when a file of a kind could not be taken.
struct CFailureText {
    file_kind kind;
    const char* title;
    const char* text; ///< the path follows where it ends with a blank
};

constexpr CFailureText kFailures[] = {
    {file_kind::gpx, "GPX Import Failed", "Failed to import file: "},
    {file_kind::pages, "Pages file Failed", "Failed to load pages file: "},
    {file_kind::page, "Error reading file", "Reading the .dvpage file failed: "},
    {file_kind::package, "Problem", "Error opening ZT Package"},
    {file_kind::unknown, "Unknown file extension", "Don't know what this file is: "},
};

void TellFailure(ZT_HWND hwnd, file_kind kind, const std::string& path)
{
    for (const CFailureText& failure : kFailures) {
        if (failure.kind != kind) continue;
        const std::string text = failure.text;
        MessageBoxOK(hwnd, failure.title, text.back() == ' ' ? text + path : text);
    }
}

} // namespace

// Charts and overlays are what can be taken so far: page layouts and packages have no reader yet, so every file of
// theirs gets the message of one that could not be read.
void CZentaraAppModel::importFileOfAnyType(ZT_HWND hwnd, const std::string& path, CBounds& bounds)
{
    const file_kind kind = SortFile(path);
    CRastelleView* view = LargestMap();
    if (kind == file_kind::gpx) {
        if (ImportGPXFile(path, bounds)) {
            save_all_app_data();
        } else {
            TellFailure(hwnd, kind, path);
        }
    } else if (kind != file_kind::chart) {
        TellFailure(hwnd, kind, path);
    } else if (view != nullptr) {
        view->onOpen(hwnd, path.c_str(), true, [this](bool) { reopenAllMapsAfterDownload(); });
    }
}
