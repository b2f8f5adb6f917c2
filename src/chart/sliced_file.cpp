#include "chart/sliced_file.h"

#include "core/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t kSliceMode = 0644;
constexpr std::size_t kNumberRoom = 16;
constexpr std::size_t kHandleGrowth = 10;
constexpr std::int64_t kSliceLimit = 0xFFFFFFFF;

std::int64_t RoundUp(std::int64_t value, int alignment)
{
    return alignment > 0 ? (value + alignment - 1) / alignment * alignment : value;
}

} // namespace

CMultiThreadedSlicedFile::~CMultiThreadedSlicedFile()
{
    CloseSlices();
}

void CMultiThreadedSlicedFile::Close()
{
    const CMutexLocker locker(lock);
    CloseSlices();
}

void CMultiThreadedSlicedFile::CloseSlices()
{
    for (const int handle : handles)
        if (handle >= 0) close(handle);
    handles.clear();
    current_slice = -1;
    dirty = false;
}

bool CMultiThreadedSlicedFile::ReOpen(const char* new_path, CFile64::EOpenMode mode)
{
    const CMutexLocker locker(lock);
    CloseSlices();
    open_mode = mode;
    last_error = 0;
    single_file = isRegularFile(new_path);
    const std::size_t length = std::strlen(new_path);
    path.assign(new_path, new_path + length + 1);
    path_length = length;
    if (single_file) return OpenSlice(0) >= 0;
    if (mode != CFile64::read_only && !createPath(new_path)) {
        Fail(errno);
        return false;
    }
    path.resize(length + 1 + kNumberRoom);
    path[length] = '/';
    path_length = length + 1;
    return OpenSlice(0) >= 0;
}

int CMultiThreadedSlicedFile::Fail(int error)
{
    last_error = error;
    return -1;
}

int CMultiThreadedSlicedFile::OpenHandle(const char* name)
{
    int flags = O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    if (open_mode == CFile64::read_only) {
        flags |= O_RDONLY;
    } else {
        flags |= O_RDWR | O_CREAT;
    }
    const int handle = open(name, flags, kSliceMode);
    if (handle < 0) return Fail(errno);
    struct stat status {};
    const bool regular = fstat(handle, &status) == 0 && S_ISREG(status.st_mode);
    if (regular && (open_mode != CFile64::create || ftruncate(handle, 0) == 0)) return handle;
    const int error = regular ? errno : EINVAL;
    close(handle);
    return Fail(error);
}

/// The handle of a slice, opened when needed; a single file has slice 0 only.
int CMultiThreadedSlicedFile::OpenSlice(int slice)
{
    if (slice < 0 || slice >= kMostSlices || path.empty()) return Fail(EINVAL);
    const auto at = static_cast<std::size_t>(slice);
    if (at >= handles.size()) handles.resize(at + kHandleGrowth, -1);
    if (handles[at] < 0) {
        if (!single_file) std::snprintf(path.data() + path_length, kNumberRoom, "%d", slice);
        handles[at] = OpenHandle(path.data());
    }
    return handles[at];
}

int CMultiThreadedSlicedFile::Handle(long position)
{
    if (position < 0) return Fail(EINVAL);
    const long slice = single_file ? 0 : position >> 32;
    return slice < kMostSlices ? OpenSlice(static_cast<int>(slice)) : Fail(EINVAL);
}

std::int64_t CMultiThreadedSlicedFile::Offset(long position) const
{
    return single_file ? position : position & kSliceLimit;
}

int CMultiThreadedSlicedFile::LockedRead(long position, void* buffer, int length)
{
    const CMutexLocker locker(lock);
    if (length < 0) return Fail(EINVAL);
    const int handle = Handle(position);
    if (handle < 0) return -1;
    int got = 0;
    while (got < length) {
        const ssize_t count = pread(handle, static_cast<char*>(buffer) + got, static_cast<std::size_t>(length - got),
                                    Offset(position) + got);
        if (count == 0) break;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Fail(errno);
        got += static_cast<int>(count);
    }
    return got;
}

bool CMultiThreadedSlicedFile::WriteAt(int handle, std::int64_t offset, const void* buffer, int length)
{
    int put = 0;
    while (put < length) {
        const ssize_t count = pwrite(handle, static_cast<const char*>(buffer) + put,
                                     static_cast<std::size_t>(length - put), offset + put);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            Fail(count < 0 ? errno : ENOSPC);
            return false;
        }
        put += static_cast<int>(count);
    }
    return length >= 0;
}

bool CMultiThreadedSlicedFile::LockedWrite(long position, const void* buffer, int length)
{
    return LockedWrite2(position, buffer, length, nullptr, 0);
}

bool CMultiThreadedSlicedFile::LockedWrite2(long position, const void* first, int first_length, const void* second,
                                            int second_length)
{
    const CMutexLocker locker(lock);
    const int handle = Handle(position);
    if (handle < 0) return false;
    return WriteAt(handle, Offset(position), first, first_length) &&
           WriteAt(handle, Offset(position) + first_length, second, second_length);
}

/// The last slice that exists: looks at the names "0", "1" and so on until one is missing.
void CMultiThreadedSlicedFile::FindCurrentSlice()
{
    if (current_slice >= 0) return;
    current_slice = 0;
    if (single_file || open_mode == CFile64::create) return;
    for (int slice = 0; slice < kMostSlices; ++slice) {
        std::snprintf(path.data() + path_length, kNumberRoom, "%d", slice);
        if (!isRegularFile(path.data())) break;
        current_slice = slice;
    }
}

long CMultiThreadedSlicedFile::AllocAtEnd2(int length, int alignment)
{
    const CMutexLocker locker(lock);
    if (open_mode == CFile64::read_only || length < 0) return Fail(EINVAL);
    dirty = true;
    FindCurrentSlice();
    int handle = OpenSlice(current_slice);
    if (handle < 0) return -1;
    const off_t end = lseek(handle, 0, SEEK_END);
    if (end < 0) return Fail(errno);
    std::int64_t offset = RoundUp(end, alignment);
    if (!single_file && offset + length > kSliceLimit) {
        handle = OpenSlice(current_slice + 1);
        if (handle < 0) return -1;
        ++current_slice;
        offset = 0;
    }
    constexpr char zero = 0;
    if (length > 0 && !WriteAt(handle, offset + length - 1, &zero, 1)) return -1;
    return single_file ? offset : offset + (static_cast<long>(current_slice) << 32);
}
