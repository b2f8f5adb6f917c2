// Preloaded before the C library: counts the steps of a process towards the disk and breaks one of them.

#include "write_faults.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

WriteFault armed = WriteFault::kNone;
std::atomic<long> steps = -1; ///< -1: not counted
long fault_at = 0;

constexpr int kMostFiles = 64;
int unflushed[kMostFiles]; ///< duplicates of the handles that were written to and not flushed since, by handle; 0: none

template <class Function>
Function* Real(Function*, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
#define REAL(name) Real(&name, #name)

[[noreturn]] void Die()
{
    if (armed == WriteFault::kPowerCut) {
        for (const int handle : unflushed)
            if (handle > 0) REAL(ftruncate)(handle, 0);
    }
    kill(getpid(), SIGKILL);
    for (;;) pause();
}

/// Whether the step is to fail, with errno set. Does not return when the process dies here.
bool Fails(bool needs_room)
{
    if (steps < 0) return false;
    const long step = steps++;
    if (armed == WriteFault::kFull && step >= fault_at && needs_room) {
        errno = ENOSPC;
        return true;
    }
    if (step != fault_at) return false;
    if (armed == WriteFault::kError) {
        errno = EIO;
        return true;
    }
    if (armed == WriteFault::kKill || armed == WriteFault::kPowerCut) Die();
    return false;
}

void NoteWritten(int handle)
{
    if (steps < 0 || handle < 0 || handle >= kMostFiles || unflushed[handle] > 0) return;
    unflushed[handle] = fcntl(handle, F_DUPFD_CLOEXEC, kMostFiles);
}

void NoteFlushed(int handle)
{
    if (handle < 0 || handle >= kMostFiles || unflushed[handle] <= 0) return;
    close(unflushed[handle]);
    unflushed[handle] = 0;
}

template <class Write>
ssize_t Written(int handle, std::size_t count, Write write)
{
    const bool torn = armed == WriteFault::kTorn && steps == fault_at;
    if (Fails(true)) return -1;
    NoteWritten(handle);
    const ssize_t written = write(torn ? count / 2 : count);
    if (torn) Die();
    return written;
}

} // namespace

extern "C" {

void zt_arm_write_fault(WriteFault fault, long at)
{
    armed = fault;
    fault_at = at;
    steps = 0;
}

long zt_write_steps()
{
    return steps;
}

ssize_t write(int handle, const void* data, size_t count)
{
    return Written(handle, count, [=](size_t bytes) { return REAL(write)(handle, data, bytes); });
}

ssize_t pwrite(int handle, const void* data, size_t count, off_t at)
{
    return Written(handle, count, [=](size_t bytes) { return REAL(pwrite)(handle, data, bytes, at); });
}

ssize_t pwrite64(int handle, const void* data, size_t count, off64_t at)
{
    return Written(handle, count, [=](size_t bytes) { return REAL(pwrite64)(handle, data, bytes, at); });
}

int fsync(int handle)
{
    if (Fails(false)) return -1;
    const int result = REAL(fsync)(handle);
    if (result == 0) NoteFlushed(handle);
    return result;
}

int ftruncate(int handle, off_t size)
{
    return Fails(false) ? -1 : REAL(ftruncate)(handle, size);
}

int rename(const char* from, const char* to)
{
    return Fails(true) ? -1 : REAL(rename)(from, to);
}

int unlink(const char* path)
{
    return Fails(false) ? -1 : REAL(unlink)(path);
}

int mkdir(const char* path, mode_t mode)
{
    return Fails(true) ? -1 : REAL(mkdir)(path, mode);
}

int open(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if ((flags & O_CREAT) != 0 && Fails(true)) return -1;
    return REAL(open)(path, flags, mode);
}

} // extern "C"
