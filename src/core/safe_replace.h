#pragma once

#include <cstdio>
#include <string>

/// Replaces a file so that at any moment either the old or the new one is there, whole: writes beside, flushes to the
/// disk, renames over, flushes the folder. Nothing is replaced before Commit(); the new file keeps the old one's
/// permissions. What is no regular file is never replaced.
class CSafeReplace {
public:
    /// Makes the folder and opens PATH.tmp for writing; File() is null when that failed.
    explicit CSafeReplace(const std::string& path);
    ~CSafeReplace();
    CSafeReplace(const CSafeReplace&) = delete;
    CSafeReplace& operator=(const CSafeReplace&) = delete;

    FILE* File() const { return file; }
    /// Closes and removes the temporary.
    void Discard();
    /// Flushes, closes and renames. False leaves the old file as it was and the temporary behind.
    bool Commit();

private:
    std::string path;
    std::string temporary;
    FILE* file = nullptr;
};

/// Keeps a copy of one of the user's own files that did not load whole, as PATH.damaged. True when the copy stands;
/// otherwise no CSafeReplace of this process replaces the file before a copy of it has been made.
bool KeepDamagedCopy(const std::string& path);
