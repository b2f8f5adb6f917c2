#include "support/allocation_counter.h"

#include <cstdlib>
#include <new>

namespace {
thread_local std::size_t allocations_of_thread = 0;
}

CAllocationCounter::CAllocationCounter() : start(allocations_of_thread) {}

std::size_t CAllocationCounter::Count() const
{
    return allocations_of_thread - start;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

// The sanitizers have a malloc of their own; what can be counted is operator new.
void* operator new(std::size_t size)
{
    ++allocations_of_thread;
    void* memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) std::abort();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocations_of_thread;
    return std::malloc(size != 0 ? size : 1);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

#else

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    ++allocations_of_thread;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    ++allocations_of_thread;
    return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept
{
    ++allocations_of_thread;
    return __libc_realloc(memory, size);
}
}

#endif
