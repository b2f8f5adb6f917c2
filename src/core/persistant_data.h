#pragma once

#include "core/attributes.h"
#include "core/graphics_color.h"

#include <list>
#include <set>
#include <string>
#include <type_traits>

/// A group of settings: a static object beside the class that it serves, usually a nested class Persistant. It declares
/// its variables once, in DeclareData(), for both loading and saving; their initial values are the defaults. The keys
/// in the file are GROUP:NAME. Main thread only.
class PersistantData {
public:
    /// Joins the list of groups; `group_name` is the name of the class that it serves.
    explicit PersistantData(const char* group_name);
    PersistantData(const PersistantData&) = delete;
    PersistantData& operator=(const PersistantData&) = delete;
    virtual ~PersistantData();

    virtual void DeclareData() = 0;
    /// To be called after a variable of the group was changed: only such groups are written.
    void SetModified();

    /// Loads all groups from the settings file in the application's folder and, on top, from one of the same name in
    /// the documents folder. A damaged file gets a copy, NAME.damaged, and what can be read of it is taken.
    static void LoadAll(const std::string& app);
    /// Sets all variables from the map.
    static void LoadFrom(CAttributes& map);
    /// Writes the groups that changed; all else in the file stays. True when nothing is left to be written. A settings
    /// file that is there but cannot be read is not replaced. Does nothing before LoadAll.
    static bool SaveAll();
    static std::string Filename(const std::string& app);
    static std::string Filename() { return Filename(appname); }
    /// One setting by its full key, as it stands in the file.
    static bool GetValue(const std::string& key, std::string& out);
    static bool SetValue(const std::string& key, const std::string& value);

    PersistantData* next;
    bool modified = false;
    const std::string group;

    static std::string appname;         ///< stem of the settings file; empty until LoadAll
    static PersistantData* global_list; ///< the newest group first
    static CAttributes* patt;           ///< what Declare works on; null outside loading and saving
    static bool s_saving;               ///< the direction of Declare

protected:
    /// Saved as a 32-bit pattern in hexadecimal.
    void Declare(const char* name, int& value);
    /// 0 or 1.
    void Declare(const char* name, bool& value);
    void Declare(const char* name, std::string& value);
    /// "#AARRGGBB".
    void Declare(const char* name, GraphicsColor& value);
    /// Saved as raw bytes in hexadecimal digits, and loaded so, unless the text has a "." and is a decimal number. A
    /// number that is not finite is neither saved nor loaded.
    void Declare(const char* name, float& value);
    void Declare(const char* name, double& value);
    /// Raw bytes; `size` in bytes.
    void Declare(const char* name, void* data, int size);
    void Declare(const char* name, std::list<std::string>& values);
    void Declare(const char* name, std::set<std::string>& values);
    template <class T>
    requires std::is_enum_v<T>
    void Declare(const char* name, T& value) = delete; // an enumeration would take any number from the file

private:
    std::string Key(const char* name) const { return group + ":" + name; }
    static PersistantData* find_persistor(const std::string& key);
    void DeclareIn(CAttributes& map, bool saving);
};
