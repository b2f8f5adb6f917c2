#include "ui/file_dialogs.h"

#include <utility>

namespace {

file_dialog_function file_dialog; ///< empty: the declarative one

void ShowFileDialog(ZT_HWND parent, const CFileRequest& request, FileChosen chosen)
{
    const auto* dialog = CZTDialog::ShowDialog<CDlgQMLFileDialog>(
        parent, [&](CDlgQMLFileDialog* shown) { shown->Ask(request, std::move(chosen)); });
    // A dialog that was made and thrown away again has answered by itself.
    if (dialog == nullptr && chosen) chosen(std::nullopt);
}

void Ask(ZT_HWND parent, const CFileRequest& request, FileChosen chosen)
{
    if (file_dialog) {
        file_dialog(parent, request, std::move(chosen));
    } else {
        ShowFileDialog(parent, request, std::move(chosen));
    }
}

} // namespace

void SetFileDialog(file_dialog_function dialog)
{
    file_dialog = std::move(dialog);
}

void ImportFile(ZT_HWND parent, const std::string& title, const std::string& mime_type, const std::string& extension,
                FileChosen chosen)
{
    Ask(parent, {false, title, mime_type, extension, {}}, std::move(chosen));
}

void ExportFileAs(ZT_HWND parent, const std::string& title, const std::string& mime_type, const std::string& extension,
                  const std::string& suggested_name, FileChosen chosen)
{
    Ask(parent, {true, title, mime_type, extension, suggested_name}, std::move(chosen));
}
