#include "core/file_names.h"
#include "core/files.h"
#include "core/folders.h"
#include "core/text.h"
#include "ui/file_dialogs.h"
#include "ui/message_boxes.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QPointer>
#include <QStandardPaths>

namespace {

std::string last_folder; ///< of the last choice; empty before the first

std::string StartFolder()
{
    if (isDirectory(last_folder)) return last_folder;
    const std::string documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    return isDirectory(documents) ? documents : QDir::homePath().toStdString();
}

/// In natural order, without the hidden ones.
std::vector<std::string> Arranged(std::vector<std::string> names)
{
    std::erase_if(names, [](const std::string& name) { return name.empty() || name.front() == '.'; });
    std::sort(names.begin(), names.end(), CompareAlphaNumeric);
    return names;
}

} // namespace

CDlgQMLFileDialog::~CDlgQMLFileDialog()
{
    Answer(std::nullopt);
}

void CDlgQMLFileDialog::Ask(const CFileRequest& to_ask, FileChosen to_answer)
{
    request = to_ask;
    chosen = std::move(to_answer);
    m_all_files = request.extension.empty();
    m_file_name = QString::fromStdString(request.name);
    GoTo(StartFolder());
}

void CDlgQMLFileDialog::ForgetLastFolder()
{
    last_folder.clear();
}

void CDlgQMLFileDialog::GoTo(const std::string& path)
{
    m_folder = path;
    if (!request.save) setFileName({});
    List();
}

void CDlgQMLFileDialog::List()
{
    m_file = -1;
    m_folders = Arranged(listSubDirectories(m_folder));
    m_files = Arranged(listDirectory(m_folder));
    if (!m_all_files) {
        std::erase_if(m_files, [this](const std::string& name) {
            return !filename_has_extension(name.c_str(), name.size(), request.extension.c_str());
        });
    }
    emit listed();
}

QStringList CDlgQMLFileDialog::entries() const
{
    QStringList names;
    for (const std::string& name : m_folders) names.append(QString::fromStdString(name));
    for (const std::string& name : m_files) names.append(QString::fromStdString(name));
    return names;
}

void CDlgQMLFileDialog::setAllFiles(bool all)
{
    if (m_all_files == all) return;
    m_all_files = all;
    List();
}

void CDlgQMLFileDialog::setFileName(const QString& name)
{
    if (m_file_name == name) return;
    m_file_name = name;
    m_file = -1;
    SetProblem({});
    emit fileNameChanged();
}

void CDlgQMLFileDialog::SetProblem(const QString& problem)
{
    if (m_problem == problem) return;
    m_problem = problem;
    emit problemChanged();
}

void CDlgQMLFileDialog::activate(int row)
{
    if (row < 0) return;
    const auto index = static_cast<std::size_t>(row);
    if (index < m_folders.size()) {
        GoTo(add_folder(m_folder, m_folders[index].c_str()));
    } else if (index - m_folders.size() < m_files.size()) {
        const std::size_t file = index - m_folders.size();
        setFileName(QString::fromStdString(m_files[file]));
        m_file = static_cast<int>(file);
    }
}

void CDlgQMLFileDialog::goUp()
{
    GoTo(m_folder.find('/', 1) == std::string::npos ? "/" : dirname(m_folder));
}

std::string CDlgQMLFileDialog::PathToSave() const
{
    std::string name = m_file_name.trimmed().toStdString();
    if (::extension(name).empty() && !request.extension.empty()) name += "." + request.extension;
    return add_folder(m_folder, name.c_str());
}

void CDlgQMLFileDialog::accept()
{
    const QString name = m_file_name.trimmed();
    if (!request.save) {
        if (m_file < 0) return SetProblem(QStringLiteral("Choose a file"));
        return Finish(add_folder(m_folder, m_files[static_cast<std::size_t>(m_file)].c_str()));
    }
    if (name.isEmpty()) return SetProblem(QStringLiteral("The name is missing"));
    if (name.contains('/') || name == "." || name == "..") return SetProblem(QStringLiteral("This is not a name"));
    const std::string path = PathToSave();
    if (isDirectory(path)) return SetProblem(QStringLiteral("A folder has this name"));
    if (isRegularFile(path)) return AskToReplace(path);
    Finish(path);
}

void CDlgQMLFileDialog::AskToReplace(const std::string& path)
{
    const QPointer<CDlgQMLFileDialog> self(this);
    MessageBoxYes(hWnd(), request.title, "\"" + filename(path) + "\" exists. Replace it?", [self, path] {
        if (self) self->Finish(path);
    });
}

void CDlgQMLFileDialog::onDismiss(int)
{
    Answer(std::nullopt);
}

void CDlgQMLFileDialog::Finish(const std::string& path)
{
    last_folder = m_folder;
    Answer(path);
    closeDialog(0);
}

void CDlgQMLFileDialog::Answer(const std::optional<std::string>& path)
{
    const FileChosen answer = std::exchange(chosen, nullptr);
    if (answer) answer(path);
}
