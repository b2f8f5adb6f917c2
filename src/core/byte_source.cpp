#include "core/byte_source.h"

#include "core/files.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr std::size_t kSourceWindow = 1U << 16;
}

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
    buffer.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size, kSourceWindow)));
    window = buffer.data();
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
    if (count >= buffer.size()) {
        if (!ReadFile(static_cast<std::uint8_t*>(to), count, position)) return false;
        position += count;
        return true;
    }
    const auto fill = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), size - position));
    window_size = 0;
    if (!ReadFile(buffer.data(), fill, position)) return false;
    window_start = position;
    window_size = fill;
    std::memcpy(to, window, count);
    position += count;
    return true;
}
