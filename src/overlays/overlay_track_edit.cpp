#include "overlays/mark_manager.h"
#include "overlays/overlay_views.h"
#include "overlays/polyline_vertex.h"
#include "overlays/track_manager.h"

#include <algorithm>
#include <iterator>
#include <memory>

// What changes the shape of a whole track: thinning, splitting, joining, converting.

namespace {

constexpr double kRouteTolerance = 400.0; ///< squared metres: a route keeps within 20 m of its track

} // namespace

bool COverlayTrack::CompactData(double tolerance_squared)
{
    const CSimpleGrid& plane = Grid();
    bool changed = false;
    for (CTrackSection* section : sections) changed = section->CompactData(plane, tolerance_squared) || changed;
    if (!changed) return false;
    CTrackSection::repackageSections(sections);
    ClearStats();
    g_track_manager.SetModified();
    return true;
}

void COverlayTrack::TrackToRoute(double tolerance_squared, COverlayRoute& route) const
{
    CSimpleGrid plane = grid;
    if (const CTrackPoint* last = LastPoint(); !plane.ready() && last != nullptr) plane.SetOrigin(last->lat, last->lon);
    const COverlayMark::CCreatingRoute creating_route;
    for (const CTrackSection* section : sections) {
        const auto vertices = section->Thinned(plane, tolerance_squared);
        for (std::size_t i = section == sections.front() ? 0 : 1; i < vertices.size(); ++i) {
            const CTrackPoint& point = section->points[vertices[i].index];
            auto* const waypoint = new COverlayMark;
            waypoint->lat = point.lat;
            waypoint->lon = point.lon;
            route.InsertWaypoint(waypoint, nullptr);
        }
    }
}

void COverlayTrack::ConvertToRoute()
{
    auto route = std::make_unique<COverlayRoute>();
    route->name = name + "-converted";
    TrackToRoute(kRouteTolerance, *route);
    g_mark_manager.routes.push_back(route.get());
    route.release()->Dispatch(COverlayObject::kChanged);
    setVisible(false);
    SetModifiedNow();
    Dispatch(COverlayObject::kLookChanged);
}

void COverlayTrack::SplitTrack(CTrackSection* section, int index)
{
    const auto at = std::find(sections.begin(), sections.end(), section);
    if (at == sections.end() || index < 0 || index >= section->count) return;
    TheOverlayViews().Deselect();
    auto* const part = new COverlayTrack;
    part->name = name + "-split";
    static_cast<CLineAppearance&>(*part) = *this;
    part->category = category;
    part->do_not_sync = do_not_sync;
    part->visible = visible;
    g_track_manager.AddSplitPart(this, part);

    auto* const divided = new CTrackSection(part);
    section->splitSection(index, *divided);
    part->sections.push_back(divided);
    part->sections.splice(part->sections.end(), sections, std::next(at), sections.end());
    for (CTrackSection* moved : part->sections) moved->track = part;
    DropLonePoints();
    part->DropLonePoints();
    if (const double start = part->getTimeOfStart(); start != 0.0) part->created = start;
    for (COverlayTrack* track : {this, part}) {
        track->ClearStats();
        track->SetModifiedNow();
        track->Dispatch(COverlayObject::kChanged);
    }
}

void COverlayTrack::DropLonePoints()
{
    for (auto at = sections.begin(); at != sections.end() && sections.size() > 1;) {
        if ((*at)->count > 1) {
            ++at;
            continue;
        }
        delete *at; // its one point is the neighbour's too
        at = sections.erase(at);
    }
}

void COverlayTrack::JoinTrack(COverlayTrack* other)
{
    if (other == this || other == nullptr) return;
    SetModifiedNow();
    const CTrackPoint* const end = LastPoint();
    const CTrackPoint* const start = other->FirstPoint();
    if (end != nullptr && start != nullptr && !start->Meets(*end)) addPoint(*start, false);
    for (CTrackSection* section : other->sections) section->track = this;
    sections.splice(sections.end(), other->sections);
    const bool was_recording = other->isRecording();
    g_track_manager.DeleteTrack(other);
    ClearStats();
    Dispatch(COverlayObject::kChanged);
    if (was_recording) g_track_manager.ResumeRecording(this);
}
