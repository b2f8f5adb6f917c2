#include "core/files.h"

#include "core/folders.h"
#include "core/safe_replace.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyPiece = 1U << 18;
constexpr mode_t kFileMode = 0644; ///< not left to the umask, which the program clears
constexpr mode_t kFolderMode = 0755;

struct CFileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using COpenFile = std::unique_ptr<FILE, CFileCloser>;

/// Opens without blocking and keeps the handle only when a regular file stands behind it. Truncates nothing.
int OpenRegular(const char* path, int flags, struct stat& status)
{
    const int handle = open(path, flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, kFileMode);
    if (handle < 0) return -1;
    if (fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) return handle;
    close(handle);
    return -1;
}

int FlagsOfMode(const char* mode)
{
    const bool update = std::strchr(mode, '+') != nullptr;
    switch (*mode) {
    case 'w':
        return (update ? O_RDWR : O_WRONLY) | O_CREAT;
    case 'a':
        return (update ? O_RDWR : O_WRONLY) | O_CREAT | O_APPEND;
    default:
        return update ? O_RDWR : O_RDONLY;
    }
}

template <class Wanted>
std::vector<std::string> ListEntries(const std::string& path, Wanted wanted)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator i(path, error), end; !error && i != end; i.increment(error)) {
        std::error_code broken_link;
        if (wanted(i->is_directory(broken_link))) names.push_back(i->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool CopyPieces(FILE* in, FILE* out)
{
    std::vector<char> piece(kCopyPiece);
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), in))
        if (std::fwrite(piece.data(), 1, count, out) != count) return false;
    return std::ferror(in) == 0;
}

bool UnpackPieces(gzFile in, FILE* out)
{
    std::vector<char> piece(kCopyPiece);
    for (;;) {
        const int count = gzread(in, piece.data(), static_cast<unsigned>(piece.size()));
        if (count < 0 || gzdirect(in) != 0) return false;
        if (count == 0) break;
        const auto size = static_cast<std::size_t>(count);
        if (std::fwrite(piece.data(), 1, size, out) != size) return false;
    }
    int status = Z_OK;
    gzerror(in, &status); // a file cut short ends with Z_BUF_ERROR
    return status == Z_OK;
}

} // namespace

bool createPath(const std::string& path)
{
    if (path.size() >= PATH_MAX) return false;
    if (isDirectory(path)) return true;
    const std::size_t slash =
        path.find_last_not_of('/') == std::string::npos ? 0 : path.rfind('/', path.find_last_not_of('/'));
    if (slash != std::string::npos && slash > 0 && !createPath(path.substr(0, slash))) return false;
    return mkdir(path.c_str(), kFolderMode) == 0 || isDirectory(path);
}

bool isRegularFile(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isDirectory(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

FILE* openRegularFile(const std::string& path, const char* mode)
{
    struct stat status {};
    const int handle = OpenRegular(path.c_str(), FlagsOfMode(mode), status);
    if (handle < 0) return nullptr;
    FILE* file = *mode == 'w' && ftruncate(handle, 0) != 0 ? nullptr : fdopen(handle, mode);
    if (file == nullptr) close(handle);
    return file;
}

int openRegularHandle(const std::string& path)
{
    struct stat status {};
    return OpenRegular(path.c_str(), O_RDONLY, status);
}

std::int64_t fileSize(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : -1;
}

bool read_whole_file(const std::string& path, std::string& out, std::int64_t limit)
{
    out.clear();
    struct stat status {};
    const int handle = OpenRegular(path.c_str(), O_RDONLY, status);
    if (handle < 0) return false;
    const COpenFile file(fdopen(handle, "rb"));
    if (!file || status.st_size > limit) return false;
    // One byte more than it should have: a file that grows meanwhile, or one that does not tell its size.
    out.resize(static_cast<std::size_t>(status.st_size) + 1);
    std::size_t filled = 0;
    while (const std::size_t count = std::fread(out.data() + filled, 1, out.size() - filled, file.get())) {
        filled += count;
        if (static_cast<std::int64_t>(filled) > limit) break;
        if (filled == out.size()) out.resize(out.size() + kCopyPiece);
    }
    const bool whole = std::ferror(file.get()) == 0 && static_cast<std::int64_t>(filled) <= limit;
    out.resize(whole ? filled : 0);
    return whole;
}

bool write_to_file(const std::string& path, const std::string& content)
{
    CSafeReplace replace(path);
    if (replace.File() == nullptr) return false;
    if (std::fwrite(content.data(), 1, content.size(), replace.File()) != content.size()) return false;
    return replace.Commit();
}

std::vector<std::string> listDirectory(const std::string& path)
{
    return ListEntries(path, [](bool folder) { return !folder; });
}

std::vector<std::string> listSubDirectories(const std::string& path)
{
    return ListEntries(path, [](bool folder) { return folder; });
}

bool deleteDirectorySingleLevel(const std::string& path)
{
    for (const std::string& name : listDirectory(path)) {
        const std::string entry = add_folder(path, name.c_str());
        if (isRegularFile(entry)) unlink(entry.c_str());
    }
    return rmdir(path.c_str()) == 0;
}

std::int64_t getDirectorySizeSingleLevel(const std::string& path)
{
    std::int64_t total = 0;
    for (const std::string& name : listDirectory(path))
        total += std::max<std::int64_t>(fileSize(add_folder(path, name.c_str())), 0);
    return total;
}

bool CopyFile(const std::string& from, const std::string& to)
{
    const COpenFile in(openRegularFile(from, "rb"));
    if (!in) return false;
    CSafeReplace replace(to);
    if (replace.File() == nullptr) return false;
    if (CopyPieces(in.get(), replace.File())) return replace.Commit();
    replace.Discard();
    return false;
}

bool GUnzipFile(const std::string& from, const std::string& to)
{
    const int handle = openRegularHandle(from);
    if (handle < 0) return false;
    const gzFile in = gzdopen(handle, "rb");
    if (in == nullptr) {
        close(handle);
        return false;
    }
    CSafeReplace replace(to);
    const bool unpacked = replace.File() != nullptr && UnpackPieces(in, replace.File());
    gzclose(in);
    if (unpacked) return replace.Commit();
    replace.Discard();
    return false;
}
