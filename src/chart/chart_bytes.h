#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

/// Bytes of a chart file by position, however they are reached.
struct IChartBytes {
    virtual ~IChartBytes() = default;
    /// Reads up to out.size() bytes from a position; how many there were.
    virtual std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) = 0;
    virtual std::uint64_t Size() const = 0;
};

/// A regular file, opened for reading: never a folder, a FIFO or a device, and never blocking on one.
class CChartFile : public IChartBytes {
public:
    /// `name` is relative to `folder`; AT_FDCWD for a path.
    CChartFile(int folder, const char* name);
    CChartFile(const CChartFile&) = delete;
    CChartFile& operator=(const CChartFile&) = delete;
    ~CChartFile() override;

    bool IsOpen() const { return file >= 0; }
    std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) override;
    std::uint64_t Size() const override { return size; }
    /// Nanoseconds since 1970.
    std::int64_t LastWrite() const { return last_write_ns; }

private:
    int file = -1;
    std::uint64_t size = 0;
    std::int64_t last_write_ns = 0;
};

/// Reads scattered small items of a chart file with few system calls: one window is read where most of them lie, and
/// only what is outside costs a read of its own.
class CWindowedBytes {
public:
    static constexpr std::size_t kWindow = 4096;
    /// Bytes that a text of the header may have.
    static constexpr std::size_t kLongestText = 1023;

    explicit CWindowedBytes(IChartBytes& chart_bytes) : bytes(chart_bytes) {}
    /// Reads the window that holds the most of the positions (0 and those behind the file do not count).
    void Prefetch(std::span<const std::uint64_t> positions);
    /// Whether all of `out` could be read.
    bool Read(std::uint64_t position, std::span<std::uint8_t> out);
    template <class T>
    bool ReadInto(std::uint64_t position, T& out)
    {
        return Read(position, {reinterpret_cast<std::uint8_t*>(&out), sizeof(T)});
    }
    /// The zero-terminated Latin-1 text at a position as UTF-8; empty for position 0 and for what cannot be read.
    std::string Text(std::uint64_t position);

private:
    std::span<const std::uint8_t> InWindow(std::uint64_t position) const;

    IChartBytes& bytes;
    std::uint64_t window_start = 0;
    std::size_t window_size = 0;
    std::array<std::uint8_t, kWindow> window;
};
