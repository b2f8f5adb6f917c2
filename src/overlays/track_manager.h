#pragma once

#include "core/listener.h"
#include "core/serializable.h"
#include "core/zt_hwnd.h"
#include "navdata/data_gps_position.h"
#include "navdata/start_timer.h"
#include "overlays/overlay_source.h"
#include "overlays/overlay_track.h"
#include "overlays/tombstones.h"

#include <list>

/// The owner of all tracks; the last one of the list is the active one, to which the position is recorded. Published
/// through Listener<CTrackManager> when recording starts or stops. Main thread only.
class CTrackManager : public std::list<COverlayTrack*>,
                      public CSerializable,
                      public IOverlaySource,
                      public Listener<CDataGPSPosition>,
                      public Listener<CDataStartTimer> {
public:
    static bool doRecordTrack; ///< setting: recording is on
    /// What a section of the file holds at most; what is more goes into another. A test makes it smaller.
    static std::size_t most_bytes_in_section;

    bool tracks_modified = false; ///< something has changed since the last saving

    CTrackManager();
    ~CTrackManager() override;
    /// Reads the file and begins to listen. False when there is no file, or its end was not reached: what could be read
    /// of it is there.
    bool LoadFromFile();
    /// Writes the file when something changed or the last writing failed. False when the writing failed.
    bool SaveIfNeeded();
    bool Serialize(IOStream& stream) override;
    /// Something of the tracks has changed and is to be saved.
    void SetModified();

    COverlayTrack& DefaultTrack() { return default_track; }
    void EditDefaultTrack(ZT_HWND parent);
    std::string DefaultName() const;
    /// The track that is, or would be, recorded to: the last one; null when there is none or it is deleted.
    COverlayTrack* ActiveTrack() const;
    /// Whether the track is one of the list.
    bool Contains(const COverlayTrack* track) const;
    /// Adds the track, which becomes the manager's, at the end of the list.
    void AddTrack(COverlayTrack* track);
    /// Adds a part that was cut off a track: behind it, or as the active one when that is recording.
    void AddSplitPart(const COverlayTrack* of, COverlayTrack* part);

    void startTrackRecording();
    void stopTrackRecording();
    void ToggleTrackRecording();
    /// Stops a recording, or goes on with the active track, to which the present position is added.
    void ResumeOrPauseRecording();
    /// Goes on with that track, which becomes the active one. Nothing on a deleted one or while it is recording.
    void ResumeRecording(COverlayTrack* track);
    /// A simulation begins: the next point begins a new track, "Simulation". A trivial one of before is dropped.
    void StartSimulation();
    /// It has ended: its track is closed, and dropped when trivial.
    void EndSimulation();

    /// Leaves a tombstone. A recording to the track ends.
    void DeleteTrack(COverlayTrack* track);
    void DeleteTracksMatching(bool (*matches)(const COverlayTrack&, void* context), void* context);
    /// Removes everything, without tombstones. A recording ends.
    void ClearAll();
    bool alreadyHave(const COverlayTrack& track) const;
    /// Among the visible tracks but `except` the one that begins (ends) nearest to the place, within a squared distance
    /// in metres; null when none does.
    COverlayTrack* FindTrackStartingAt(double lat, double lon, double max_distance_squared,
                                       const COverlayTrack* except = nullptr) const;
    COverlayTrack* FindTrackEndingAt(double lat, double lon, double max_distance_squared,
                                     const COverlayTrack* except = nullptr) const;

    void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override;
    /// Records the position, if it is worth it, and publishes the active track.
    void OnUpdate(CDataGPSPosition& position) override;
    void OnUpdate(CDataStartTimer& timer) override;

private:
    class Persistant;
    /// What the next point does, whatever its distance in space and time.
    enum class NextPoint {
        kFollowsRule,
        kBeginsTrack, ///< a simulation has begun or ended
        kJoins        ///< the user resumed a track without a position at hand
    };

    void SetRecording(bool on);
    /// A new track at the end of the list, as an own ship of that state begins one.
    COverlayTrack& NewTrack(bool simulated);
    void Record(const CDataGPSPosition& position);
    void AddRecorded(COverlayTrack& track, const CTrackPoint& point, double dt, double metres, float knots);
    void CloseSimulation();
    /// Removes a track for good; the one behind it.
    iterator Destroy(iterator at);
    void DestroyAll();
    void PruneTombstones();
    bool ReadTracks(IOStream& stream);
    /// Reads more of the list; its first record goes on with the track `begun`, unless that is null. `last` becomes the
    /// track of the last record; null when there is none of it.
    bool ReadList(Section& section, COverlayTrack* begun, COverlayTrack*& last);
    COverlayTrack* ReadRecord(IOStream& stream, COverlayTrack* begun);
    bool WriteTracks(IOStream& stream);
    COverlayTrack* FindEnd(const CTrackPoint* (COverlayTrack::*end)() const, double lat, double lon,
                           double max_distance_squared, const COverlayTrack* except) const;

    COverlayTrack default_track;
    bool write_failed = false;
    NextPoint next_point = NextPoint::kFollowsRule;
    const COverlayTrack* simulation_track = nullptr; ///< the one of the simulation in progress
    CTombstoneAges ages;
};

extern CTrackManager g_track_manager;
