#pragma once

#include <string>

/// What to do with a file that was handed to the program.
enum class file_kind { gpx, pages, page, chart, package, unknown };

/// Sorts a file by its content first, its extension second. A file that cannot be read goes by its extension.
file_kind SortFile(const std::string& path);
