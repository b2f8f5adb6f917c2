#pragma once

#include <string>

/// The program's folders. Each function computes its base once, keeps it, and gives base plus the optional sub-folder;
/// no path ends with a separator. The bases depend on the organisation and application names, and so on the profile.
std::string getAppDirectory(const char* sub = nullptr);
std::string getDocsDirectory(const char* sub = nullptr);
std::string getCacheDirectory(const char* sub = nullptr);
std::string getTmpDirectory(const char* sub = nullptr);
/// What was installed with the program and is only read: the built-in charts.
std::string getBundleDirectory(const char* sub = nullptr);
std::string getSharedAppDirectory(const char* sub = nullptr);

/// Puts every base below `root` ("app", "docs", ... under it), for tests; an empty text brings the user's own back.
void SetFolderRoot(const std::string& root);

/// `base` + "/" + `sub`, without doubling the separator; `base` alone when `sub` is null or empty.
std::string add_folder(const std::string& base, const char* sub);
