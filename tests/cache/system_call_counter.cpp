#include "system_call_counter.h"

#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

thread_local int file_calls = 0;

/// The C library's own function behind the one defined here.
template <class Function>
Function* Next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

CSystemCallCounter::CSystemCallCounter() : start(file_calls) {}

int CSystemCallCounter::Count() const
{
    return file_calls - start;
}

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static auto* const next = Next<int(const char*, int, ...)>("open");
    ++file_calls;
    return next(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static auto* const next = Next<int(int, const char*, int, ...)>("openat");
    ++file_calls;
    return next(folder, path, flags, mode);
}

int fstat(int file, struct stat* status) noexcept
{
    static auto* const next = Next<int(int, struct stat*)>("fstat");
    ++file_calls;
    return next(file, status);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept
{
    static auto* const next = Next<int(int, const char*, struct stat*, int)>("fstatat");
    ++file_calls;
    return next(folder, path, status, flags);
}

ssize_t pread(int file, void* buffer, size_t size, off_t position)
{
    static auto* const next = Next<ssize_t(int, void*, size_t, off_t)>("pread");
    ++file_calls;
    return next(file, buffer, size, position);
}

ssize_t read(int file, void* buffer, size_t size)
{
    static auto* const next = Next<ssize_t(int, void*, size_t)>("read");
    ++file_calls;
    return next(file, buffer, size);
}

off_t lseek(int file, off_t position, int whence) noexcept
{
    static auto* const next = Next<off_t(int, off_t, int)>("lseek");
    ++file_calls;
    return next(file, position, whence);
}

void* mmap(void* address, size_t length, int protection, int flags, int file, off_t position) noexcept
{
    static auto* const next = Next<void*(void*, size_t, int, int, int, off_t)>("mmap");
    ++file_calls;
    return next(address, length, protection, flags, file, position);
}

int close(int file)
{
    static auto* const next = Next<int(int)>("close");
    ++file_calls;
    return next(file);
}
}
