#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

/// Makes all folders of the path; true when the folder exists afterwards.
bool createPath(const std::string& path);
/// Whether the path names a regular file (links followed). Nothing else is ever opened.
bool isRegularFile(const std::string& path);
bool isDirectory(const std::string& path);
/// Opens like fopen, but only a regular file (or a new one when writing); null otherwise. Never blocks on a FIFO.
FILE* openRegularFile(const std::string& path, const char* mode);
/// The same as a handle for reading, -1 otherwise.
int openRegularHandle(const std::string& path);
/// Bytes, or -1 when there is no regular file.
std::int64_t fileSize(const std::string& path);

/// Reads a regular file of at most `limit` bytes; false when it cannot be read whole.
bool read_whole_file(const std::string& path, std::string& out, std::int64_t limit = 0x40000000);
/// Replaces the file safely (see safe_replace.h); false leaves what was there.
bool write_to_file(const std::string& path, const std::string& content);
/// Names (without folder) of the entries that are not folders; sorted by bytes.
std::vector<std::string> listDirectory(const std::string& path);
/// Names of the sub-folders, without "." and ".."; sorted by bytes.
std::vector<std::string> listSubDirectories(const std::string& path);
/// Removes the regular files in the folder and then the folder, not its sub-folders.
bool deleteDirectorySingleLevel(const std::string& path);
/// Total bytes of the regular files directly in the folder.
std::int64_t getDirectorySizeSingleLevel(const std::string& path);
bool CopyFile(const std::string& from, const std::string& to);
/// Unpacks a gzip file; false on a damaged one, and then `to` is not left behind.
bool GUnzipFile(const std::string& from, const std::string& to);
