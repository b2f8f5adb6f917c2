#pragma once

#include <string>

/// Whether `path` lies below `folder`; then `rest` is what stands behind the folder and its separator.
bool IsPathUnder(const std::string& path, const std::string& folder, std::string& rest);
