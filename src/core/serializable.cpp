#include "core/serializable.h"

#include "core/file_names.h"
#include "core/files.h"
#include "core/folders.h"
#include "core/safe_replace.h"

#include <memory>

constinit CSerializable::Type* CSerializable::Type::head = nullptr;

namespace {

/// Whether the program itself writes the file: a chart or layout that the user merely opens gets no copy beside it.
bool IsOwnFile(const std::string& path)
{
    return path.starts_with(getAppDirectory() + "/");
}

struct CPolymorphicHeader {
    std::int32_t id;
    std::int32_t length;
};

} // namespace

bool CSerializable::SerializeWithMagic(IOStream& stream, int magic)
{
    if (magic != 0) {
        Section section(stream);
        if (section.atEnd() || !section.declaremagic(magic)) return false;
    }
    return Serialize(stream) && stream.ok();
}

bool CSerializable::ReadFile(const char* path, ZT_HWND parent, int magic)
{
    InStream stream;
    stream.parent = parent;
    const bool whole = stream.Open(path) && SerializeWithMagic(stream, magic);
    if ((!whole || stream.damaged) && IsOwnFile(path) && fileSize(path) > 0) KeepDamagedCopy(path);
    return whole;
}

bool CSerializable::WriteFile(const char* path, ZT_HWND parent, int magic)
{
    CSafeReplace replace(path);
    if (replace.File() == nullptr) return false;
    OutStream stream;
    stream.parent = parent;
    return stream.OpenFile(replace.File(), dirname(path)) && SerializeWithMagic(stream, magic) && stream.Finish() &&
           replace.Commit();
}

bool CSerializable::ReadMemory(std::string_view bytes, int magic)
{
    InStream stream;
    return stream.OpenMemory(bytes) && SerializeWithMagic(stream, magic);
}

std::string CSerializable::WriteMemory(int magic)
{
    OutStream stream;
    if (!stream.OpenMemory() || !SerializeWithMagic(stream, magic)) return {};
    return stream.TakeMemory();
}

CSerializable* CSerializable::ReadPolymorphic(IOStream& stream)
{
    CPolymorphicHeader header{};
    if (!stream.reading() || stream.Position() >= stream.Limit() || !stream.Transfer(&header, sizeof header))
        return nullptr;
    if (header.length < 1) return nullptr;
    IOStream::Extent body;
    stream.Enter(body, stream.Position() + static_cast<std::uint64_t>(header.length));
    const bool nests = stream.polymorphic_depth < kDeepestNesting;
    ++stream.polymorphic_depth;
    std::unique_ptr<CSerializable> object(nests ? Type::CreateId(header.id) : nullptr);
    if (object && !object->Serialize(stream)) {
        object.reset();
        stream.damaged = true;
    }
    --stream.polymorphic_depth;
    stream.Leave(body);
    if (!stream.ok()) return nullptr;
    if (stream.Position() != body.end) stream.SkipTo(body.end);
    return object.release();
}

bool CSerializable::WritePolymorphic(IOStream& stream)
{
    CPolymorphicHeader header{GetTypeId(), 0};
    const std::uint64_t start = stream.Position();
    if (!stream.writing() || !stream.Transfer(&header, sizeof header) || !Serialize(stream)) return false;
    header.length = static_cast<std::int32_t>(stream.Position() - start - sizeof header);
    return stream.sink.Patch(start, &header, sizeof header);
}

int CSerializable::readMagic(const std::string& path)
{
    InStream stream;
    if (!stream.Open(path.c_str())) return 0;
    Section section(stream);
    int magic = 0;
    if (section.BytesLeft() != sizeof magic || !section.declare(magic)) return 0;
    return magic;
}

CSerializable::Type::Type(unsigned type_id) : id(type_id), next(head)
{
    head = this;
}

CSerializable* CSerializable::Type::CreateId(int id)
{
    for (const Type* type = head; type != nullptr; type = type->next)
        if (static_cast<int>(type->id) == id) return type->Create();
    return nullptr;
}
