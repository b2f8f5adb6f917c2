#include "core/byte_sink.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace {
constexpr std::size_t kSinkGathers = 1U << 20;
}

CByteSink::CByteSink() = default;

void CByteSink::OpenHandle(int file_handle)
{
    OpenMemory();
    handle = file_handle;
    gathered.reserve(kSinkGathers);
}

void CByteSink::OpenMemory()
{
    Close();
    open = true;
    failed = false;
}

void CByteSink::Close()
{
    open = false;
    handle = -1;
    flushed = 0;
    gathered.clear();
}

bool CByteSink::WriteHandle(const std::uint8_t* data, std::size_t count, std::uint64_t at)
{
    while (count > 0 && !failed) {
        const ssize_t put = pwrite(handle, data, count, static_cast<off_t>(at));
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) {
            failed = true;
            break;
        }
        data += put;
        at += static_cast<std::uint64_t>(put);
        count -= static_cast<std::size_t>(put);
    }
    return !failed;
}

bool CByteSink::Write(const void* data, std::size_t count)
{
    if (!open || failed) return false;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    if (handle >= 0 && gathered.size() + count > kSinkGathers) {
        if (!Flush()) return false;
        if (count >= kSinkGathers) {
            if (!WriteHandle(bytes, count, flushed)) return false;
            flushed += count;
            return true;
        }
    }
    gathered.insert(gathered.end(), bytes, bytes + count);
    return true;
}

bool CByteSink::Patch(std::uint64_t position, const void* data, std::size_t count)
{
    if (!open || failed || position + count > Position()) return false;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    if (position < flushed) {
        const auto out = static_cast<std::size_t>(std::min<std::uint64_t>(count, flushed - position));
        if (!WriteHandle(bytes, out, position)) return false;
        bytes += out;
        position += out;
        count -= out;
    }
    if (count != 0) std::memcpy(gathered.data() + (position - flushed), bytes, count);
    return true;
}

bool CByteSink::Flush()
{
    if (!open || failed) return false;
    if (handle < 0) return true;
    if (!WriteHandle(gathered.data(), gathered.size(), flushed)) return false;
    flushed += gathered.size();
    gathered.clear();
    return true;
}

std::string CByteSink::TakeMemory()
{
    std::string bytes(gathered.begin(), gathered.end());
    Close();
    return bytes;
}
