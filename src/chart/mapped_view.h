#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// A part of a file mapped for reading. When somebody truncates the file while it is mapped, the lost pages read as
/// zeros instead of ending the program.
class CMappedView {
public:
    CMappedView() = default;
    CMappedView(const CMappedView&) = delete;
    CMappedView& operator=(const CMappedView&) = delete;
    ~CMappedView() { Unmap(); }

    /// Maps `length` bytes from `start` (a multiple of the page size), which the caller knows to be in the file. False,
    /// and nothing mapped, when that fails.
    bool Map(int file, std::uint64_t start, std::size_t length);
    void Unmap();
    std::span<const std::uint8_t> Bytes() const { return {data, length}; }
    bool IsMapped() const { return data != nullptr; }

private:
    const std::uint8_t* data = nullptr;
    std::size_t length = 0;
};
