#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_track.h"
#include "overlays/track_manager.h"

#include <iterator>

void COverlayRoute::ConvertToTrack(COverlayTrack& track) const
{
    for (const COverlayMark* waypoint : waypoints) {
        if (waypoint->HasPosition()) track.addPoint({waypoint->lat, waypoint->lon, 0.0, 0.0F}, false);
    }
}

void COverlayRoute::ConvertToTrack()
{
    auto* const track = new COverlayTrack;
    track->name = name + "-converted";
    if (do_not_sync) track->do_not_sync = true;
    ConvertToTrack(*track);
    setVisible(false);
    SetModifiedNow();
    Dispatch(kLookChanged);
    // The last track is the one that is recorded to.
    if (CTrackManager::doRecordTrack && !g_track_manager.empty()) {
        g_track_manager.insert(std::prev(g_track_manager.end()), track);
        g_track_manager.SetModified();
    } else {
        g_track_manager.AddTrack(track);
    }
    track->Dispatch(kChanged);
}
