#pragma once

#include <string>

/// The number at the end of a path, or of the nearest folder in it: 12 for "/maps/Series/V12/chart.rlt" and for
/// "/maps/V12". 0 when there is none; numbers that do not fit count as the largest int.
int get_folder_number(const std::string& path);
