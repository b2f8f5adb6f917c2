#pragma once

#include "ui/zt_dialog.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QStringList>

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

/// The dialog of files: one folder with its sub-folders and the files of the kind asked for, and for saving a name.
class CDlgQMLFileDialog : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(bool save READ save CONSTANT)
    Q_PROPERTY(QString extension READ extension CONSTANT)
    Q_PROPERTY(QString folder READ folder NOTIFY listed)
    Q_PROPERTY(QStringList entries READ entries NOTIFY listed)
    Q_PROPERTY(int folderCount READ folderCount NOTIFY listed)
    Q_PROPERTY(bool allFiles READ allFiles WRITE setAllFiles NOTIFY listed)
    Q_PROPERTY(QString fileName READ fileName WRITE setFileName NOTIFY fileNameChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_file_dialog.qml";
    using CZTDialog::CZTDialog;
    ~CDlgQMLFileDialog() override;
    /// Begins where the last choice was made, in the user's documents at first.
    void Ask(const CFileRequest& to_ask, FileChosen to_answer);

    QString title() const { return QString::fromStdString(request.title); }
    bool save() const { return request.save; }
    QString extension() const { return QString::fromStdString(request.extension); }
    /// The path of the folder shown.
    QString folder() const { return QString::fromStdString(m_folder); }
    /// Names: the sub-folders, then the files; hidden ones are left out.
    QStringList entries() const;
    int folderCount() const { return static_cast<int>(m_folders.size()); }
    /// Whether files of other kinds are shown, too.
    bool allFiles() const { return m_all_files; }
    void setAllFiles(bool all);
    /// The name chosen or typed.
    QString fileName() const { return m_file_name; }
    void setFileName(const QString& name);
    /// Why the last acceptance was refused; empty: it was not.
    QString problem() const { return m_problem; }

    /// Enters the folder, or takes the name of the file, of that row of the entries.
    Q_INVOKABLE void activate(int row);
    Q_INVOKABLE void goUp();
    /// Answers with the file and closes. Before a file that is there is replaced the user is asked.
    Q_INVOKABLE void accept();
    void onDismiss(int code) override;

    /// The next dialog begins in the user's documents.
    static void ForgetLastFolder();

signals:
    void listed();
    void fileNameChanged();
    void problemChanged();

private:
    void GoTo(const std::string& path);
    void List();
    void SetProblem(const QString& problem);
    std::string PathToSave() const;
    void AskToReplace(const std::string& path);
    void Finish(const std::string& path);
    void Answer(const std::optional<std::string>& path);

    CFileRequest request;
    FileChosen chosen;
    std::string m_folder;
    std::vector<std::string> m_folders; ///< in the folder shown; the bytes of the file system, which need not be UTF-8
    std::vector<std::string> m_files;
    bool m_all_files = false;
    QString m_file_name;
    int m_file = -1; ///< of m_files, when the name is that of a row
    QString m_problem;
};
