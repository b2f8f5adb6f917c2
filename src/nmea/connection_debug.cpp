#include "core/files.h"
#include "core/folders.h"
#include "core/message_sink.h"
#include "nmea/data_connection.h"
#include "ui/file_dialogs.h"

#include <cstdio>

namespace {

constexpr const char* kLogName = "nmea_debug.txt";

FILE* debug_file = nullptr; ///< null: no log is written

std::string LogPath()
{
    return getTmpDirectory(kLogName);
}

/// The temporary folder may lie on another disk than the place that the user chose.
bool MoveLog(const std::string& to)
{
    if (std::rename(LogPath().c_str(), to.c_str()) == 0) return true;
    if (!CopyFile(LogPath(), to)) return false;
    std::remove(LogPath().c_str());
    return true;
}

void OfferLog(ZT_HWND view)
{
    ExportFileAs(view, "Save NMEA Debug File", "text/plain", "txt", kLogName,
                 [](const std::optional<std::string>& path) {
                     if (!path || MoveLog(*path)) return;
                     ShowMessage({}, "NMEA Debug", "The file could not be saved: " + *path);
                 });
}

} // namespace

void CDataConnection::startDebug()
{
    stopDebug({});
    createPath(getTmpDirectory());
    debug_file = openRegularFile(LogPath(), "w");
}

void CDataConnection::stopDebug(ZT_HWND view)
{
    if (debug_file == nullptr) return;
    std::fclose(debug_file);
    debug_file = nullptr;
    if (!view.empty()) OfferLog(view);
}

bool CDataConnection::isDebugging()
{
    return debug_file != nullptr;
}

void CDataConnection::DebugLog(const char* line)
{
    if (debug_file != nullptr) std::fprintf(debug_file, "%s\n", line);
}
