#include "core/folders.h"

#include <array>

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace {

enum CFolder { kApp, kDocs, kCache, kTmp, kBundle, kSharedApp, kFolderCount };

constexpr std::array<const char*, kFolderCount> kNamesUnderRoot = {"app", "docs", "cache", "tmp", "bundle", "shared"};

std::string folder_root;
std::array<std::string, kFolderCount> folder_bases; ///< empty until first asked for

std::string Standard(QStandardPaths::StandardLocation location, const char* sub = nullptr)
{
    return add_folder(QStandardPaths::writableLocation(location).toStdString(), sub);
}

std::string ComputeFolder(CFolder folder)
{
    if (!folder_root.empty()) return add_folder(folder_root, kNamesUnderRoot[folder]);
    switch (folder) {
    case kApp:
        return Standard(QStandardPaths::AppLocalDataLocation);
    case kDocs:
        return Standard(QStandardPaths::DocumentsLocation, "Zentara");
    case kCache:
        return Standard(QStandardPaths::CacheLocation);
    case kTmp: {
        // Under the cache, not the common temporary folder: no other user can put something in the way there.
        return Standard(QStandardPaths::CacheLocation, "tmp");
    }
    case kBundle:
        return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/zentara"))
            .toStdString();
    default:
        return Standard(QStandardPaths::GenericDataLocation, "Zentara/shared");
    }
}

std::string Folder(CFolder folder, const char* sub)
{
    std::string& base = folder_bases[folder];
    if (base.empty()) base = ComputeFolder(folder);
    return add_folder(base, sub);
}

} // namespace

std::string getAppDirectory(const char* sub)
{
    return Folder(kApp, sub);
}
std::string getDocsDirectory(const char* sub)
{
    return Folder(kDocs, sub);
}
std::string getCacheDirectory(const char* sub)
{
    return Folder(kCache, sub);
}
std::string getTmpDirectory(const char* sub)
{
    return Folder(kTmp, sub);
}
std::string getBundleDirectory(const char* sub)
{
    return Folder(kBundle, sub);
}
std::string getSharedAppDirectory(const char* sub)
{
    return Folder(kSharedApp, sub);
}

void SetFolderRoot(const std::string& root)
{
    folder_root = root;
    folder_bases.fill({});
}

std::string add_folder(const std::string& base, const char* sub)
{
    std::string path = base;
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    if (sub == nullptr || *sub == '\0') return path;
    while (*sub == '/') ++sub;
    if (path.empty() || path.back() != '/') path += '/';
    path += sub;
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    return path;
}
