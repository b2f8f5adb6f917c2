#pragma once

#include "core/simple_grid.h"
#include "overlays/line_appearance.h"
#include "overlays/overlay_object.h"
#include "overlays/syncable.h"

#include <list>
#include <vector>

class COverlayMark;
class COverlayTrack;

/// An ordered list of waypoints. Main thread only.
class COverlayRoute : public COverlayObject, public CSyncable, public CLineAppearance {
public:
    /// One usable leg in the plane of `grid`; lengths in metres.
    struct segment;

    std::list<COverlayMark*> waypoints; ///< owned, in sailing order
    bool following = false;

    COverlayRoute();
    ~COverlayRoute() override;
    // (overrides of both bases, menus and editing: see the class's owner)

    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    double getTotalLengthMeters() const;
    void ReverseWaypoints();
    void SplitRoute(COverlayMark* at);
    void JoinRoute(COverlayRoute* other);
    /// Adds every waypoint as a point without time.
    void ConvertToTrack(COverlayTrack& track) const;
    void SetNameFromEndWaypoints();
    void ClearData();
    /// Publishes the route and then each waypoint.
    void Dispatch(update_action new_action);
};
