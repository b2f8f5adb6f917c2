#include "overlays/gpx_write.h"

#include "core/safe_replace.h"
#include "core/text.h"
#include "core/xml_document.h"
#include "overlays/gpx_output.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_track.h"

namespace {

void WriteExtensions(CGPXOutput& out, const COverlayMark& mark)
{
    out.Text() += "<extensions><xstyle:fill>";
    out.WriteColour(mark.colour);
    out.Text() += "</xstyle:fill>";
    if (mark.alarm_radius > 0.0F) {
        const float proximity = mark.anchor_radius > 0.0F ? -mark.anchor_radius : mark.alarm_radius;
        appendprintf(out.Text(), "<xgarmin:WaypointExtension><Proximity>%.1f</Proximity></xgarmin:WaypointExtension>",
                     static_cast<double>(proximity));
    }
    out.Text() += "</extensions>";
}

void WritePoint(CGPXOutput& out, COverlayMark& mark, const char* element)
{
    out.WritePosition(element, mark.lat, mark.lon);
    if (mark.created != 0.0) out.WriteTime(mark.created);
    out.XMLwrite_tag("name", mark.name);
    if (!mark.comment.empty()) out.XMLwrite_tag("desc", mark.comment);
    if (mark.route == nullptr && !mark.do_not_sync) out.XMLwrite_tag("src", mark.GetObjectIDstr());
    if (!mark.link.empty())
        appendprintf(out.Text(), "<link href=\"%s\"></link>", XML_encode_ampersand(mark.link).c_str());
    out.XMLwrite_tag("sym", mark.icon_name);
    if (!mark.category.empty()) out.XMLwrite_tag("type", mark.category);
    WriteExtensions(out, mark);
    appendprintf(out.Text(), "</%s>\n", element);
    out.FlushIfLong();
}

/// What routes and tracks have in common, up to the extensions.
void WriteHead(CGPXOutput& out, CSyncable& object, const CLineAppearance& line)
{
    out.XMLwrite_tag("name", object.name);
    if (!object.comment.empty()) out.XMLwrite_tag("desc", object.comment);
    if (!object.do_not_sync) out.XMLwrite_tag("src", object.GetObjectIDstr());
    if (!object.category.empty()) out.XMLwrite_tag("type", object.category);
    out.WriteLineStyle(line);
}

} // namespace

void WriteGPX(CGPXOutput& out, COverlayMark& mark)
{
    WritePoint(out, mark, "wpt");
}

void WriteGPX(CGPXOutput& out, COverlayRoute& route)
{
    out.Text() += "<rte>";
    WriteHead(out, route, route);
    for (COverlayMark* waypoint : route.waypoints) WritePoint(out, *waypoint, "rtept");
    out.Text() += "</rte>\n";
}

void WriteGPX(CGPXOutput& out, COverlayTrack& track)
{
    out.Text() += "<trk>";
    WriteHead(out, track, track);
    out.Text() += "<trkseg>\n";
    CTrackCursor points(track);
    while (const CTrackPoint* point = points.Next()) out.WriteTrackPoint(*point);
    out.Text() += "</trkseg></trk>\n";
}

template <class Object>
bool WriteGPXFile(const std::string& path, Object& object)
{
    CSafeReplace replace(path);
    if (replace.File() == nullptr) return false;
    CGPXOutput out(replace.File());
    out.write_header();
    WriteGPX(out, object);
    if (out.Close()) return replace.Commit();
    replace.Discard();
    return false;
}

template bool WriteGPXFile(const std::string&, COverlayMark&);
template bool WriteGPXFile(const std::string&, COverlayRoute&);
template bool WriteGPXFile(const std::string&, COverlayTrack&);
