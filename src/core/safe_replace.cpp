#include "core/safe_replace.h"

#include "core/file_names.h"
#include "core/files.h"
#include "core/locks.h"

#include <cerrno>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Damaged files without a copy yet. Copies of long files run on other threads, hence the lock.
struct CUnkeptFiles {
    CMutex lock;
    std::set<std::string> paths;
};

CUnkeptFiles& UnkeptFiles()
{
    static CUnkeptFiles files;
    return files;
}

bool IsUnkept(const std::string& path)
{
    CUnkeptFiles& unkept = UnkeptFiles();
    const CMutexLocker locker(unkept.lock);
    return unkept.paths.count(path) != 0;
}

/// Some file systems cannot flush; only a real write error counts.
bool FlushToDisk(int handle)
{
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

void FlushFolder(const std::string& folder)
{
    const int handle = open(folder.empty() ? "/" : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    fsync(handle);
    close(handle);
}

} // namespace

CSafeReplace::CSafeReplace(const std::string& target) : path(target), temporary(target + ".tmp")
{
    struct stat old {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    if (replaces && !S_ISREG(old.st_mode)) return;
    const std::string folder = dirname(path);
    if (!folder.empty() && !createPath(folder)) return;
    file = openRegularFile(temporary, "wb");
    if (file != nullptr && replaces) fchmod(fileno(file), old.st_mode & 0777);
}

CSafeReplace::~CSafeReplace()
{
    if (file != nullptr) std::fclose(file);
}

void CSafeReplace::Discard()
{
    if (file == nullptr) return;
    std::fclose(file);
    file = nullptr;
    unlink(temporary.c_str());
}

bool CSafeReplace::Commit()
{
    if (file == nullptr) return false;
    const bool written = std::fflush(file) == 0 && std::ferror(file) == 0 && FlushToDisk(fileno(file));
    const bool closed = std::fclose(file) == 0;
    file = nullptr;
    if (!written || !closed) return false;
    if (IsUnkept(path) && isRegularFile(path) && !KeepDamagedCopy(path)) return false;
    if (std::rename(temporary.c_str(), path.c_str()) != 0) return false;
    FlushFolder(dirname(path));
    return true;
}

bool KeepDamagedCopy(const std::string& path)
{
    const bool kept = CopyFile(path, path + ".damaged");
    CUnkeptFiles& unkept = UnkeptFiles();
    const CMutexLocker locker(unkept.lock);
    if (kept)
        unkept.paths.erase(path);
    else
        unkept.paths.insert(path);
    return kept;
}
