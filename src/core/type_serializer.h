#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

/// The flat file form: fields one after the other, little-endian, without sections, lengths or a signature. One
/// sequence of declarations serves both directions. After a failure the ok flag is clear and every later transfer is
/// skipped, so that a whole record is declared and the flag asked once.
class CTypeSerializer {
public:
    enum CMode { kInert = 0, kWrite = 1, kRead = 2 };

    explicit CTypeSerializer(int with_mode) : mode(with_mode) {}
    CTypeSerializer(const CTypeSerializer&) = delete;
    CTypeSerializer& operator=(const CTypeSerializer&) = delete;
    virtual void put_data(const void* data, int size) = 0;
    virtual void get_data(void* data, int size) = 0;
    virtual ~CTypeSerializer() = default;

    int mode;
    bool ok = true;
    bool wide_strings = true;    ///< strings take 2 bytes a character
    std::int64_t byte_count = 0; ///< transferred so far

    /// `size` raw bytes.
    bool declare(void* data, int size);
    template <class T>
    requires(std::is_trivially_copyable_v<T> && !std::is_pointer_v<T> && !std::is_enum_v<T> &&
             !std::is_same_v<T, bool>) bool declare(T& value)
    {
        return declare(static_cast<void*>(&value), static_cast<int>(sizeof(T)));
    }
    /// One byte.
    bool declare(bool& value);
    /// A length of at most 100,000 and the characters; in the wide form each byte is sign-extended to 16 bits, and of
    /// each unit that is read the low byte counts.
    bool declare(std::string& text);
    /// 4 bytes; when reading, true if they are `magic`.
    bool declaremagic(int magic);
    /// A size of at most 1,000,000 and the bytes. When reading, `size` comes as the capacity and becomes the stored
    /// size; a longer one fills the buffer, the rest is thrown away and `size` stays as it was.
    bool declaresize(void* data, int& size);
    bool put(const std::string& text);
    bool get(std::string& text);
    bool putsize(const void* data, int size);
    bool getsize(void* data, int& size);
    /// Reads a string into a buffer of `capacity` bytes, cut to fit and always terminated.
    bool getstr(char* buffer, int capacity);

private:
    void Put(const void* data, int size);
    void Get(void* data, int size);
};

/// A flat file for writing.
class CTypeFileOut : public CTypeSerializer {
public:
    explicit CTypeFileOut(const std::string& path);
    ~CTypeFileOut() override;
    /// True when everything has been written.
    bool Close();
    void put_data(const void* data, int size) override;
    void get_data(void*, int) override { ok = false; }

private:
    FILE* file;
};

/// A flat file for reading; only regular files open.
class CTypeFileIn : public CTypeSerializer {
public:
    explicit CTypeFileIn(const std::string& path);
    ~CTypeFileIn() override;
    void Close();
    void put_data(const void*, int) override { ok = false; }
    void get_data(void* data, int size) override;

private:
    FILE* file;
};

/// The flat form in memory that has already been received.
class CTypeMemoryIn : public CTypeSerializer {
public:
    /// The bytes must outlive the object.
    explicit CTypeMemoryIn(std::span<const std::uint8_t> bytes);
    void put_data(const void*, int) override { ok = false; }
    void get_data(void* data, int size) override;

private:
    std::span<const std::uint8_t> rest;
};
