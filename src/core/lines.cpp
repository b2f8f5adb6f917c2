#include "core/lines.h"

#include <string_view>

namespace {

constexpr std::size_t kLongestLine = 1'000'000;
constexpr int kEndByte = 0xFF; ///< counts as the end of the file wherever it stands
constexpr std::string_view kTrimmed = " \t\n\r";

/// The next byte, EOF at the end. The end byte is left unread, so that it ends every later read too.
int NextByte(FILE* file)
{
    const int c = getc_unlocked(file);
    if (c != kEndByte) return c;
    std::ungetc(c, file);
    return EOF;
}

bool IsCommentOrBlank(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(kTrimmed);
    return first == std::string::npos || line[first] == '#';
}

} // namespace

bool read_line(FILE* file, std::string& line)
{
    line.clear();
    std::size_t length = 0;
    int c = NextByte(file);
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = NextByte(file)) {
        if (c == '\r' || c == '\0') continue;
        if (++length <= kLongestLine) line.push_back(static_cast<char>(c));
    }
    if (length <= kLongestLine) return true;
    line.clear();
    return false;
}

bool at_text_end(FILE* file)
{
    const int c = NextByte(file);
    if (c != EOF) std::ungetc(c, file);
    return c == EOF;
}

bool read_line_noncomment(FILE* file, std::string& line)
{
    while (!at_text_end(file))
        if (read_line(file, line) && !IsCommentOrBlank(line)) return true;
    line.clear();
    return false;
}

std::string read_text_file(FILE* file)
{
    std::string text;
    for (int c = NextByte(file); c != EOF; c = NextByte(file)) text.push_back(static_cast<char>(c));
    return text;
}

void TrimSpaces(std::string& text)
{
    const std::size_t last = text.find_last_not_of(kTrimmed);
    text.erase(last == std::string::npos ? 0 : last + 1);
    text.erase(0, text.find_first_not_of(kTrimmed));
}
