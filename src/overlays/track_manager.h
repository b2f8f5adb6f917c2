#pragma once

#include "core/listener.h"
#include "core/serializable.h"
#include "navdata/data_gps_position.h"
#include "overlays/overlay_source.h"
#include "overlays/overlay_track.h"

#include <list>

/// The owner of all tracks; the last one of the list is the active one, to which the position is recorded. Published
/// through Listener<CTrackManager> when recording starts or stops. Main thread only.
class CTrackManager : public std::list<COverlayTrack*>,
                      public CSerializable,
                      public IOverlaySource,
                      public Listener<CDataGPSPosition> {
public:
    static bool doRecordTrack; ///< setting: recording is on

    CTrackManager();
    ~CTrackManager() override;
    bool LoadFromFile();
    bool SaveIfNeeded();

    COverlayTrack& DefaultTrack();
    std::string DefaultName();
    void startTrackRecording();
    void stopTrackRecording();
    void ToggleTrackRecording();
    void ResumeOrPauseRecording();
    void ResumeRecording(COverlayTrack* track);
    /// A simulation begins: the next point begins a new track, "Simulation".
    void StartSimulation();
    /// It has ended: its track is closed, and dropped when trivial.
    void EndSimulation();
    void DeleteTrack(COverlayTrack* track);
    void ClearAll();
    bool alreadyHave(const COverlayTrack& track) const;

    void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override;
    void OnUpdate(CDataGPSPosition& position) override;
};

extern CTrackManager g_track_manager;
