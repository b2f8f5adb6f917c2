#pragma once

#include "overlays/line_appearance.h"
#include "overlays/syncable.h"
#include "overlays/track_section.h"

#include <list>

class COverlayRoute;

/// A recorded or imported path. Published through Listener<COverlayTrack> while it is the active one. Main thread only.
class COverlayTrack : public CSyncable, public CLineAppearance {
public:
    std::list<CTrackSection*> sections; ///< owned
    double total_distance = 0.0;        ///< metres; 0: these three are not computed
    double moving_time = 0.0;           ///< seconds
    double max_speed = 0.0;             ///< metres per second
    CSimpleGrid grid;                   ///< origin at the last point, once needed

    COverlayTrack();
    ~COverlayTrack() override;
    void addPoint(const CTrackPoint& point, bool dispatch);
    /// Not worth keeping: without sections, with fewer than 3 points, or a ":chunk".
    bool isTrivial() const;
    bool isRecording() const;
    void Dispatch(COverlayObject::update_action action);
    bool sameData(const COverlayTrack& other) const;
    double getTotalDistance();
    int getTotalPoints() const;
    /// Drops points that lie within the tolerance (squared metres) of the line.
    bool CompactData(double tolerance_squared);
    void ClearData();
    // (menus, splitting, joining, filing: see the class's owner)
};
