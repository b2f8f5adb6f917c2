#include "core/file_names.h"
#include "core/files.h"
#include "core/serializable.h"

void CSerializable::IOStream::Fail()
{
    damaged = true;
    source.Close();
    sink.Close();
}

void CSerializable::IOStream::Enter(Extent& extent, std::uint64_t end)
{
    const std::uint64_t limit = Limit();
    extent.outer = innermost;
    extent.cut = end > limit;
    extent.end = extent.cut ? limit : end;
    if (extent.cut) damaged = true;
    innermost = &extent;
}

void CSerializable::IOStream::SkipTo(std::uint64_t end)
{
    skipped = true;
    source.Seek(end);
}

bool CSerializable::InStream::CheckSignature()
{
    std::uint32_t signature = 0;
    if (source.Read(&signature, sizeof signature) && signature == kSignature) return true;
    Fail();
    return false;
}

bool CSerializable::InStream::Open(const char* path)
{
    base_folder = dirname(path) + "/";
    return source.OpenFile(path) && CheckSignature();
}

bool CSerializable::InStream::OpenMemory(std::string_view bytes)
{
    source.OpenMemory({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    return CheckSignature();
}

CSerializable::OutStream::~OutStream()
{
    if (own_file == nullptr) return;
    Finish();
    std::fclose(own_file);
}

bool CSerializable::OutStream::WriteSignature()
{
    const std::uint32_t signature = kSignature;
    return sink.Write(&signature, sizeof signature);
}

bool CSerializable::OutStream::Open(const char* path)
{
    if (own_file != nullptr) return false;
    own_file = openRegularFile(path, "wb");
    return own_file != nullptr && OpenFile(own_file, dirname(path));
}

bool CSerializable::OutStream::OpenFile(FILE* open_file, const std::string& folder)
{
    base_folder = folder + "/";
    sink.OpenHandle(fileno(open_file));
    return WriteSignature();
}

bool CSerializable::OutStream::OpenMemory()
{
    sink.OpenMemory();
    return WriteSignature();
}
