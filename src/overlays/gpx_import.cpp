#include "overlays/gpx_import.h"

#include "core/xml_document.h"
#include "overlays/gpx_elements.h"
#include "overlays/gpx_known_objects.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"

#include <memory>

namespace {

constexpr double kDensePoints = 5.0;     ///< metres between two points of a track
constexpr double kThinningSquared = 2.0; ///< squared metres

/// One import: what is there already, and what came.
class CGPXImport {
public:
    CGPXImport(const std::string& with_category, CBounds& with_bounds) : category(with_category), bounds(with_bounds) {}

    bool Read(const CXMLdocument& document)
    {
        for (CXMLnode node = document.Root(); node; node = node.NextInDocument()) {
            if (node.Is("wpt")) {
                ReadMark(node);
            } else if (node.Is("rte")) {
                ReadRoute(node);
            } else if (node.Is("trk")) {
                ReadTrack(node);
            }
        }
        return found_any;
    }

private:
    /// The present object of that id, emptied; otherwise a new one, which is not yet in its list.
    template <class Object>
    Object* Take(CKnownObjects<Object>& known, std::uint64_t id, std::unique_ptr<Object>& made)
    {
        Object* object = known.FindWithID(id);
        if (object == nullptr) {
            made = std::make_unique<Object>();
            made->SetObjectID(id);
            return made.get();
        }
        if (object->deleted) object->UndeleteSyncItem();
        object->ClearData();
        object->SetModifiedNow();
        return object;
    }

    template <class Object>
    void Finish(Object& object)
    {
        if (!category.empty()) object.category = category;
        object.getLonLatBounds(bounds);
        object.Dispatch(COverlayObject::kChanged);
    }

    void ReadMark(CXMLnode node);
    void ReadRoute(CXMLnode node);
    void ReadTrack(CXMLnode node);
    static void ReadWaypoints(CXMLnode node, COverlayRoute& route);
    static void ReadPoints(CXMLnode node, COverlayTrack& track);

    const std::string& category;
    CBounds& bounds;
    bool found_any = false;
    CKnownObjects<COverlayMark> marks{g_mark_manager.marks};
    CKnownObjects<COverlayRoute> routes{g_mark_manager.routes};
    CKnownObjects<COverlayTrack> tracks{g_track_manager};
};

void CGPXImport::ReadMark(CXMLnode node)
{
    double lat = 0.0;
    double lon = 0.0;
    if (!read_gpx_position(node, lat, lon)) return;
    found_any = true;
    std::unique_ptr<COverlayMark> made;
    COverlayMark* mark = Take(marks, ObjectIDFromSrc(node), made);
    mark->lat = lat;
    mark->lon = lon;
    read_wpt(node, *mark);
    if (!category.empty()) mark->category = category;
    if (made != nullptr) {
        if (marks.Has(*mark)) return;
        g_mark_manager.marks.push_back(made.release());
    }
    marks.Add(mark);
    Finish(*mark);
}

void CGPXImport::ReadWaypoints(CXMLnode node, COverlayRoute& route)
{
    for (CXMLnode point = node.FindChild("rtept"); point; point = point.FindNext("rtept")) {
        double lat = 0.0;
        double lon = 0.0;
        if (!read_gpx_position(point, lat, lon)) continue;
        const COverlayMark::CCreatingRoute creating_route;
        auto waypoint = std::make_unique<COverlayMark>();
        waypoint->lat = lat;
        waypoint->lon = lon;
        read_wpt(point, *waypoint);
        route.InsertWaypoint(waypoint.release(), nullptr);
    }
}

void CGPXImport::ReadRoute(CXMLnode node)
{
    found_any = true;
    std::unique_ptr<COverlayRoute> made;
    COverlayRoute* route = Take(routes, ObjectIDFromSrc(node), made);
    route->name.clear();
    node.FindChildGetContents("name", route->name);
    if (route->name.empty()) route->name = "Unknown name";
    read_gpx_comment(node, route->comment);
    node.FindChildGetContents("type", route->category);
    read_line_style(node.FindChild("extensions"), *route);
    ReadWaypoints(node, *route);
    if (!category.empty()) route->category = category;
    if (made != nullptr) {
        if (routes.Has(*route)) return;
        g_mark_manager.routes.push_back(made.release());
    }
    routes.Add(route);
    Finish(*route);
}

void CGPXImport::ReadPoints(CXMLnode node, COverlayTrack& track)
{
    CTrackPoint point;
    for (CXMLnode segment = node.FindChild("trkseg"); segment; segment = segment.FindNext("trkseg")) {
        for (CXMLnode child = segment.FindChild("trkpt"); child; child = child.FindNext("trkpt")) {
            if (!read_gpx_position(child, point.lat, point.lon)) continue;
            read_trkpt(child, point);
            track.addPoint(point, false);
        }
    }
}

void CGPXImport::ReadTrack(CXMLnode node)
{
    found_any = true;
    const std::uint64_t id = ObjectIDFromSrc(node);
    const COverlayTrack* present = tracks.FindWithID(id);
    if (present != nullptr && present->isRecording()) return; // what is being recorded is newer than any file
    std::unique_ptr<COverlayTrack> made;
    COverlayTrack* track = Take(tracks, id, made);
    track->name.clear();
    node.FindChildGetContents("name", track->name);
    if (track->name.empty()) track->name = "Unknown name";
    read_gpx_comment(node, track->comment);
    node.FindChildGetContents("type", track->category);
    read_line_style(node.FindChild("extensions"), *track);
    ReadPoints(node, *track);
    const int points = track->getTotalPoints();
    if (points > 0 && track->getTotalDistance() / points < kDensePoints) {
        track->CompactData(kThinningSquared);
        track->ClearStats();
    }
    if (const double start = track->getTimeOfStart(); start != 0.0) track->created = start;
    if (!category.empty()) track->category = category;
    if (made != nullptr) {
        if (tracks.Has(*track)) return;
        // The last track is the one that is recorded to: it stays that.
        const auto before = CTrackManager::doRecordTrack && !g_track_manager.empty() ? std::prev(g_track_manager.end())
                                                                                     : g_track_manager.end();
        g_track_manager.insert(before, made.release());
    }
    tracks.Add(track);
    Finish(*track);
    g_track_manager.SetModified();
}

} // namespace

bool ImportGPXDocument(const CXMLdocument& document, const std::string& category, CBounds& bounds)
{
    return document.Root().Is("gpx") && CGPXImport(category, bounds).Read(document);
}

bool ImportGPXFileIntoCategory(const std::string& path, const std::string& category, CBounds& bounds)
{
    CXMLdocument document;
    return document.ParseFile(path) && ImportGPXDocument(document, category, bounds);
}

bool ImportGPXFile(const std::string& path, CBounds& bounds)
{
    return ImportGPXFileIntoCategory(path, {}, bounds);
}
