#pragma once

#include <cstdio>
#include <string>
#include <string_view>

struct CLineAppearance;
struct CTrackPoint;
struct GraphicsColor;

/// Seconds since 1970 of "2026-06-14T09:30:00Z", with or without a fraction and an offset ("+02:00"); without an offset
/// it is UTC. 0 for what is no time. Main thread only.
double parse_time(std::string_view text);
/// Appends "2026-06-14T09:30:00Z", UTC, fractions of a second dropped. Main thread only.
void format_time(double seconds, std::string& out);
constexpr int kTimeLength = 20;
/// The same to where there is room for kTimeLength characters; gives what follows them.
char* put_time(char* to, double seconds);
constexpr int kTenDecimalsRoom = 24;
/// Writes a number with ten decimals, rounded as printf does, for magnitudes below 1e6; 0 for others. There is room for
/// kTenDecimalsRoom characters; gives what follows the number.
char* put_ten_decimals(char* to, double number);
/// The pattern's name; null above 4.
const char* gpx_line_style(int style);
/// The style of that name, of any case; 0 for others.
int gpx_line_style_number(std::string_view name);

/// A GPX 1.1 document being written. The text is gathered and goes to the file in large pieces.
class CGPXOutput {
public:
    /// The maker's address in the creator attribute.
    static const char* makers_address;

    /// Opens the file by its name.
    explicit CGPXOutput(const std::string& path);
    /// Writes to a file that stays the caller's.
    explicit CGPXOutput(FILE* with_file);
    CGPXOutput(const CGPXOutput&) = delete;
    CGPXOutput& operator=(const CGPXOutput&) = delete;
    /// Closes the document.
    ~CGPXOutput();

    void write_header();
    /// Closes the document and, when it was opened here, the file. True when all of it has been written.
    bool Close();

    /// What is to be appended next; Flush is called now and then by whoever appends much.
    std::string& Text() { return text; }
    void FlushIfLong();

    /// "<tag>text</tag>", in a CDATA section when a character needs it.
    void XMLwrite_tag(const char* tag, std::string_view content);
    /// `<element lat="" lon="">`.
    void WritePosition(std::string_view element, double lat, double lon);
    void WriteTime(double seconds);
    void WriteTrackPoint(const CTrackPoint& point);
    /// "<xstyle:color>rrggbb</xstyle:color>", hexadecimal.
    void WriteColour(const GraphicsColor& colour);
    void WriteLineStyle(const CLineAppearance& line);

private:
    void Flush();

    FILE* file;
    bool own_file;
    bool good;
    bool header_written = false;
    std::string text;
};

/// Whether the text has a character that must not stand in XML as it is.
bool XMLneeds_cdata(std::string_view text);
