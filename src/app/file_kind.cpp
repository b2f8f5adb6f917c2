#include "app/file_kind.h"

#include "core/file_names.h"
#include "core/files.h"
#include "core/serializable.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr std::uint32_t kXmlText = 0x6D783F3C; // "<?xm"
constexpr std::uint32_t kGpxText = 0x7870673C; // "<gpx"
constexpr std::uint32_t kChartMagic = 0x1423D5FF;
constexpr std::uint32_t kPackageMagic = 0x319E8613;
constexpr std::uint32_t kTypedFileSignature = 0x73ACF249;
constexpr std::uint32_t kPagesMagic = 0x47F8FB82;
constexpr std::uint32_t kPageMagic = 0x71831AB9;

bool ReadFirstWord(const std::string& path, std::uint32_t& word)
{
    FILE* file = openRegularFile(path, "rb");
    if (file == nullptr) return false;
    unsigned char bytes[4];
    const bool read = std::fread(bytes, sizeof(bytes), 1, file) == 1;
    std::fclose(file);
    word = bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t{bytes[3]} << 24;
    return read;
}

std::string ExtensionFromContent(const std::string& path, std::uint32_t word, const std::string& present)
{
    switch (word) {
    case kXmlText:
    case kGpxText:
        return "gpx";
    case kChartMagic:
        return "rlt";
    case kPackageMagic:
        return "ztpkg";
    case kTypedFileSignature: {
        const auto magic = static_cast<std::uint32_t>(CSerializable::readMagic(path));
        if (magic == kPagesMagic) return "pstf";
        if (magic == kPageMagic) return "dvpage";
        return present;
    }
    default:
        return (word & 0xFF) == '<' ? "xml" : present;
    }
}

} // namespace

file_kind SortFile(const std::string& path)
{
    std::string ext = extension(path);
    std::uint32_t word = 0;
    if (ReadFirstWord(path, word)) ext = ExtensionFromContent(path, word, ext);
    make_string_lower_case(ext);
    if (ext == "gpx" || ext == "xml") return file_kind::gpx;
    if (ext == "pstf") return file_kind::pages;
    if (ext == "dvpage") return file_kind::page;
    if (ext == "rlt") return file_kind::chart;
    if (ext == "ztpkg") return file_kind::package;
    return file_kind::unknown;
}
