#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// One JSON object on one line, its members in the order they are added. Numbers are written with as many digits as
/// tell them from their neighbours, numbers that JSON has none for as null. Bytes beyond ASCII count as Latin-1.
class CJsonLine {
public:
    CJsonLine& operator()(const char* name, double value);
    CJsonLine& operator()(const char* name, float value);
    CJsonLine& operator()(const char* name, bool value);
    /// A text of one character; empty for NUL.
    CJsonLine& operator()(const char* name, char value);
    CJsonLine& operator()(const char* name, std::string_view value);
    CJsonLine& operator()(const char* name, const char* value) { return (*this)(name, std::string_view(value)); }
    CJsonLine& operator()(const char* name, const std::string& value) { return (*this)(name, std::string_view(value)); }
    CJsonLine& operator()(const char* name, int value) { return Raw(name, std::to_string(value)); }
    CJsonLine& operator()(const char* name, std::uint32_t value) { return Raw(name, std::to_string(value)); }
    CJsonLine& operator()(const char* name, std::uint8_t value) { return Raw(name, std::to_string(value)); }
    CJsonLine& operator()(const char* name, std::uint16_t value) { return Raw(name, std::to_string(value)); }
    CJsonLine& operator()(const char* name, long long value) { return Raw(name, std::to_string(value)); }
    /// Another pointer would be taken for a bool.
    CJsonLine& operator()(const char* name, const void* value) = delete;
    CJsonLine& Null(const char* name) { return Raw(name, "null"); }
    /// A member whose value is JSON already.
    CJsonLine& Raw(const char* name, std::string_view json);

    void Clear() { members.clear(); }
    /// All members of the other object behind those of this one.
    void Append(const CJsonLine& other);
    std::string Object() const { return "{" + members + "}"; }

private:
    std::string members;
};
