#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Everything before the last separator; "." when there is none.
std::string dirname(const std::string& path);
/// The last part of a path without its extension. (With a plain `const char*` the C library's function of that name is
/// chosen: pass a std::string.)
std::string basename(const std::string& path);
/// The last part of a path.
std::string filename(const std::string& path);
/// The text behind the last "." when no separator stands after it; empty otherwise.
std::string extension(const std::string& path);
/// Whether the first `length` characters of `name` end with "." and `ext`, without regard to case.
bool filename_has_extension(const char* name, std::size_t length, const char* ext);
/// `name` with its extension replaced by (or given) `ext`.
std::string filename_with_extension(const std::string& name, const char* ext);
void make_string_lower_case(std::string& text);
/// Lower-cases the extension of a path, in place.
void make_extension_lower_case(std::string& path);
