#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Bytes to be written one after the other, with corrections further ahead: to a file or into memory. Short writes are
/// gathered; a long one goes straight out. One thread at a time.
class CByteSink {
public:
    CByteSink();
    CByteSink(const CByteSink&) = delete;
    CByteSink& operator=(const CByteSink&) = delete;

    /// Writes to the handle from its beginning; the handle stays the caller's and must outlive the sink.
    void OpenHandle(int file_handle);
    void OpenMemory();
    void Close();
    bool IsOpen() const { return open; }

    std::uint64_t Position() const { return flushed + gathered.size(); }
    /// False when the bytes could not be written; the sink then stays failed.
    bool Write(const void* data, std::size_t count);
    /// Replaces `count` bytes that have already been written at `position`.
    bool Patch(std::uint64_t position, const void* data, std::size_t count);
    /// Hands everything gathered to the file. True when all bytes so far have been written.
    bool Flush();
    /// What was written to memory; the sink is closed.
    std::string TakeMemory();

private:
    bool WriteHandle(const std::uint8_t* data, std::size_t count, std::uint64_t at);

    bool open = false;
    bool failed = false;
    int handle = -1; ///< -1 for memory
    std::uint64_t flushed = 0;
    std::vector<std::uint8_t> gathered;
};
