#pragma once

#include "core/byte_sink.h"
#include "core/byte_source.h"
#include "core/graphics_color.h"
#include "core/zt_hwnd.h"

#include <cstdint>
#include <cstdio>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>

/// Base of what is filed in a typed file: sections that tell their own length, so that older and newer programs read
/// each other's files. One Serialize() serves both directions.
///
/// A typed file is the signature 0x73ACF249, a section with the magic number of its kind (when it has one), and the
/// sections of the object. A section is the byte 0xBE, its length as 4 bytes (these 5 included), and its content.
/// Everything is little-endian and without padding. Operations answer false on failure and never throw; a stream
/// belongs to one thread.
class CSerializable {
public:
    class IOStream;
    class InStream;
    class OutStream;
    class Section;
    class Type;

    static constexpr std::uint32_t kSignature = 0x73ACF249;
    static constexpr int kDeepestNesting = 64; ///< sections in sections; also polymorphic objects in such

    CSerializable() = default;
    CSerializable(const CSerializable&) = default;
    CSerializable& operator=(const CSerializable&) = default;
    virtual ~CSerializable() = default;

    /// Writes or reads the object. Fields that are not in the file keep what they had.
    virtual bool Serialize(IOStream& stream) = 0;
    /// The number in the file of a polymorphic object; -1 for a class that has none. Never changes once files exist.
    virtual int GetTypeId() const { return -1; }
    bool IsType(int id) const { return GetTypeId() == id; }

    /// Reads a regular file; `magic` 0 stands for a kind without magic number. With a wrong magic the object has not
    /// been touched. One of the program's own files that is there but does not load whole gets a copy, NAME.damaged.
    bool ReadFile(const char* path, ZT_HWND parent, int magic);
    bool ReadFile(const std::string& path, ZT_HWND parent, int magic) { return ReadFile(path.c_str(), parent, magic); }
    /// Replaces the file safely (see CSafeReplace); makes its folder.
    bool WriteFile(const char* path, ZT_HWND parent, int magic);
    bool WriteFile(const std::string& path, ZT_HWND parent, int magic)
    {
        return WriteFile(path.c_str(), parent, magic);
    }
    /// The same from and to memory. WriteMemory gives an empty text on failure.
    bool ReadMemory(std::string_view bytes, int magic);
    std::string WriteMemory(int magic);

    /// The next polymorphic object of the stream, the caller's; null when its type is unknown or it does not read. The
    /// stream stands behind it in either case.
    static CSerializable* ReadPolymorphic(IOStream& stream);
    bool WritePolymorphic(IOStream& stream);

    /// The magic number of a file: the 4 bytes of a first section that holds nothing else. 0 when there is none.
    static int readMagic(const std::string& path);

private:
    bool SerializeWithMagic(IOStream& stream, int magic);
};

/// A typed file or memory under way in one direction.
class CSerializable::IOStream {
public:
    IOStream() = default;
    IOStream(const IOStream&) = delete;
    IOStream& operator=(const IOStream&) = delete;

    bool reading() const { return source.IsOpen(); }
    bool writing() const { return sink.IsOpen(); }
    /// False once the stream has failed; every later operation fails too.
    bool ok() const { return reading() || writing(); }
    /// Whether there is nothing left to be read of the innermost section, or of the file; false when writing.
    bool atEnd() const { return reading() && Position() >= Limit(); }
    /// Whether one more section may be opened inside the innermost one.
    bool CanNest() const { return depth < kDeepestNesting; }
    /// Closes the stream: what was read after this cannot be trusted, what was written is incomplete.
    void Fail();

    bool skipped = false; ///< a reader jumped over bytes: a newer program wrote the file
    bool damaged = false; ///< something in the file could not be read and is lost
    ZT_HWND parent;
    std::string base_folder; ///< of the file, ends with "/"; empty for memory

protected:
    friend class CSerializable;
    friend class Section;

    /// How far what is being read reaches. Innermost first.
    struct Extent {
        std::uint64_t end = 0;
        bool cut = false; ///< it should reach further, but the bytes are not there
        Extent* outer = nullptr;
    };

    bool Transfer(void* data, std::size_t size) { return reading() ? source.Read(data, size) : sink.Write(data, size); }
    std::uint64_t Position() const { return reading() ? source.Position() : sink.Position(); }
    /// Where the innermost extent, or the file, ends.
    std::uint64_t Limit() const { return innermost != nullptr ? innermost->end : source.Size(); }
    /// An extent from here on that should end at `end`, not beyond what it stands in.
    void Enter(Extent& extent, std::uint64_t end);
    void Leave(const Extent& extent) { innermost = extent.outer; }
    /// Moves to `end`, over bytes that nobody declared.
    void SkipTo(std::uint64_t end);

    CByteSource source;
    CByteSink sink;
    Extent* innermost = nullptr;
    int depth = 0;
    int polymorphic_depth = 0;
};

