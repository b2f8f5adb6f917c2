#include "core/file_names.h"

#include <cstring>

namespace {

char LowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Where the extension begins, its "." included; the path's length when it has none.
std::size_t ExtensionStart(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || path.find('/', dot) != std::string::npos) return path.size();
    return dot;
}

} // namespace

std::string dirname(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

std::string filename(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string basename(const std::string& path)
{
    return filename(path.substr(0, ExtensionStart(path)));
}

std::string extension(const std::string& path)
{
    const std::size_t dot = ExtensionStart(path);
    return dot == path.size() ? std::string() : path.substr(dot + 1);
}

bool filename_has_extension(const char* name, std::size_t length, const char* ext)
{
    const std::size_t ext_length = std::strlen(ext);
    if (length < ext_length + 1 || name[length - ext_length - 1] != '.') return false;
    for (std::size_t i = 0; i < ext_length; ++i)
        if (LowerAscii(name[length - ext_length + i]) != LowerAscii(ext[i])) return false;
    return true;
}

std::string filename_with_extension(const std::string& name, const char* ext)
{
    return name.substr(0, ExtensionStart(name)) + "." + ext;
}

void make_string_lower_case(std::string& text)
{
    for (char& c : text) c = LowerAscii(c);
}

void make_extension_lower_case(std::string& path)
{
    for (std::size_t i = ExtensionStart(path); i < path.size(); ++i) path[i] = LowerAscii(path[i]);
}
