#pragma once

#include <cstddef>

/// Counts the heap allocations of the calling thread from its construction on: new, and outside sanitizer builds also
/// malloc, calloc and realloc, those inside libraries included.
class CAllocationCounter {
public:
    CAllocationCounter();
    std::size_t Count() const;

private:
    std::size_t start;
};
