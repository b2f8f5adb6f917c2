#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/stat.h>

/// What a chart folder holds, links followed: names of chart files and of sub-folders, each sorted by bytes.
struct CFolderEntries {
    int handle = -1; ///< the open folder, owned by the caller; -1: could not be read
    struct stat status {};
    std::vector<std::string> charts;
    std::vector<std::string> folders;
};

CFolderEntries ReadFolder(const std::string& path);
/// Nanoseconds since 1970.
std::int64_t WriteTime(const struct stat& status);
