#include "overlays/mark_deletion.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_views.h"
#include "overlays/track_manager.h"
#include "ui/action_sheet.h"

#include <algorithm>
#include <utility>

namespace {

/// A track that may have gone by the time that a menu or question is answered.
class CTrackRef {
public:
    explicit CTrackRef(const COverlayTrack& track) : address(&track), created(track.created) {}
    /// Null once the track has gone or is but a tombstone.
    COverlayTrack* get() const
    {
        const auto at = std::find(g_track_manager.begin(), g_track_manager.end(), address);
        return at != g_track_manager.end() && (*at)->created == created && !(*at)->deleted ? *at : nullptr;
    }

private:
    const COverlayTrack* address;
    double created; ///< tells a newer track at the same address apart
};

template <class Action>
void AddTrackEntry(CMenuTree& menu, const std::string& label, const COverlayTrack& track, Action action)
{
    menu.Add(label, [reference = CTrackRef(track), action = std::move(action)] {
        if (COverlayTrack* const present = reference.get()) action(*present);
    });
}

} // namespace

void COverlayTrack::addMenus(CMenuTree& menu, ZT_HWND parent, const CTrackSection* from)
{
    AddTrackEntry(menu, "Edit Track", *this,
                  [parent](COverlayTrack& track) { TheOverlayDialogs().EditTrack(parent, track); });
    if (from != nullptr) AddSplitMenu(menu, *from);
    AddJoinMenus(menu);
    AddTrackEntry(menu, "Convert to Route", *this, [](COverlayTrack& track) { track.ConvertToRoute(); });
    if (!isRecording()) {
        AddTrackEntry(menu, "Resume Recording", *this,
                      [](COverlayTrack& track) { g_track_manager.ResumeRecording(&track); });
    }
    AddTrackEntry(menu, visible ? "Hide Track" : "Show Track", *this, [](COverlayTrack& track) {
        track.setVisible(!track.visible);
        track.Dispatch(COverlayObject::kChanged);
    });
    AddTrackEntry(menu, locked ? "Unlock Track" : "Lock Track", *this, [](COverlayTrack& track) {
        track.setLocked(!track.locked);
        track.Dispatch(COverlayObject::kLookChanged);
    });
    AddTrackEntry(menu, "Save Track As", *this,
                  [parent](COverlayTrack& track) { TheOverlayDialogs().SaveAs(parent, track); });
    AddTrackEntry(menu, "Delete Track", *this, [parent](COverlayTrack& track) { track.onDelete(parent); });
}

void COverlayTrack::AddSplitMenu(CMenuTree& menu, const CTrackSection& from)
{
    const int index = TheOverlayViews().SelectedPoint(from);
    if (index < 0 || index >= from.count) return;
    const CTrackPoint* const point = from.points + index;
    if (point == FirstPoint() || point == LastPoint()) return;
    AddTrackEntry(menu, "Split Track", *this, [section = &from, index](COverlayTrack& track) {
        const auto at = std::find(track.sections.begin(), track.sections.end(), section);
        if (at != track.sections.end()) track.SplitTrack(*at, index);
    });
}

void COverlayTrack::AddJoinMenus(CMenuTree& menu)
{
    const CTrackPoint* const start = FirstPoint();
    const CTrackPoint* const end = LastPoint();
    if (start == nullptr) return;
    const double radius = JoinDistance();
    const auto add = [&](COverlayTrack* first, COverlayTrack* second) {
        if (first == nullptr || second == nullptr) return;
        AddTrackEntry(menu, "Join Track", *first, [reference = CTrackRef(*second)](COverlayTrack& track) {
            if (COverlayTrack* const other = reference.get()) track.JoinTrack(other);
        });
    };
    add(this, g_track_manager.FindTrackStartingAt(end->lat, end->lon, radius * radius, this));
    add(g_track_manager.FindTrackEndingAt(start->lat, start->lon, radius * radius, this), this);
}

void COverlayTrack::onDelete(ZT_HWND parent)
{
    DeleteAfterQuestion(parent, *this, locked, "Delete Track", [reference = CTrackRef(*this)] {
        if (COverlayTrack* const track = reference.get()) g_track_manager.DeleteTrack(track);
    });
}
