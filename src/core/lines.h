#pragma once

#include <cstdio>
#include <string>

/// Reads up to a line feed, which is not kept. Carriage returns and zero bytes are dropped; a byte 0xFF counts as the
/// end of the file. A line above 1,000,000 characters is thrown away: the result is false, which then is not the end of
/// the file (see at_text_end). False at the end of the file with nothing read.
bool read_line(FILE* file, std::string& line);
/// Whether nothing more will be read: the end of the file, or a byte 0xFF, comes next.
bool at_text_end(FILE* file);
/// The next line that is not blank and whose first non-blank is not "#"; an over-long line is passed over. False at the
/// end of the file.
bool read_line_noncomment(FILE* file, std::string& line);
/// The text up to the end of the file or a byte 0xFF.
std::string read_text_file(FILE* file);
/// Trims space, tab, line feed and carriage return at both ends.
void TrimSpaces(std::string& text);
