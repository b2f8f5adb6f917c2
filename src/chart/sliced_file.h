#pragma once

#include "core/locks.h"

#include <cstdint>
#include <string>
#include <vector>

/// How a file is opened.
struct CFile64 {
    enum EOpenMode {
        read_only,
        read_write, ///< keeps what is there
        create,     ///< begins with an empty file
    };
};

/// A file for random access from several threads, or a folder of up to 100 files ("0" to "99") that stand for one.
///
/// A position has the slice's number in its high 32 bits and the offset in that slice in the low ones; in a single file
/// the whole of it is the offset. Only regular files are opened. Threads: any, each operation takes the lock.
class CMultiThreadedSlicedFile {
public:
    static constexpr int kMostSlices = 100;

    CMultiThreadedSlicedFile() = default;
    CMultiThreadedSlicedFile(const CMultiThreadedSlicedFile&) = delete;
    CMultiThreadedSlicedFile& operator=(const CMultiThreadedSlicedFile&) = delete;
    ~CMultiThreadedSlicedFile();

    /// Opens an existing file as a single one and a folder as slices; a missing path becomes a folder unless the mode
    /// is read_only. True when the (first) file is open.
    bool ReOpen(const char* path, CFile64::EOpenMode mode);
    void Close();

    /// Bytes read, fewer at the end of a slice, or -1.
    int LockedRead(long position, void* buffer, int length);
    bool LockedWrite(long position, const void* buffer, int length);
    /// Both parts behind one another in one lock; the second only when the first was written.
    bool LockedWrite2(long position, const void* first, int first_length, const void* second, int second_length);
    /// Reserves `length` bytes at the end, at a multiple of `alignment` (0: anywhere), and returns their position; -1
    /// when that fails or the file is read-only. Where they would pass 4 GiB of a slice they begin the next one.
    long AllocAtEnd2(int length, int alignment);

    /// errno of the last operation that failed.
    int LastError() const { return last_error; }
    /// Whether space was reserved since ReOpen.
    bool IsDirty() const { return dirty; }

private:
    void CloseSlices();
    int Handle(long position);
    int OpenSlice(int slice);
    int OpenHandle(const char* name);
    void FindCurrentSlice();
    bool WriteAt(int handle, std::int64_t offset, const void* buffer, int length);
    std::int64_t Offset(long position) const;
    int Fail(int error);

    CMutex lock;              ///< guards all below
    std::vector<int> handles; ///< one a slice, -1 while closed
    CFile64::EOpenMode open_mode = CFile64::read_only;
    int last_error = 0;
    std::vector<char> path; ///< in folder mode with "/" at path_length - 1 and room for a number behind it
    std::size_t path_length = 0;
    int current_slice = -1; ///< the last one, -1 until known
    bool single_file = false;
    bool dirty = false;
};
