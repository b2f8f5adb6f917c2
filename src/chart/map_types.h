#pragma once

#include <set>
#include <string>

/// Which types of charts are shown, and where downloads go: the settings group "CSelectMapTypes".
struct CSelectMapTypes {
    static std::set<std::string> show; ///< never empty after loading
    static bool types_hint;            ///< the hint about types has been shown
    static int CHB_storage_option;
    static std::string CHB_external_folder;

    class Persistant;
    static void SetModified();
};
