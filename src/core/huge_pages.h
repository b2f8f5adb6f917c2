#pragma once

#include <cstddef>
#include <cstdint>

#include <sys/mman.h>

/// Asks the system to back memory that has not been touched yet with large pages: a block of many megabytes then costs
/// a fault for every 2 MiB instead of every 4 KiB. Nothing happens for short blocks, or where the system has none.
inline void WantHugePages(const void* data, std::size_t bytes)
{
    constexpr std::size_t kWorthIt = std::size_t{4} << 20;
    constexpr std::uintptr_t kPage = 4096;
    if (bytes < kWorthIt) return;
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(data) + kPage - 1) / kPage * kPage;
    const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(data) + bytes;
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}
