#include "chart/folder_entries.h"

#include "core/file_names.h"

#include <algorithm>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

enum class EntryKind { file, folder, other };

/// Costs a system call only where the folder itself does not say what the entry is.
EntryKind KindOf(int folder, const dirent& entry)
{
    if (entry.d_type == DT_REG) return EntryKind::file;
    if (entry.d_type == DT_DIR) return EntryKind::folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return EntryKind::other;
    struct stat status {};
    if (fstatat(folder, entry.d_name, &status, 0) != 0) return EntryKind::other;
    return S_ISREG(status.st_mode) ? EntryKind::file : S_ISDIR(status.st_mode) ? EntryKind::folder : EntryKind::other;
}

bool IsDots(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

} // namespace

CFolderEntries ReadFolder(const std::string& path)
{
    CFolderEntries entries;
    DIR* stream = opendir(path.c_str());
    if (stream == nullptr) return entries;
    if (fstat(dirfd(stream), &entries.status) == 0) {
        while (const dirent* entry = readdir(stream)) {
            if (IsDots(entry->d_name)) continue;
            const bool named_chart = filename_has_extension(entry->d_name, std::strlen(entry->d_name), "rlt");
            if (!named_chart && entry->d_type == DT_REG) continue;
            const EntryKind kind = KindOf(dirfd(stream), *entry);
            if (kind == EntryKind::folder) entries.folders.emplace_back(entry->d_name);
            if (kind == EntryKind::file && named_chart) entries.charts.emplace_back(entry->d_name);
        }
        entries.handle = fcntl(dirfd(stream), F_DUPFD_CLOEXEC, 0);
    }
    closedir(stream);
    std::ranges::sort(entries.charts);
    std::ranges::sort(entries.folders);
    return entries;
}

std::int64_t WriteTime(const struct stat& status)
{
    return status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec;
}
