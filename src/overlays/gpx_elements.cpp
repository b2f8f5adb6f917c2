#include "overlays/gpx_elements.h"

#include "core/numbers.h"
#include "overlays/gpx_output.h"
#include "overlays/icon_manager.h"
#include "overlays/line_appearance.h"
#include "overlays/overlay_mark.h"
#include "overlays/track_section.h"

#include <cmath>
#include <limits>

namespace {

constexpr const char* kUnknownName = "Unknown name";
constexpr float kNoAltitude = 0.0F;

bool ReadColour(CXMLnode node, const char* child, GraphicsColor& colour)
{
    std::string text;
    if (!node.FindChildGetContents(child, text) || text.empty()) return false;
    return colour.SetHash(text.front() == '#' ? text : "#" + text);
}

double TimeOf(CXMLnode time)
{
    const std::string_view plain = time.PlainContents();
    return plain.empty() ? parse_time(time.GetContents()) : parse_time(plain);
}

/// The child anywhere below, whatever the program that wrote it put around it.
CXMLnode FindBelow(CXMLnode node, const char* name)
{
    for (CXMLnode child = node.FirstChild(); child; child = child.NextSibling()) {
        if (child.Is(name)) return child;
        if (const CXMLnode found = FindBelow(child, name)) return found;
    }
    return {};
}

void ReadExtensions(CXMLnode extensions, COverlayMark& mark)
{
    GraphicsColor colour;
    if (ReadColour(extensions.FindChild("fill"), "xstyle:color", colour)) mark.colour = colour;
    double proximity = 0.0;
    if (!FindBelow(extensions, "WaypointExtension").FindChildGetContents("Proximity", proximity)) return;
    if (std::fabs(proximity) > 1e7) return;
    mark.SetAlarm(proximity != 0.0, proximity < 0.0 ? static_cast<float>(-proximity) : 0.0F,
                  proximity > 0.0 ? static_cast<float>(proximity) : 0.0F);
}

} // namespace

std::uint64_t ObjectIDFromSrc(CXMLnode node)
{
    std::string text;
    if (!node.FindChildGetContents("src", text)) node.FindChildGetContents("desc", text);
    return CSyncable::ParseObjectID(text);
}

void read_gpx_comment(CXMLnode node, std::string& out)
{
    out.clear();
    node.FindChildGetContents("desc", out);
    std::string comment;
    if (node.FindChildGetContents("cmt", comment) && comment != out && !comment.empty()) {
        if (!out.empty()) out += ' ';
        out += comment;
    }
    const std::size_t source = out.find("Source: ztid:");
    if (source == std::string::npos) return;
    out.erase(source);
    while (!out.empty() && (out.back() == ' ' || out.back() == '\n')) out.pop_back();
}

bool read_gpx_position(CXMLnode node, double& lat, double& lon)
{
    lat = lon = std::numeric_limits<double>::quiet_NaN();
    CXMLattributes attributes(node);
    while (attributes.Next()) {
        if (std::isnan(lat) && attributes.Is("lat")) lat = ParseDoubleOrNaN(attributes.value);
        if (std::isnan(lon) && attributes.Is("lon")) lon = ParseDoubleOrNaN(attributes.value);
    }
    return std::fabs(lat) <= 90.0 && std::fabs(lon) <= 180.0;
}

void read_wpt(CXMLnode node, COverlayMark& mark)
{
    if (const double time = TimeOf(node.FindChild("time")); time != 0.0) mark.created = time;
    mark.name.clear();
    node.FindChildGetContents("name", mark.name);
    if (mark.name.empty()) mark.name = kUnknownName;
    read_gpx_comment(node, mark.comment);
    const CXMLnode link = node.FindChild("link") ? node.FindChild("link") : node.FindChild("url");
    if (link) {
        mark.link = link.FindAttribute("href").value_or(std::string());
        if (mark.link.empty()) mark.link = link.GetContents();
    }
    std::string symbol;
    if (node.FindChildGetContents("sym", symbol)) symbol = CIconManager::to_file_name(symbol);
    if (!symbol.empty()) mark.SetIcon(symbol, mark.colour);
    node.FindChildGetContents("type", mark.category);
    ReadExtensions(node.FindChild("extensions"), mark);
}

void read_trkpt(CXMLnode node, CTrackPoint& point)
{
    point.time = 0.0;
    double altitude = kNoAltitude;
    for (CXMLnode child = node.FirstChild(); child; child = child.NextSibling()) {
        if (child.Is("time"))
            point.time = TimeOf(child);
        else if (child.Is("ele"))
            altitude = child.GetNumber().value_or(kNoAltitude);
    }
    point.altitude = static_cast<float>(altitude);
    if (!std::isfinite(point.altitude)) point.altitude = kNoAltitude;
}

void read_line_style(CXMLnode node, CLineAppearance& line)
{
    for (const char* inside : {"polyline", "line"}) {
        if (const CXMLnode child = node.FindChild(inside)) node = child;
    }
    GraphicsColor colour;
    if (ReadColour(node, "xstyle:color", colour)) line.colour = colour;
    node.FindChildGetContents("xstyle:opacity", line.colour.alpha);
    node.FindChildGetContents("xstyle:width", line.line_width);
    std::string pattern;
    if (node.FindChildGetContents("xstyle:pattern", pattern)) line.line_style = gpx_line_style_number(pattern);
    line.KeepInBounds();
}