class CSerializable::InStream : public IOStream {
public:
    /// False when there is no regular file or it does not begin with the signature.
    bool Open(const char* path);
    /// The bytes must outlive the stream.
    bool OpenMemory(std::string_view bytes);

private:
    bool CheckSignature();
};

class CSerializable::OutStream : public IOStream {
public:
    OutStream() = default;
    ~OutStream();
    /// Creates or empties the file and writes the signature.
    bool Open(const char* path);
    /// Writes to an open, empty file that stays the caller's, as if it stood in `folder`.
    bool OpenFile(FILE* open_file, const std::string& folder);
    bool OpenMemory();
    /// True when everything has been handed to the system.
    bool Finish() { return sink.Flush(); }
    std::string TakeMemory() { return sink.TakeMemory(); }

private:
    bool WriteSignature();
    FILE* own_file = nullptr;
};

/// One record of a typed file: opened by the constructor, closed by the destructor. Its fields have no names; they are
/// declared in their order. At or beyond the end of the section, a declaration touches nothing and answers true: the
/// file is older than the field. A new field is only ever added at the end.
class CSerializable::Section {
public:
    explicit Section(IOStream& stream);
    ~Section();
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    IOStream& stream;

    bool reading() const { return stream.reading(); }
    bool writing() const { return stream.writing(); }
    /// Whether nothing is left to be read; false when writing.
    bool atEnd() const { return reading() && stream.Position() >= extent.end; }
    /// Bytes of the section that are left to be read: a bound for counts.
    std::uint64_t BytesLeft() const { return atEnd() ? 0 : extent.end - stream.Position(); }

    /// `size` raw bytes.
    bool declare_fblock(void* data, int size);
    /// A length and the bytes; at most 1,000,000, the rest is cut off when writing.
    bool declare(std::string& text);
    /// One byte.
    bool declare(bool& value);
    /// A number or plain record, as it stands in memory.
    template <class T>
    requires(std::is_trivially_copyable_v<T> && !std::is_pointer_v<T> && !std::is_enum_v<T>) bool declare(T& value)
    {
        return declare_fblock(&value, static_cast<int>(sizeof(T)));
    }
    /// A size and the bytes; a shorter one in the file leaves the tail of the buffer as it was.
    bool declare_vblock(void* data, int size);
    /// An element size and `count` elements, each of which may be shorter or longer in the file. The count itself is
    /// the caller's to file, and to check against BytesLeft().
    bool declare_array(void* data, int element_size, int count);
    /// When reading, true if the 4 bytes in the file are `magic`.
    bool declaremagic(int magic);
    /// Four floats: red, green, blue, alpha.
    bool declarecolor(GraphicsColor& color);
    /// A path, stored relative to the file's folder when it lies in it.
    bool declarefilename(std::string& path);
    /// The number of elements that follow. Reading fails when it is above `most` or the section has not one byte an
    /// element left.
    bool declare_count(std::uint32_t& count, std::uint32_t most);

private:
    /// What a declaration answers at once; kGoOn when it has to transfer.
    enum CVerdict { kTrue, kFalse, kGoOn };
    CVerdict Begin() const;
    bool ReadHeader(std::uint32_t& length);
    bool ReadString(std::string& text);
    bool read_vdata(void* buffer, std::uint32_t wanted, std::uint32_t stored);

    std::uint64_t start = 0;
    IOStream::Extent extent;
    bool absent = false;  ///< the enclosing section ended before this one: all fields keep their defaults
    bool refused = false; ///< nested too deep
};

/// The run-time record of a polymorphic class: a static object beside the class.
class CSerializable::Type {
public:
    explicit Type(unsigned type_id);
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;
    virtual ~Type() = default;

    virtual CSerializable* Create() const = 0;
    /// A new object of the type, the caller's; null when no class has the id.
    static CSerializable* CreateId(int id);

    const unsigned id;

private:
    Type* next;
    static constinit Type* head;
};

/// Files a list of objects of one class; the list owns them. An element that does not read is left out, and the stream
/// is marked as damaged.
template <class T>
bool CSerializableDeclareStatic(CSerializable::Section& section, std::list<T*>& list)
{
    constexpr std::uint32_t kMostElements = 10'000'000;
    auto count = static_cast<std::uint32_t>(list.size());
    if (!section.reading()) { // a stream that failed while writing leaves the list alone
        if (!section.declare_count(count, kMostElements)) return false;
        for (T* element : list)
            if (!element->Serialize(section.stream)) return false;
        return true;
    }
    for (T* element : list) delete element;
    list.clear();
    if (section.atEnd()) return true;
    if (!section.declare_count(count, kMostElements)) return false;
    for (; count > 0; --count) {
        const std::uint64_t before = section.BytesLeft();
        T* element = before > 0 ? new T : nullptr;
        if (element != nullptr && element->Serialize(section.stream) && section.BytesLeft() < before) {
            list.push_back(element);
            continue;
        }
        delete element;
        section.stream.damaged = true;
        // Where nothing moved on, no later element will either.
        if (section.BytesLeft() >= before || !section.stream.ok()) break;
    }
    return section.stream.ok();
}
