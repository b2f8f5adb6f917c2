#include "overlays/syncable.h"

#include "core/heartbeat.h"
#include "core/text.h"
#include "overlays/object_id.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace {

constexpr std::string_view kIdPrefix = "ztid:";

std::string AsciiUpper(std::string text)
{
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

bool SameText(const std::string& a, const std::string& b)
{
    return _tcsicmp(a.c_str(), b.c_str()) == 0;
}

bool IsUpperHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

} // namespace

CSyncable::CSyncable() : modified(CHeartbeat::TheHeartbeat.Timestamp()), created(modified) {}

std::uint64_t CSyncable::GetObjectID()
{
    if (object_id == 0) object_id = GenerateUniqueID();
    return object_id;
}

std::string CSyncable::GetObjectIDstr()
{
    return stringprintf("ztid:%llX", static_cast<unsigned long long>(GetObjectID()));
}

std::uint64_t CSyncable::ParseObjectID(const std::string& text)
{
    const auto at = text.find(kIdPrefix);
    if (at == std::string::npos) return 0;
    const char* const begin = text.data() + at + kIdPrefix.size();
    const char* const end = std::find_if_not(begin, text.data() + text.size(), IsUpperHexDigit);
    std::uint64_t id = 0;
    const auto result = std::from_chars(begin, end, id, 16);
    return result.ec == std::errc() ? id : 0;
}

void CSyncable::SetModifiedNow()
{
    modified = CHeartbeat::TheHeartbeat.Timestamp();
}

void CSyncable::DeleteSyncItem()
{
    deleted = true;
    visible = false;
    SetModifiedNow();
    if (object_id == 0) do_not_sync = true;
}

void CSyncable::UndeleteSyncItem()
{
    deleted = false;
    visible = true;
    SetModifiedNow();
}

void CSyncable::setVisible(bool show)
{
    if (!deleted) visible = show;
}

void CSyncable::setLocked(bool lock)
{
    if (deleted || locked == lock) return;
    locked = lock;
    SetModifiedNow();
}

void CSyncable::setDoNotSync(bool keep_here)
{
    if (deleted || do_not_sync == keep_here) return;
    do_not_sync = keep_here;
    SetModifiedNow();
}

void CSyncable::setCategory(const std::string& path)
{
    category = path;
    SetModifiedNow();
}

bool CSyncable::matches_search(const std::string& text) const
{
    const std::string needle = AsciiUpper(text);
    return stristr_upper(name.c_str(), needle.c_str()) != nullptr ||
           stristr_upper(comment.c_str(), needle.c_str()) != nullptr;
}

bool CSyncable::sameSyncableData(const CSyncable& other) const
{
    return deleted == other.deleted && SameText(name, other.name) && SameText(comment, other.comment) &&
           SameText(category, other.category);
}

void CSyncable::changeCategoryPath(const std::string& new_path, const std::string& old_path)
{
    if (!category.starts_with(old_path)) {
        category = new_path;
    } else if (new_path.empty()) {
        category.erase(0, old_path.size() + 1); // the separator goes too
    } else {
        category.replace(0, old_path.size(), new_path);
    }
    SetModifiedNow();
}

bool CSyncable::SerializeSyncable(IOStream& stream)
{
    Section section(stream);
    const bool whole = section.declare(object_id) && section.declare(do_not_sync) && section.declare(modified) &&
                       section.declare(deleted) && section.declare(created) && section.declare(visible) &&
                       section.declare(locked);
    if (section.reading()) {
        if (created > modified) created = modified;
        if (deleted) visible = false;
    }
    return whole;
}
