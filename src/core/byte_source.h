#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

/// Bytes to be read at any position: a regular file or memory. Short reads come from a window of the file; a long one
/// goes straight to its destination. One thread at a time.
class CByteSource {
public:
    CByteSource() = default;
    ~CByteSource() { Close(); }
    CByteSource(const CByteSource&) = delete;
    CByteSource& operator=(const CByteSource&) = delete;

    /// False when there is no regular file or it cannot be read.
    bool OpenFile(const std::string& path);
    /// The bytes must outlive the source.
    void OpenMemory(std::span<const std::uint8_t> bytes);
    void Close();
    bool IsOpen() const { return open; }

    std::uint64_t Size() const { return size; }
    std::uint64_t Position() const { return position; }
    void Seek(std::uint64_t to) { position = to; }
    std::uint64_t Left() const { return position < size ? size - position : 0; }
    /// Reads `count` bytes and moves on, or reads nothing and answers false when fewer are left.
    bool Read(void* to, std::size_t count)
    {
        const std::uint64_t offset = position - window_start;
        if (position < window_start || offset > window_size || window_size - offset < count)
            return ReadOutsideWindow(to, count);
        if (count != 0) std::memcpy(to, window + offset, count);
        position += count;
        return true;
    }

private:
    bool ReadOutsideWindow(void* to, std::size_t count);
    bool ReadFile(std::uint8_t* to, std::size_t count, std::uint64_t at) const;

    bool open = false;
    int handle = -1; ///< -1 for memory
    std::uint64_t size = 0;
    std::uint64_t position = 0;
    const std::uint8_t* window = nullptr;
    std::uint64_t window_start = 0;
    std::size_t window_size = 0;
    std::vector<std::uint8_t> buffer; ///< what the window shows of a file
};
