#pragma once

#include "core/serializable.h"
#include "core/simple_grid.h"
#include "overlays/overlay_object.h"

class CBounds;
class COverlayTrack;

struct CTrackPoint {
    double lat = 0.0;      ///< degrees
    double lon = 0.0;      ///< degrees
    double time = 0.0;     ///< seconds since 1970; 0: none
    float altitude = 0.0F; ///< metres
};

/// A piece of a track with room for 64 points. Consecutive sections share one point, so that the line has no gap.
class CTrackSection : public COverlayObject, public CSerializable {
public:
    static constexpr int kMostPoints = 64;

    COverlayTrack* track = nullptr; ///< the owner
    double length = -1.0;           ///< metres; -1: not computed
    int count = 0;
    CTrackPoint points[kMostPoints];

    CTrackSection();
    /// False when the section is full.
    bool addPoint(const CTrackPoint& point, bool dispatch);
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    bool isVisible() override;
    // (statistics, thinning, splitting, filing: see the class's owner)
};
