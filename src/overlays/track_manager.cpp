#include "overlays/track_manager.h"

#include "core/persistant_data.h"
#include "core/user_data_changed.h"
#include "navdata/units.h"
#include "nmea/data_connection.h"
#include "overlays/gps_position.h"
#include "overlays/object_names.h"
#include "overlays/overlay_dialogs.h"

#include <algorithm>
#include <memory>

// The list of tracks, and starting and stopping. What is recorded stands in track_recording.cpp, the file in
// track_file.cpp.

bool CTrackManager::doRecordTrack = false;
CTrackManager g_track_manager;

class CTrackManager::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CTrackManager") {}

    void DeclareData() override { Declare("doRecordTrack", doRecordTrack); }

    static Persistant track_settings;
};

CTrackManager::Persistant CTrackManager::Persistant::track_settings;

CTrackManager::CTrackManager() : default_track(std::string("T#")) {}

CTrackManager::~CTrackManager()
{
    for (COverlayTrack* track : *this) delete track;
}

void CTrackManager::SetModified()
{
    tracks_modified = true;
    NoteUserDataChanged();
}

COverlayTrack* CTrackManager::ActiveTrack() const
{
    return !empty() && !back()->deleted ? back() : nullptr;
}

void CTrackManager::EditDefaultTrack(ZT_HWND parent)
{
    TheOverlayDialogs().EditTrack(parent, default_track);
}

std::string CTrackManager::DefaultName() const
{
    return GetNameFromTemplate(default_track.name, static_cast<const std::list<COverlayTrack*>&>(*this));
}

bool CTrackManager::Contains(const COverlayTrack* track) const
{
    return std::find(begin(), end(), track) != end();
}

void CTrackManager::AddTrack(COverlayTrack* track)
{
    push_back(track);
    SetModified();
}

void CTrackManager::AddSplitPart(const COverlayTrack* of, COverlayTrack* part)
{
    if (!of->isRecording()) {
        const auto at = std::find(begin(), end(), of);
        insert(at != end() ? std::next(at) : at, part);
    } else {
        push_back(part);
        if (simulation_track == of) simulation_track = part;
    }
    SetModified();
}

COverlayTrack& CTrackManager::NewTrack(bool simulated)
{
    auto* const track = new COverlayTrack;
    track->name = simulated ? "Simulation" : DefaultName();
    if (simulated) {
        track->do_not_sync = true;
        simulation_track = track;
    }
    next_point = NextPoint::kFollowsRule;
    AddTrack(track);
    return *track;
}

void CTrackManager::SetRecording(bool on)
{
    doRecordTrack = on;
    Persistant::track_settings.SetModified();
    PersistantData::SaveAll();
}

void CTrackManager::startTrackRecording()
{
    SetRecording(true);
    NewTrack(COverlayGPSPosition::theLatestPosition.status == CDataGPSPosition::kSimulated);
    DispatchToListeners(*this);
    CDataConnection::UpdatedBackgroundSettings();
}

void CTrackManager::stopTrackRecording()
{
    SetRecording(false);
    if (COverlayTrack* track = ActiveTrack(); track != nullptr && track->isTrivial()) DeleteTrack(track);
    DispatchToListeners(*this);
    SaveIfNeeded();
    CDataConnection::UpdatedBackgroundSettings();
}

void CTrackManager::ToggleTrackRecording()
{
    if (doRecordTrack) {
        stopTrackRecording();
    } else {
        startTrackRecording();
    }
}

void CTrackManager::ResumeRecording(COverlayTrack* track)
{
    if (!Contains(track) || track->deleted || track->isRecording()) return;
    if (doRecordTrack) stopTrackRecording();
    splice(end(), *this, std::find(begin(), end(), track));
    SetModified();
    ResumeOrPauseRecording();
}

void CTrackManager::OnUpdate(CDataStartTimer& timer)
{
    constexpr double kJustStarted = -0.1;
    constexpr double kLongestAhead = 3600.0;
    if (!timer.new_track_at_start) return;
    if (!(timer.time_of_start > 0.0)) {
        if (doRecordTrack) stopTrackRecording();
        return;
    }
    const double ahead = timer.time_of_start - CHeartbeat::TheHeartbeat.Timestamp();
    if (!(ahead >= kJustStarted && ahead <= kLongestAhead)) return;
    if (doRecordTrack) stopTrackRecording();
    startTrackRecording();
    std::string time_of_day;
    CUnits::FormatTimeOfDay(timer.time_of_start, time_of_day);
    back()->name = "Start at " + time_of_day;
}

void CTrackManager::DeleteTrack(COverlayTrack* track)
{
    if (track->isRecording()) {
        SetRecording(false);
        DispatchToListeners(*this);
    }
    track->DeleteSyncItem();
    track->ClearData();
    track->Dispatch(COverlayObject::kChanged);
}

void CTrackManager::DeleteTracksMatching(bool (*matches)(const COverlayTrack&, void* context), void* context)
{
    for (COverlayTrack* track : *this)
        if (!track->deleted && matches(*track, context)) DeleteTrack(track);
}

void CTrackManager::ClearAll()
{
    const bool was_recording = doRecordTrack && ActiveTrack() != nullptr;
    DestroyAll();
    SetModified();
    if (!was_recording) return;
    SetRecording(false);
    DispatchToListeners(*this);
}

CTrackManager::iterator CTrackManager::Destroy(iterator at)
{
    const std::unique_ptr<COverlayTrack> track(*at);
    if (simulation_track == track.get()) simulation_track = nullptr;
    return erase(at); // before it tells the views that it has gone
}

void CTrackManager::DestroyAll()
{
    for (auto at = begin(); at != end();) at = Destroy(at);
}

bool CTrackManager::alreadyHave(const COverlayTrack& track) const
{
    return std::any_of(begin(), end(), [&](const COverlayTrack* own) { return own != &track && own->sameData(track); });
}

COverlayTrack* CTrackManager::FindEnd(const CTrackPoint* (COverlayTrack::*end_of)() const, double lat, double lon,
                                      double max_distance_squared, const COverlayTrack* except) const
{
    CSimpleGrid plane;
    plane.SetOrigin(lat, lon);
    COverlayTrack* nearest = nullptr;
    for (COverlayTrack* track : *this) {
        const CTrackPoint* const point = track->isShown() && track != except ? (track->*end_of)() : nullptr;
        if (point == nullptr) continue;
        const double squared = plane.distance_squared(point->lat, point->lon);
        if (squared >= max_distance_squared) continue;
        max_distance_squared = squared;
        nearest = track;
    }
    return nearest;
}

COverlayTrack* CTrackManager::FindTrackStartingAt(double lat, double lon, double max_distance_squared,
                                                  const COverlayTrack* except) const
{
    return FindEnd(&COverlayTrack::FirstPoint, lat, lon, max_distance_squared, except);
}

COverlayTrack* CTrackManager::FindTrackEndingAt(double lat, double lon, double max_distance_squared,
                                                const COverlayTrack* except) const
{
    return FindEnd(&COverlayTrack::LastPoint, lat, lon, max_distance_squared, except);
}

void CTrackManager::GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener)
{
    for (COverlayTrack* track : *this) {
        if (track->deleted) continue;
        for (CTrackSection* section : track->sections) {
            section->action = action;
            listener.OnUpdate(*section);
        }
    }
}
