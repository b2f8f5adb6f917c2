#include "core/xml_document.h"

#include <array>
#include <cerrno>
#include <charconv>

#include <iconv.h>

namespace {

struct CEntity {
    std::string_view name;
    char character;
};
constexpr std::array<CEntity, 5> kEntities = {{{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
constexpr std::size_t kLongestEntity = 12;

bool IsControl(std::uint32_t code)
{
    return code < 0x20 && code != '\t' && code != '\n';
}

void AppendUtf8(std::string& out, std::uint32_t code)
{
    const auto put = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

/// Appends what stands between "&" and ";"; false when that is no entity.
bool AppendEntity(std::string& out, std::string_view name)
{
    if (!name.starts_with('#')) {
        for (const CEntity& entity : kEntities) {
            if (entity.name != name) continue;
            out += entity.character;
            return true;
        }
        return false;
    }
    name.remove_prefix(1);
    const bool hexadecimal = name.starts_with('x') || name.starts_with('X');
    if (hexadecimal) name.remove_prefix(1);
    std::uint32_t code = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != name.data() + name.size()) return false;
    if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return false;
    if (!IsControl(code)) AppendUtf8(out, code);
    return true;
}

/// The encoding that a byte order mark tells, and how long the mark is.
struct CMark {
    std::string_view bytes;
    const char* encoding;
};
constexpr CMark kMarks[] = {
    {"\xEF\xBB\xBF", "UTF-8"},
    {std::string_view("\xFF\xFE\0\0", 4), "UTF-32LE"},
    {std::string_view("\0\0\xFE\xFF", 4), "UTF-32BE"},
    {"\xFF\xFE", "UTF-16LE"},
    {"\xFE\xFF", "UTF-16BE"},
};

/// The encoding that the XML declaration at the front names; UTF-8 without one.
std::string DeclaredEncoding(std::string_view bytes)
{
    if (!bytes.starts_with("<?xml")) return "UTF-8";
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    std::size_t at = declaration.find("encoding");
    if (at == std::string_view::npos) return "UTF-8";
    at = declaration.find_first_of("\"'", at);
    if (at == std::string_view::npos) return "UTF-8";
    const std::size_t close = declaration.find(declaration[at], at + 1);
    return std::string(declaration.substr(at + 1, close - at - 1));
}

/// Whether a text whose declaration could be read byte by byte, and names that encoding, is UTF-8. Some programs name a
/// wide one that the text had in their memory.
bool IsUtf8(std::string name)
{
    for (char& c : name) c = static_cast<char>(c | 0x20);
    return name == "utf-8" || name == "utf8" || name == "us-ascii" || name == "ascii" || name.starts_with("utf-16");
}

std::optional<std::string> Convert(std::string_view bytes, const char* from)
{
    const iconv_t converter = iconv_open("UTF-8", from);
    if (converter == reinterpret_cast<iconv_t>(-1)) return {};
    std::string out;
    std::array<char, 65536> buffer{};
    char* in = const_cast<char*>(bytes.data()); // iconv does not write to its input
    std::size_t left = bytes.size();
    bool good = true;
    while (left > 0) {
        char* to = buffer.data();
        std::size_t room = buffer.size();
        const std::size_t result = iconv(converter, &in, &left, &to, &room);
        out.append(buffer.data(), buffer.size() - room);
        if (result != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
        good = false;
        break;
    }
    iconv_close(converter);
    if (!good) return {};
    return out;
}

} // namespace

std::string XML_decode_ampersand(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '&') {
            const std::size_t close = text.substr(at, kLongestEntity).find(';');
            if (close != std::string_view::npos && AppendEntity(out, text.substr(at + 1, close - 1))) {
                at += close;
                continue;
            }
        }
        if (!IsControl(static_cast<unsigned char>(c))) out += c;
    }
    return out;
}

std::string XML_encode_ampersand(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            if (!IsControl(static_cast<unsigned char>(c))) out += c;
        }
    }
    return out;
}

std::optional<std::string> XML_to_utf8(std::string bytes)
{
    for (const CMark& mark : kMarks) {
        if (!bytes.starts_with(mark.bytes)) continue;
        if (std::string_view(mark.encoding) != "UTF-8")
            return Convert(std::string_view(bytes).substr(mark.bytes.size()), mark.encoding);
        bytes.erase(0, mark.bytes.size());
        return bytes;
    }
    // Without a mark a wide text begins with "<" and a zero, or the other way round.
    if (bytes.starts_with(std::string_view("<\0", 2))) return Convert(bytes, "UTF-16LE");
    if (bytes.starts_with(std::string_view("\0<", 2))) return Convert(bytes, "UTF-16BE");
    const std::string encoding = DeclaredEncoding(bytes);
    if (IsUtf8(encoding)) return bytes;
    return Convert(bytes, encoding.c_str());
}
