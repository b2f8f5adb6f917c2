#include "core/persistant_data.h"

#include "core/files.h"
#include "core/folders.h"
#include "core/safe_replace.h"
#include "core/user_data_changed.h"

#include <filesystem>

std::string PersistantData::appname;
constinit PersistantData* PersistantData::global_list = nullptr;
constinit CAttributes* PersistantData::patt = nullptr;
constinit bool PersistantData::s_saving = false;

namespace {

/// Whether anything at all has the name: what cannot be read must not be replaced.
bool SomethingStandsAt(const std::string& path)
{
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() != std::filesystem::file_type::not_found;
}

/// False when a settings file is there but cannot be read.
bool AddSettingsFile(CAttributes& map, const std::string& path)
{
    bool damaged = false;
    if (!map.AddFile(path, &damaged)) return !SomethingStandsAt(path);
    if (damaged) KeepDamagedCopy(path);
    return true;
}

/// The sort settings may stand in a file under the longer name of their class.
void AddShortNames(CAttributes& map)
{
    const std::string longer = "CChartOutline::CSortedPointer:";
    const auto& pairs = map.Pairs();
    for (auto i = pairs.lower_bound(longer); i != pairs.end() && i->first.starts_with(longer); ++i) {
        const std::string key = "CSortedPointer:" + i->first.substr(longer.size());
        if (!map.Has(key)) map.Set(key, i->second);
    }
}

} // namespace

PersistantData::PersistantData(const char* group_name) : next(global_list), group(group_name)
{
    global_list = this;
}

PersistantData::~PersistantData()
{
    for (PersistantData** link = &global_list; *link != nullptr; link = &(*link)->next) {
        if (*link != this) continue;
        *link = next;
        return;
    }
}

void PersistantData::SetModified()
{
    modified = true;
    NoteUserDataChanged();
}

std::string PersistantData::Filename(const std::string& app)
{
    return getAppDirectory((app + ".ini").c_str());
}

void PersistantData::DeclareIn(CAttributes& map, bool saving)
{
    s_saving = saving;
    patt = &map;
    DeclareData();
    patt = nullptr;
}

void PersistantData::LoadAll(const std::string& app)
{
    appname = app;
    CAttributes map;
    AddSettingsFile(map, Filename());
    map.AddFile(getDocsDirectory((app + ".ini").c_str()));
    LoadFrom(map);
}

void PersistantData::LoadFrom(CAttributes& map)
{
    AddShortNames(map);
    for (PersistantData* group = global_list; group != nullptr; group = group->next) group->DeclareIn(map, false);
}

bool PersistantData::SaveAll()
{
    if (appname.empty()) return true;
    s_saving = true;
    bool changed = false;
    for (const PersistantData* group = global_list; group != nullptr; group = group->next) changed |= group->modified;
    if (!changed) return true;
    CAttributes map;
    if (!AddSettingsFile(map, Filename())) return false;
    for (PersistantData* group = global_list; group != nullptr; group = group->next)
        if (group->modified) group->DeclareIn(map, true);
    if (!map.ToFile(Filename())) return false;
    for (PersistantData* group = global_list; group != nullptr; group = group->next) group->modified = false;
    return true;
}

PersistantData* PersistantData::find_persistor(const std::string& key)
{
    for (PersistantData* group = global_list; group != nullptr; group = group->next)
        if (key.starts_with(group->group + ":")) return group;
    return nullptr;
}

bool PersistantData::GetValue(const std::string& key, std::string& out)
{
    PersistantData* group = find_persistor(key);
    if (group == nullptr) return false;
    CAttributes map;
    const bool direction = s_saving;
    group->DeclareIn(map, true);
    s_saving = direction;
    return map.GetIfPresent(key, out);
}

bool PersistantData::SetValue(const std::string& key, const std::string& value)
{
    PersistantData* group = find_persistor(key);
    if (group == nullptr) return false;
    CAttributes map;
    group->DeclareIn(map, true);
    map.Set(key, value);
    group->DeclareIn(map, false);
    group->SetModified();
    return true;
}
