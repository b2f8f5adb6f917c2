// A GPX file of any bytes, as text: the tree, its contents, and the import into the program's lists.

#include "built_seeds.h"
#include "core/xml_document.h"
#include "overlays/gpx_import.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"

#include <cmath>
#include <cstdlib>

namespace {

void Check(bool holds)
{
    if (!holds) std::abort();
}

void CheckPosition(double lat, double lon)
{
    Check(std::fabs(lat) <= 90.0 && std::fabs(lon) <= 180.0);
}

void CheckObjects()
{
    for (const COverlayMark* mark : g_mark_manager.marks) CheckPosition(mark->lat, mark->lon);
    for (const COverlayRoute* route : g_mark_manager.routes) {
        for (const COverlayMark* waypoint : route->waypoints) CheckPosition(waypoint->lat, waypoint->lon);
    }
    for (const COverlayTrack* track : g_track_manager) {
        CTrackCursor points(*track);
        while (const CTrackPoint* point = points.Next()) CheckPosition(point->lat, point->lon);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CXMLdocument document;
    if (!document.ParseText(std::string(reinterpret_cast<const char*>(data), size))) return 0;
    std::size_t length = 0;
    for (CXMLnode node = document.Root(); node; node = node.NextInDocument()) {
        length += node.GetContents().size() + node.PlainContents().size();
        length += node.FindAttribute("lat").value_or(std::string()).size();
    }
    Check(length <= 4 * size * static_cast<std::size_t>(CXMLdocument::kDeepest + 4));
    CBounds bounds;
    ImportGPXDocument(document, {}, bounds);
    CheckObjects();
    g_mark_manager.ClearAll();
    g_track_manager.ClearAll();
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    const std::vector<std::string> seeds = {
        "<?xml version=\"1.0\"?><gpx version=\"1.1\"><wpt lat=\"1.5\" lon=\"-2\"><time>2025-06-15T15:06:40Z</time>"
        "<name>n</name><desc>d Source: ztid:1A</desc><link href=\"http://a\"/><sym>Flag</sym><type>t</type><extensions>"
        "<xstyle:fill><xstyle:color>ff0000</xstyle:color></xstyle:fill><xgarmin:WaypointExtension><xgarmin:Proximity>"
        "-50</xgarmin:Proximity></xgarmin:WaypointExtension></extensions></wpt></gpx>",
        "<gpx><rte><name><![CDATA[r]]></name><extensions><line><width>2</width></line></extensions>"
        "<rtept lat=\"1\" lon=\"2\"/><rtept lat=\"1\" lon=\"3\"/></rte><trk><trkseg><trkpt lat=\"1\" lon=\"2\"><ele>3"
        "</ele></trkpt></trkseg></trk></gpx>",
    };
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}
