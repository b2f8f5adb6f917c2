#pragma once

#include "ui/zt_dialog.h"

#include <functional>
#include <optional>
#include <string>

#include <QUrl>

/// What a file dialog asks for.
struct CFileRequest {
    bool save = false; ///< a place to write to; else a file that is there
    std::string title;
    std::string mime_type; ///< such as "text/plain"
    std::string extension; ///< without the dot; empty: any file
    std::string name;      ///< proposed for saving
};

/// Gets the path that the user chose, or nothing when he did not.
using FileChosen = std::function<void(const std::optional<std::string>& path)>;

/// Lets the user choose a file to be read. Shows the dialog and returns; `chosen` is called once, at once with nothing
/// when no dialog can be shown. Main thread only.
void ImportFile(ZT_HWND parent, const std::string& title, const std::string& mime_type, const std::string& extension,
                FileChosen chosen);
/// Lets the user choose where a file is to be written. The dialog has asked before a file that is there is replaced,
/// and the extension is added to a name without one. `chosen` as above.
void ExportFileAs(ZT_HWND parent, const std::string& title, const std::string& mime_type, const std::string& extension,
                  const std::string& suggested_name, FileChosen chosen);

/// Replaces the dialog, for tests; an empty function brings it back.
using file_dialog_function = std::function<void(ZT_HWND parent, const CFileRequest& request, FileChosen chosen)>;
void SetFileDialog(file_dialog_function dialog);

/// The element around the declarative file dialog. It has no frame of its own.
class CDlgQMLFileDialog : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(bool save READ save CONSTANT)
    Q_PROPERTY(QStringList nameFilters READ nameFilters CONSTANT)
    Q_PROPERTY(QString defaultSuffix READ defaultSuffix CONSTANT)
    Q_PROPERTY(QUrl startFolder READ startFolder CONSTANT)
    Q_PROPERTY(QUrl proposedFile READ proposedFile CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_file_dialog.qml";
    using CZTDialog::CZTDialog;
    ~CDlgQMLFileDialog() override;

    QString title() const { return QString::fromStdString(request.title); }
    bool save() const { return request.save; }
    /// Files of the extension asked for, then all files.
    QStringList nameFilters() const;
    QString defaultSuffix() const { return QString::fromStdString(request.extension); }
    /// Where the last choice was made, the user's documents at first.
    QUrl startFolder() const;
    QUrl proposedFile() const;

    /// The user chose that file. Before one that is there is replaced he is asked; on no the file dialog comes back.
    Q_INVOKABLE void fileChosen(const QUrl& file);
    void onDismiss(int code) override;

    CFileRequest request;
    FileChosen chosen;

signals:
    /// The file dialog is to be shown again.
    void reopen();

private:
    void Finish(const std::string& path);
    void Answer(const std::optional<std::string>& path);
};
