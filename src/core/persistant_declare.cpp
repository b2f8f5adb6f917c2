#include "core/persistant_data.h"

#include <algorithm>
#include <cmath>

namespace {

template <class Float>
void DeclareFloat(CAttributes& map, bool saving, const std::string& key, Float& value)
{
    if (saving) {
        if (std::isfinite(value)) map.SetData(key, &value, static_cast<int>(sizeof value));
        return;
    }
    if (!map.Has(key)) return;
    Float loaded = value;
    if (map.Get(key).find('.') != std::string::npos)
        loaded = static_cast<Float>(map.GetDecimal(key, static_cast<double>(value)));
    else
        map.GetData(key, &loaded, static_cast<int>(sizeof loaded));
    if (std::isfinite(loaded)) value = loaded;
}

/// The number of items that a list in the map has: never more than there are pairs.
int ListLength(const CAttributes& map, const std::string& count_key)
{
    return std::clamp(map.GetInt(count_key, 0), 0, static_cast<int>(std::min<std::size_t>(map.size(), 1U << 30)));
}

template <class Strings>
void DeclareStrings(CAttributes& map, bool saving, const std::string& key, Strings& values)
{
    const std::string count_key = key + ":n";
    if (!saving) {
        if (!map.Has(count_key)) return;
        values.clear();
        const int count = ListLength(map, count_key);
        for (int i = 0; i < count; ++i) values.insert(values.end(), map.GetNumbered(key, i));
        return;
    }
    const int former = ListLength(map, count_key);
    int index = 0;
    map.SetIntD(count_key, static_cast<int>(values.size()));
    for (const std::string& value : values) map.SetNumbered(key, index++, value);
    for (; index < former; ++index) map.Clear(CAttributes::NumberedKey(key, index));
}

} // namespace

void PersistantData::Declare(const char* name, int& value)
{
    if (s_saving)
        patt->SetInt(Key(name), value);
    else
        value = patt->GetInt(Key(name), value);
}

void PersistantData::Declare(const char* name, bool& value)
{
    if (s_saving)
        patt->SetIntD(Key(name), value ? 1 : 0);
    else if (patt->Has(Key(name)))
        value = patt->GetInt(Key(name), 0) != 0;
}

void PersistantData::Declare(const char* name, std::string& value)
{
    if (s_saving)
        patt->Set(Key(name), value);
    else
        value = patt->GetStr(Key(name), value);
}

void PersistantData::Declare(const char* name, GraphicsColor& value)
{
    if (s_saving)
        patt->Set(Key(name), value.Hash());
    else
        value.SetHash(patt->Get(Key(name)));
}

void PersistantData::Declare(const char* name, float& value)
{
    DeclareFloat(*patt, s_saving, Key(name), value);
}

void PersistantData::Declare(const char* name, double& value)
{
    DeclareFloat(*patt, s_saving, Key(name), value);
}

void PersistantData::Declare(const char* name, void* data, int size)
{
    if (s_saving)
        patt->SetData(Key(name), data, size);
    else
        patt->GetData(Key(name), data, size);
}

void PersistantData::Declare(const char* name, std::list<std::string>& values)
{
    DeclareStrings(*patt, s_saving, Key(name), values);
}

void PersistantData::Declare(const char* name, std::set<std::string>& values)
{
    DeclareStrings(*patt, s_saving, Key(name), values);
}
