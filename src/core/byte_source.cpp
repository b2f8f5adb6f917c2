#include "core/byte_source.h"

#include "core/files.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {
/// A look at the head of a file reads little; who goes on gets long reads, which cost least in the second-level cache.
constexpr std::size_t kFirstWindow = 1U << 12;
constexpr std::size_t kSourceWindow = 1U << 20;
} // namespace

bool CByteSource::OpenFile(const std::string& path)
{
    Close();
    handle = openRegularHandle(path);
    struct stat status {};
    if (handle < 0 || fstat(handle, &status) != 0) {
        Close();
        return false;
    }
    size = static_cast<std::uint64_t>(status.st_size);
    buffer.clear();
    open = true;
    return true;
}

void CByteSource::OpenMemory(std::span<const std::uint8_t> bytes)
{
    Close();
    size = bytes.size();
    window = bytes.data();
    window_size = bytes.size();
    open = true;
}

void CByteSource::Close()
{
    if (handle >= 0) close(handle);
    handle = -1;
    open = false;
    size = position = window_start = 0;
    window = nullptr;
    window_size = 0;
}

bool CByteSource::ReadFile(std::uint8_t* to, std::size_t count, std::uint64_t at) const
{
    while (count > 0) {
        const ssize_t got = pread(handle, to, count, static_cast<off_t>(at));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        to += got;
        at += static_cast<std::uint64_t>(got);
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

bool CByteSource::ReadOutsideWindow(void* to, std::size_t count)
{
    if (handle < 0 || Left() < count) return false;
    if (count >= kSourceWindow) {
        if (!ReadFile(static_cast<std::uint8_t*>(to), count, position)) return false;
        position += count;
        return true;
    }
    const std::size_t wanted = buffer.empty() && count <= kFirstWindow ? kFirstWindow : kSourceWindow;
    const auto fill = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, size - position));
    if (buffer.size() < fill) buffer.resize(fill);
    window = buffer.data();
    window_size = 0;
    if (!ReadFile(buffer.data(), fill, position)) return false;
    window_start = position;
    window_size = fill;
    std::memcpy(to, window, count);
    position += count;
    return true;
}
