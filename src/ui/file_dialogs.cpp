#include "ui/file_dialogs.h"

#include "core/files.h"
#include "core/folders.h"
#include "ui/message_boxes.h"

#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>

namespace {

file_dialog_function file_dialog; ///< empty: the declarative one
QString last_folder;              ///< of the last choice; empty before the first

void ShowFileDialog(ZT_HWND parent, const CFileRequest& request, FileChosen chosen)
{
    const auto* dialog = CZTDialog::ShowDialog<CDlgQMLFileDialog>(parent, [&](CDlgQMLFileDialog* shown) {
        shown->request = request;
        shown->chosen = std::move(chosen);
    });
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

/// Where the first dialog begins.
QString DocumentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
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

CDlgQMLFileDialog::~CDlgQMLFileDialog()
{
    Answer(std::nullopt);
}

QStringList CDlgQMLFileDialog::nameFilters() const
{
    QStringList filters;
    const QString extension = defaultSuffix();
    if (!extension.isEmpty()) filters.append(QStringLiteral("%1 files (*.%2)").arg(extension.toUpper(), extension));
    filters.append(QStringLiteral("All files (*)"));
    return filters;
}

QUrl CDlgQMLFileDialog::startFolder() const
{
    const bool known = !last_folder.isEmpty() && QFileInfo(last_folder).isDir();
    return QUrl::fromLocalFile(known ? last_folder : DocumentsFolder());
}

QUrl CDlgQMLFileDialog::proposedFile() const
{
    if (!request.save || request.name.empty()) return {};
    return QUrl::fromLocalFile(startFolder().toLocalFile() + '/' + QString::fromStdString(request.name));
}

void CDlgQMLFileDialog::fileChosen(const QUrl& file)
{
    const QString path = file.toLocalFile();
    if (!request.save || !QFileInfo::exists(path)) {
        Finish(path.toStdString());
        return;
    }
    const QString question = QStringLiteral("\"%1\" exists. Replace it?").arg(QFileInfo(path).fileName());
    const QPointer<CDlgQMLFileDialog> self(this);
    const auto answered = [self, path](int button) {
        if (!self) return;
        if (button == 0) {
            self->Finish(path.toStdString());
        } else {
            emit self->reopen();
        }
    };
    if (!MessageBoxYesNo(hWnd(), request.title, question.toStdString(), answered)) emit reopen();
}

void CDlgQMLFileDialog::onDismiss(int)
{
    Answer(std::nullopt);
}

void CDlgQMLFileDialog::Finish(const std::string& path)
{
    last_folder = QFileInfo(QString::fromStdString(path)).absolutePath();
    Answer(path);
    closeDialog(0);
}

void CDlgQMLFileDialog::Answer(const std::optional<std::string>& path)
{
    const FileChosen answer = std::exchange(chosen, nullptr);
    if (answer) answer(path);
}
