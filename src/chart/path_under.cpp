#include "chart/path_under.h"

bool IsPathUnder(const std::string& path, const std::string& folder, std::string& rest)
{
    if (folder.empty() || path.size() <= folder.size() + 1 || !path.starts_with(folder) || path[folder.size()] != '/')
        return false;
    rest = path.substr(folder.size() + 1);
    return true;
}
