#include "tools/zt_nmea/json_line.h"

#include "core/text.h"

#include <charconv>
#include <cmath>

namespace {

template <class T>
std::string NumberText(T value)
{
    if (!std::isfinite(value)) return "null";
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F)
            appendprintf(quoted, "\\u%04x", static_cast<unsigned>(byte));
        else if (c == '"' || c == '\\')
            quoted.append({'\\', c});
        else
            quoted += c;
    }
    return quoted + '"';
}

} // namespace

CJsonLine& CJsonLine::Raw(const char* name, std::string_view json)
{
    if (!members.empty()) members += ", ";
    members.append("\"").append(name).append("\": ").append(json);
    return *this;
}

CJsonLine& CJsonLine::operator()(const char* name, double value)
{
    return Raw(name, NumberText(value));
}

CJsonLine& CJsonLine::operator()(const char* name, float value)
{
    return Raw(name, NumberText(value));
}

CJsonLine& CJsonLine::operator()(const char* name, bool value)
{
    return Raw(name, value ? "true" : "false");
}

CJsonLine& CJsonLine::operator()(const char* name, char value)
{
    return (*this)(name, std::string_view(&value, value == 0 ? 0 : 1));
}

CJsonLine& CJsonLine::operator()(const char* name, std::string_view value)
{
    return Raw(name, Quoted(value));
}

void CJsonLine::Append(const CJsonLine& other)
{
    if (!members.empty() && !other.members.empty()) members += ", ";
    members += other.members;
}
