#include "core/type_serializer.h"

#include "core/files.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr std::uint32_t kLongestFlatString = 100'000;
constexpr std::uint32_t kLongestFlatBlock = 1'000'000;
constexpr std::uint32_t kThrownAwayAtOnce = 1024;
} // namespace

void CTypeSerializer::Put(const void* data, int size)
{
    if (!ok) return;
    put_data(data, size);
    if (ok) byte_count += size;
}

void CTypeSerializer::Get(void* data, int size)
{
    if (!ok) return;
    get_data(data, size);
    if (ok) byte_count += size;
}

bool CTypeSerializer::declare(void* data, int size)
{
    if (size < 0) ok = false;
    if (mode == kWrite) Put(data, size);
    if (mode == kRead) Get(data, size);
    return ok;
}

bool CTypeSerializer::declare(bool& value)
{
    std::uint8_t byte = value ? 1 : 0;
    if (declare(&byte, 1)) value = byte != 0;
    return ok;
}

bool CTypeSerializer::declare(std::string& text)
{
    if (mode == kWrite) return put(text);
    if (mode == kRead) return get(text);
    return ok;
}

bool CTypeSerializer::declaremagic(int magic)
{
    int value = magic;
    return declare(value) && value == magic;
}

bool CTypeSerializer::declaresize(void* data, int& size)
{
    if (mode == kWrite) return putsize(data, size);
    if (mode == kRead) return getsize(data, size);
    return ok;
}

bool CTypeSerializer::put(const std::string& text)
{
    if (text.size() > kLongestFlatString) ok = false;
    auto length = static_cast<std::uint32_t>(text.size());
    Put(&length, sizeof length);
    if (!wide_strings) {
        Put(text.data(), static_cast<int>(length));
        return ok;
    }
    std::vector<std::int16_t> wide;
    if (ok) wide.assign(text.begin(), text.end());
    Put(wide.data(), static_cast<int>(2 * length));
    return ok;
}

bool CTypeSerializer::get(std::string& text)
{
    text.clear();
    std::uint32_t length = 0;
    Get(&length, sizeof length);
    if (length > kLongestFlatString) ok = false;
    if (!ok) return false;
    std::string bytes(wide_strings ? 2 * length : length, '\0');
    Get(bytes.data(), static_cast<int>(bytes.size()));
    if (!ok) return false;
    if (wide_strings) {
        for (std::uint32_t i = 0; i < length; ++i) bytes[i] = bytes[2 * i];
        bytes.resize(length);
    }
    text = std::move(bytes);
    return true;
}

bool CTypeSerializer::putsize(const void* data, int size)
{
    if (size < 0 || static_cast<std::uint32_t>(size) > kLongestFlatBlock) ok = false;
    Put(&size, sizeof size);
    Put(data, size);
    return ok;
}

bool CTypeSerializer::getsize(void* data, int& size)
{
    std::uint32_t stored = 0;
    Get(&stored, sizeof stored);
    if (size < 0 || stored > kLongestFlatBlock) ok = false;
    if (!ok) return false;
    const std::uint32_t taken = std::min(stored, static_cast<std::uint32_t>(size));
    Get(data, static_cast<int>(taken));
    if (stored <= static_cast<std::uint32_t>(size)) size = static_cast<int>(stored);
    char thrown_away[kThrownAwayAtOnce];
    for (std::uint32_t left = stored - taken; left > 0 && ok;) {
        const std::uint32_t piece = std::min(left, kThrownAwayAtOnce);
        Get(thrown_away, static_cast<int>(piece));
        left -= piece;
    }
    return ok;
}

bool CTypeSerializer::getstr(char* buffer, int capacity)
{
    std::string text;
    get(text);
    if (capacity <= 0) return ok;
    const std::size_t taken = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
    std::memcpy(buffer, text.data(), taken);
    std::memset(buffer + taken, 0, static_cast<std::size_t>(capacity) - taken);
    return ok;
}

CTypeFileOut::CTypeFileOut(const std::string& path) : CTypeSerializer(kWrite), file(openRegularFile(path, "wb"))
{
    ok = file != nullptr;
}

CTypeFileOut::~CTypeFileOut()
{
    Close();
}

bool CTypeFileOut::Close()
{
    if (file == nullptr) return ok;
    if (std::fclose(file) != 0) ok = false;
    file = nullptr;
    return ok;
}

void CTypeFileOut::put_data(const void* data, int size)
{
    const auto count = static_cast<std::size_t>(size);
    if (file == nullptr || std::fwrite(data, 1, count, file) != count) ok = false;
}

CTypeFileIn::CTypeFileIn(const std::string& path) : CTypeSerializer(kRead), file(openRegularFile(path, "rb"))
{
    ok = file != nullptr;
}

CTypeFileIn::~CTypeFileIn()
{
    Close();
}

void CTypeFileIn::Close()
{
    if (file != nullptr) std::fclose(file);
    file = nullptr;
}

void CTypeFileIn::get_data(void* data, int size)
{
    const auto count = static_cast<std::size_t>(size);
    if (file == nullptr || std::fread(data, 1, count, file) != count) ok = false;
}

CTypeMemoryIn::CTypeMemoryIn(std::span<const std::uint8_t> bytes) : CTypeSerializer(kRead), rest(bytes) {}

void CTypeMemoryIn::get_data(void* data, int size)
{
    const auto count = static_cast<std::size_t>(size);
    if (rest.size() < count) {
        ok = false;
        return;
    }
    if (count != 0) std::memcpy(data, rest.data(), count);
    rest = rest.subspan(count);
}
