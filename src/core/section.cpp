#include "core/serializable.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint8_t kSectionTag = 0xBE;
constexpr std::uint32_t kLongestSection = 100'000'000;
constexpr std::uint32_t kLongestString = 1'000'000;

/// Whether a stored name stands for itself, not for a file in the folder of the file that holds it.
bool IsAbsoluteName(const std::string& name)
{
    return !name.empty() && (name[0] == '/' || (name.size() > 1 && name[1] == ':'));
}

} // namespace

CSerializable::Section::Section(IOStream& on) : stream(on), start(on.Position())
{
    refused = !stream.CanNest();
    ++stream.depth;
    if (stream.writing()) {
        const std::uint8_t header[5] = {};
        if (!refused && !stream.sink.Write(header, sizeof header)) stream.Fail();
        return;
    }
    if (!stream.reading()) return;
    absent = stream.innermost != nullptr && start >= stream.innermost->end;
    std::uint32_t length = 0;
    if (absent) {
        stream.Enter(extent, start);
        extent.end = start;
        extent.cut = extent.outer->cut;
    } else if (ReadHeader(length)) {
        stream.Enter(extent, start + length);
    } else {
        stream.Fail();
    }
    if (refused) stream.damaged = true;
}

CSerializable::Section::~Section()
{
    --stream.depth;
    if (stream.innermost == &extent) stream.Leave(extent);
    if (stream.writing() && !refused) {
        const auto length = static_cast<std::uint32_t>(stream.Position() - start);
        std::uint8_t header[5] = {kSectionTag};
        std::memcpy(header + 1, &length, sizeof length);
        if (length > kLongestSection || !stream.sink.Patch(start, header, sizeof header)) stream.Fail();
    } else if (stream.reading() && !absent && stream.Position() < extent.end) {
        stream.SkipTo(extent.end);
    }
}

bool CSerializable::Section::ReadHeader(std::uint32_t& length)
{
    std::uint8_t header[5] = {};
    if (!stream.source.Read(header, sizeof header)) return false;
    std::memcpy(&length, header + 1, sizeof length);
    return header[0] == kSectionTag && length != 0 && length <= kLongestSection;
}

CSerializable::Section::CVerdict CSerializable::Section::Begin() const
{
    if (!stream.ok() || refused) return kFalse;
    if (!atEnd()) return kGoOn;
    return extent.cut ? kFalse : kTrue;
}

bool CSerializable::Section::declare_fblock(void* data, int size)
{
    const CVerdict verdict = Begin();
    if (verdict != kGoOn) return verdict == kTrue;
    return size >= 0 && stream.Transfer(data, static_cast<std::size_t>(size));
}

bool CSerializable::Section::declare(bool& value)
{
    std::uint8_t byte = value ? 1 : 0;
    if (!declare_fblock(&byte, 1)) return false;
    value = byte != 0;
    return true;
}

bool CSerializable::Section::declare(std::string& text)
{
    const CVerdict verdict = Begin();
    if (verdict != kGoOn) return verdict == kTrue;
    if (reading()) return ReadString(text);
    const auto length = static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), kLongestString));
    return stream.sink.Write(&length, sizeof length) && stream.sink.Write(text.data(), length);
}

bool CSerializable::Section::ReadString(std::string& text)
{
    text.clear();
    std::uint32_t length = 0;
    if (!stream.source.Read(&length, sizeof length)) return false;
    if (length > kLongestString || length > stream.source.Left()) return false;
    text.resize(length);
    return stream.source.Read(text.data(), length);
}

bool CSerializable::Section::declare_vblock(void* data, int size)
{
    const CVerdict verdict = Begin();
    if (verdict != kGoOn) return verdict == kTrue;
    if (size < 0) return false;
    auto stored = static_cast<std::uint32_t>(size);
    if (!stream.Transfer(&stored, sizeof stored)) return false;
    if (writing()) return stream.sink.Write(data, stored);
    return read_vdata(data, static_cast<std::uint32_t>(size), stored);
}

bool CSerializable::Section::declare_array(void* data, int element_size, int count)
{
    const CVerdict verdict = Begin();
    if (verdict != kGoOn) return verdict == kTrue;
    if (element_size < 0 || count < 0) return false;
    const auto wanted = static_cast<std::uint32_t>(element_size);
    std::uint32_t stored = wanted;
    if (!stream.Transfer(&stored, sizeof stored)) return false;
    const std::uint64_t bytes = std::uint64_t{stored} * static_cast<std::uint32_t>(count);
    if (reading() && bytes > stream.source.Left()) return false;
    if (stored == wanted) return stream.Transfer(data, static_cast<std::size_t>(bytes));
    if (stored == 0) return true;
    auto* element = static_cast<std::uint8_t*>(data);
    for (int i = 0; i < count; ++i, element += wanted)
        if (!read_vdata(element, wanted, stored)) return false;
    return true;
}

bool CSerializable::Section::read_vdata(void* buffer, std::uint32_t wanted, std::uint32_t stored)
{
    if (stored > stream.source.Left()) return false;
    if (!stream.source.Read(buffer, std::min(wanted, stored))) return false;
    if (stored > wanted) stream.SkipTo(stream.Position() + (stored - wanted));
    return true;
}

bool CSerializable::Section::declaremagic(int magic)
{
    int value = magic;
    return declare(value) && value == magic;
}

bool CSerializable::Section::declarecolor(GraphicsColor& color)
{
    float parts[4] = {color.red, color.green, color.blue, color.alpha};
    if (!declare_fblock(parts, static_cast<int>(sizeof parts))) return false;
    color = GraphicsColor(parts[0], parts[1], parts[2], parts[3]);
    return true;
}

bool CSerializable::Section::declarefilename(std::string& path)
{
    const std::string& base = stream.base_folder;
    if (writing()) {
        std::string name = path;
        // What is left must read back as a name in that folder.
        if (!base.empty() && path.starts_with(base) && !IsAbsoluteName(path.substr(base.size())))
            name = path.substr(base.size());
        return declare(name);
    }
    if (atEnd()) return declare(path);
    if (!declare(path)) return false;
    if (!path.empty() && !IsAbsoluteName(path)) path.insert(0, base);
    return true;
}

bool CSerializable::Section::declare_count(std::uint32_t& count, std::uint32_t most)
{
    const bool in_file = reading() && !atEnd();
    return declare(count) && count <= most && (!in_file || count <= BytesLeft());
}
