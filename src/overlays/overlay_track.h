#pragma once

#include "core/zt_hwnd.h"
#include "overlays/line_appearance.h"
#include "overlays/syncable.h"
#include "overlays/track_section.h"

#include <list>

class CMenuTree;
class COverlayRoute;

/// A recorded or imported path. Published through Listener<COverlayTrack> while it is the active one. Main thread only.
class COverlayTrack : public CSyncable, public CLineAppearance {
public:
    class cType;
    static constexpr int kTypeId = 119;
    /// Some sections of a track that stand behind one another.
    struct CSectionRange {
        std::list<CTrackSection*>::const_iterator first;
        std::list<CTrackSection*>::const_iterator last; ///< behind them
    };

    std::list<CTrackSection*> sections; ///< owned; each but the first begins with the last point of the one before
    double total_distance = 0.0;        ///< metres; 0: these three are not computed
    double moving_time = 0.0;           ///< seconds
    double max_speed = 0.0;             ///< metres per second
    CSimpleGrid grid;                   ///< origin at the last point, once needed

    /// Looks like the default track, in its category and as private.
    COverlayTrack();
    /// The default track itself: a name template and the looks of CLineAppearance.
    explicit COverlayTrack(const std::string& name_template);
    COverlayTrack(const COverlayTrack&) = delete;
    COverlayTrack& operator=(const COverlayTrack&) = delete;
    ~COverlayTrack() override;

    int GetTypeId() const override { return kTypeId; }
    /// A track of which some sections were read counts as read.
    bool Serialize(IOStream& stream) override;
    /// Writes the track as if it had those of its sections only.
    bool WritePart(IOStream& stream, CSectionRange range);
    bool SyncObject(IOStream& stream, double since) override;
    void getLonLatBounds(CBounds& bounds) const override;
    /// The day of its start and its length.
    std::string getSubText(const CSimpleGrid& reader) const override;

    /// The statistics stay as they are: whoever adds to a track that has some keeps or clears them.
    void addPoint(const CTrackPoint& point, bool dispatch);
    /// Null when there is none.
    const CTrackPoint* FirstPoint() const;
    const CTrackPoint* LastPoint() const;
    /// Not worth keeping: without sections, with fewer than 3 points, or a ":chunk".
    bool isTrivial() const;
    /// Whether the position is being recorded to this track.
    bool isRecording() const;
    bool isShown() const { return visible && !deleted; }
    void Dispatch(COverlayObject::update_action action);
    /// Equal texts, and the same points within two metres.
    bool sameData(const COverlayTrack& other) const;
    /// Empties the track; id, times and flags stay.
    void ClearData();

    /// Seconds since 1970 of the first point; 0 without one.
    double getTimeOfStart() const;
    /// Seconds from the first point to the last; 0 when one of them has no time.
    double getElapsedTime() const;
    double getMovingTime();
    double getStoppedTime();
    /// Metres; computed once, and then kept while recording.
    double getTotalDistance();
    /// The overlaps of the sections count once.
    int getTotalPoints() const;
    /// Metres, over the whole track; the arguments are set to seconds and metres per second.
    double getStats(double& moving, double& fastest) const;
    void ComputeStats();
    void ClearStats();
    /// The plane of distances; its origin is set with the first call on a track that has a point.
    const CSimpleGrid& Grid();

    /// Drops points that lie within the tolerance (squared metres) of the line, and packs the sections anew. True when
    /// there were any.
    bool CompactData(double tolerance_squared);
    /// Adds a waypoint for every point of each section that is needed to keep the line within the tolerance (squared
    /// metres).
    void TrackToRoute(double tolerance_squared, COverlayRoute& route) const;
    /// Makes the track a route beside it, and hides the track.
    void ConvertToRoute();
    /// The part from that point on becomes a track of its own; the point is in both. A recording goes on in the new
    /// one.
    void SplitTrack(CTrackSection* section, int index);
    /// Appends the points of `part`, which is the same track's next part in a file.
    void TakePart(const COverlayTrack& part);
    /// Takes all points of the other track, which is deleted; its recording goes on in this one.
    void JoinTrack(COverlayTrack* other);

    /// Adds what the user can do with the track to a menu. `from` is the section that the menu was opened at; null
    /// when no place on the track is meant.
    void addMenus(CMenuTree& menu, ZT_HWND parent, const CTrackSection* from);
    /// Deletes the track, as a rule after a question.
    void onDelete(ZT_HWND parent);

private:
    void ClearSections();
    void DropLonePoints();
    void AddSplitMenu(CMenuTree& menu, const CTrackSection& from);
    void AddJoinMenus(CMenuTree& menu);
    void PackPoint(const CTrackPoint& point, bool dispatch);
    bool SerializeRecord(IOStream& stream, CSectionRange range);
    static bool WriteSections(Section& section, CSectionRange range);
    bool ReadSections(Section& section);
    /// Adds the points of a section that was read; a first one that the track has already is the overlap.
    void Append(const CTrackSection& piece);
    void AfterReading();
};

/// The points of a track in their order, the overlaps of its sections once.
class CTrackCursor {
public:
    explicit CTrackCursor(const COverlayTrack& track);
    /// Null behind the last one.
    const CTrackPoint* Next();

private:
    std::list<CTrackSection*>::const_iterator section;
    std::list<CTrackSection*>::const_iterator end;
    int index = 0;
};
