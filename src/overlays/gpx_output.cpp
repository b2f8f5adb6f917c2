#include "overlays/gpx_output.h"

#include "core/files.h"
#include "core/text.h"
#include "core/xml_document.h"
#include "overlays/line_appearance.h"
#include "overlays/track_section.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

const char* CGPXOutput::makers_address = "https://zentara.example";

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 18; ///< bytes that are gathered before they are written

constexpr const char* kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<gpx version=\"1.1\" creator=\"Zentara QT %s\"\n"
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
    " xmlns=\"http://www.topografix.com/GPX/1/1\"\n"
    " xmlns:xstyle=\"http://www.topografix.com/GPX/gpx_style/0/2\"\n"
    " xmlns:xgarmin=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\"\n"
    " xsi:schemaLocation=\"http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd"
    " http://www.topografix.com/GPX/gpx_style/0/2 http://www.topografix.com/GPX/gpx_style/0/2/gpx_style.xsd"
    " http://www.garmin.com/xmlschemas/GpxExtensions/v3"
    " http://www8.garmin.com/xmlschemas/GpxExtensions/v3/GpxExtensionsv3.xsd\">\n";

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n';
}

std::string WithoutControls(std::string_view content)
{
    std::string out(content);
    std::erase_if(out, IsControl);
    return out;
}

template <std::size_t Size>
char* PutText(char* to, const char (&literal)[Size])
{
    std::memcpy(to, literal, Size - 1);
    return to + Size - 1;
}

constexpr std::size_t kPositionRoom = 2 * kTenDecimalsRoom + 20;

char* PutPosition(char* to, double lat, double lon)
{
    to = put_ten_decimals(PutText(to, " lat=\""), lat);
    to = put_ten_decimals(PutText(to, "\" lon=\""), lon);
    return PutText(to, "\">");
}

int Hex2(float part)
{
    return static_cast<int>(std::lround(std::clamp(part, 0.0F, 1.0F) * 255.0F));
}

} // namespace

bool XMLneeds_cdata(std::string_view text)
{
    return text.find_first_of("<>&\"'") != std::string_view::npos;
}

CGPXOutput::CGPXOutput(const std::string& path)
    : file(openRegularFile(path, "wb")), own_file(true), good(file != nullptr)
{}

CGPXOutput::CGPXOutput(FILE* with_file) : file(with_file), own_file(false), good(file != nullptr) {}

CGPXOutput::~CGPXOutput()
{
    Close();
}

void CGPXOutput::write_header()
{
    appendprintf(text, kHeader, XML_encode_ampersand(makers_address).c_str());
    header_written = true;
}

bool CGPXOutput::Close()
{
    if (file == nullptr) return good;
    if (header_written) text += "</gpx>\n";
    Flush();
    if (own_file) good &= std::fclose(file) == 0;
    file = nullptr;
    return good;
}

void CGPXOutput::Flush()
{
    if (file != nullptr && !text.empty()) good &= std::fwrite(text.data(), 1, text.size(), file) == text.size();
    text.clear();
}

void CGPXOutput::FlushIfLong()
{
    // In whole pieces, so that the system fills whole pages: the rest of one costs it as much as a new one.
    const std::size_t whole = text.size() / kPiece * kPiece;
    if (whole == 0) return;
    if (file != nullptr) good &= std::fwrite(text.data(), 1, whole, file) == whole;
    text.erase(0, whole);
}

void CGPXOutput::XMLwrite_tag(const char* tag, std::string_view content)
{
    text.append("<").append(tag).append(">");
    if (!XMLneeds_cdata(content)) {
        text += WithoutControls(content);
    } else {
        // "]]>" would end the section: it is shared between two of them.
        std::string inside = WithoutControls(content);
        for (std::size_t at = 0; (at = inside.find("]]>", at)) != std::string::npos; at += 15)
            inside.replace(at, 3, "]]]]><![CDATA[>");
        text.append("<![CDATA[").append(inside).append("]]>");
    }
    text.append("</").append(tag).append(">");
}

void CGPXOutput::WritePosition(std::string_view element, double lat, double lon)
{
    char position[kPositionRoom];
    const char* const end = PutPosition(position, lat, lon);
    text.append("<").append(element).append(position, static_cast<std::size_t>(end - position));
}

void CGPXOutput::WriteTrackPoint(const CTrackPoint& point)
{
    char line[kPositionRoom + 100];
    char* to = PutPosition(PutText(line, "<trkpt"), point.lat, point.lon);
    if (const auto metres = static_cast<int>(std::clamp(point.altitude, -1e6F, 1e6F)); metres != 0) {
        to = PutText(to, "<ele>");
        to = std::to_chars(to, to + 8, metres).ptr;
        to = PutText(to, "</ele>");
    }
    if (point.time != 0.0) to = PutText(put_time(PutText(to, "<time>"), point.time), "</time>");
    to = PutText(to, "</trkpt>\n");
    text.append(line, static_cast<std::size_t>(to - line));
    FlushIfLong();
}

void CGPXOutput::WriteTime(double seconds)
{
    text += "<time>";
    format_time(seconds, text);
    text += "</time>";
}

void CGPXOutput::WriteColour(const GraphicsColor& colour)
{
    appendprintf(text, "<xstyle:color>%02x%02x%02x</xstyle:color>", Hex2(colour.red), Hex2(colour.green),
                 Hex2(colour.blue));
}

void CGPXOutput::WriteLineStyle(const CLineAppearance& line)
{
    text += "<extensions> <xstyle:line>";
    WriteColour(line.colour);
    appendprintf(text, "<xstyle:opacity>%0.2f</xstyle:opacity><xstyle:width>%0.2f</xstyle:width>",
                 static_cast<double>(line.colour.alpha), static_cast<double>(line.line_width));
    if (const char* pattern = gpx_line_style(line.line_style))
        appendprintf(text, "<xstyle:pattern>%s</xstyle:pattern>", pattern);
    text += "</xstyle:line></extensions>\n";
}
