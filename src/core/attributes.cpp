#include "core/attributes.h"

#include "core/files.h"
#include "core/lines.h"
#include "core/numbers.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

struct CAttributeFileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

/// Whether a byte stands in a settings file that no text has. Leaves the file at its beginning.
bool HoldsForeignBytes(FILE* file)
{
    std::vector<unsigned char> piece(1U << 16);
    bool foreign = false;
    while (!foreign) {
        const std::size_t count = std::fread(piece.data(), 1, piece.size(), file);
        if (count == 0) break;
        foreign = std::any_of(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count), [](unsigned char c) {
            return c == 0xFF || c == 0x7F || (c < ' ' && c != '\t' && c != '\n' && c != '\r');
        });
    }
    std::rewind(file);
    return foreign;
}

std::string Trimmed(std::string_view text)
{
    std::string trimmed(text);
    TrimSpaces(trimmed);
    return trimmed;
}

/// A hexadecimal digit's value, 0 for anything else.
unsigned DigitOrZero(char c)
{
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10U : 0U;
}

} // namespace

bool CAttributes::Has(const std::string& key) const
{
    const auto found = pairs.find(key);
    return found != pairs.end() && !found->second.empty();
}

std::string CAttributes::GetStr(const std::string& key, const std::string& fallback) const
{
    const auto found = pairs.find(key);
    return found == pairs.end() ? fallback : found->second;
}

bool CAttributes::GetIfPresent(const std::string& key, std::string& out) const
{
    const auto found = pairs.find(key);
    out = found == pairs.end() ? std::string() : found->second;
    return found != pairs.end();
}

int CAttributes::GetInt(const std::string& key, int fallback) const
{
    const auto found = pairs.find(key);
    return found == pairs.end() ? fallback : ParseInt(found->second).value_or(fallback);
}

void CAttributes::SetInt(const std::string& key, int value)
{
    Set(key, stringprintf("0x%x", value));
}

void CAttributes::SetIntD(const std::string& key, int value)
{
    Set(key, stringprintf("%d", value));
}

bool CAttributes::GetBool(const std::string& key) const
{
    const std::string value = Get(key);
    return !value.empty() && (value[0] == 'T' || value[0] == 't' || value[0] == '1');
}

double CAttributes::GetDecimal(const std::string& key, double fallback) const
{
    const auto found = pairs.find(key);
    return found == pairs.end() ? fallback : ParseDouble(found->second).value_or(fallback);
}

void CAttributes::SetDecimal(const std::string& key, double value)
{
    if (std::isfinite(value)) Set(key, stringprintf("%#.10g", value));
}

std::string CAttributes::NumberedKey(const std::string& key, int n)
{
    return key + "[" + std::to_string(n) + "]";
}

int CAttributes::GetNumberedInt(const std::string& key, int n) const
{
    return GetInt(NumberedKey(key, n), 0);
}

void CAttributes::SetNumberedInt(const std::string& key, int n, int value)
{
    SetInt(NumberedKey(key, n), value);
}

std::string CAttributes::GetNumbered(const std::string& key, int n) const
{
    return Get(NumberedKey(key, n));
}

void CAttributes::SetNumbered(const std::string& key, int n, const std::string& value)
{
    Set(NumberedKey(key, n), value);
}

int CAttributes::GetData(const std::string& key, void* buffer, int capacity) const
{
    const auto found = pairs.find(key);
    if (found == pairs.end()) return 0;
    const std::string& digits = found->second;
    auto* bytes = static_cast<unsigned char*>(buffer);
    int count = 0;
    for (std::size_t i = 0; i < digits.size() && count < capacity; i += 2, ++count) {
        const unsigned first = DigitOrZero(digits[i]);
        const bool pair = i + 1 < digits.size();
        bytes[count] = static_cast<unsigned char>(pair ? first << 4 | DigitOrZero(digits[i + 1]) : first);
    }
    return count;
}

void CAttributes::SetData(const std::string& key, const void* data, int size)
{
    std::string digits;
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (int i = 0; i < size; ++i) appendprintf(digits, "%02x", bytes[i]);
    Set(key, std::move(digits));
}

void CAttributes::Add(const CAttributes& other)
{
    for (const auto& [key, value] : other.pairs)
        if (!key.empty() && !value.empty()) pairs[key] = value;
}

void CAttributes::TrimAllSpaces()
{
    for (auto& pair : pairs) TrimSpaces(pair.second);
}

void CAttributes::AddString(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('&'), text.size());
        const std::string_view piece = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = piece.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string key = Trimmed(piece.substr(0, equals));
        const std::string value = Trimmed(piece.substr(equals + 1));
        if (!key.empty() && !value.empty()) Set(key, unescape_string(value));
    }
}

bool CAttributes::AddFile(const std::string& path, bool* damaged)
{
    const std::unique_ptr<FILE, CAttributeFileCloser> file(openRegularFile(path, "rb"));
    if (!file) return false;
    if (damaged != nullptr) *damaged = HoldsForeignBytes(file.get());
    std::string line;
    while (read_line_noncomment(file.get(), line)) AddString(line);
    return std::ferror(file.get()) == 0;
}

std::string CAttributes::ToString() const
{
    std::string out;
    for (const auto& [key, value] : pairs) {
        if (key.empty() || value.empty()) continue;
        if (!out.empty()) out += '&';
        out += key + "=" + escape_string(value);
    }
    return out;
}

std::string CAttributes::ToText() const
{
    std::string out;
    for (const auto& [key, value] : pairs) {
        if (key.empty() || value.empty()) continue;
        if (!out.empty()) out += '\n';
        out += key + "=" + value;
    }
    return out;
}

std::string CAttributes::ToLines() const
{
    std::string out;
    for (const auto& [key, value] : pairs)
        if (!key.empty() && !value.empty()) out += key + "=" + escape_string(value) + "\n";
    return out;
}

bool CAttributes::ToFile(const std::string& path) const
{
    return write_to_file(path, ToLines());
}
