#pragma once

#include "core/serializable.h"
#include "core/simple_grid.h"
#include "overlays/overlay_object.h"

#include <list>
#include <span>
#include <vector>

struct CBounds;
class COverlayTrack;
struct Vertex;

/// One fix of a track. Filed as it stands in memory, so that a later program may add fields behind these.
struct CTrackPoint {
    double lat = 0.0;      ///< degrees
    double lon = 0.0;      ///< degrees
    double time = 0.0;     ///< seconds since 1970; 0: none
    float altitude = 0.0F; ///< metres
    std::uint32_t reserved = 0;

    /// Whether the two places are so near, about ten metres, that a line from one to the other adds nothing.
    bool Meets(const CTrackPoint& other) const
    {
        const double dlat = lat - other.lat;
        const double dlon = lon - other.lon;
        return dlat * dlat + dlon * dlon <= 1e-8;
    }
    friend bool operator==(const CTrackPoint&, const CTrackPoint&) = default;
};
static_assert(sizeof(CTrackPoint) == 32);

/// A piece of a track with room for 64 points. Consecutive sections share one point, so that the line has no gap.
/// Distances are metres on the plane of the grid that is given. Main thread only.
class CTrackSection : public COverlayObject, public CSerializable {
public:
    static constexpr int kMostPoints = 64;
    static constexpr double kLeastMovingSpeed = 0.447; ///< metres per second; a slower boat lies still

    COverlayTrack* track = nullptr; ///< the owner; null until it has one
    mutable double length = -1.0;   ///< metres; -1: not computed
    int count = 0;
    CTrackPoint points[kMostPoints];

    CTrackSection() : COverlayObject(kLines, kTrackSection) {}
    explicit CTrackSection(COverlayTrack* owner) : CTrackSection() { track = owner; }

    std::span<const CTrackPoint> Points() const { return {points, static_cast<std::size_t>(count)}; }
    const CTrackPoint& Last() const { return points[count - 1]; }
    /// False when the section is full. With `dispatch` the views map it anew.
    bool addPoint(const CTrackPoint& point, bool dispatch);

    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    bool isVisible() override;
    /// Selects the place; 1.
    int onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    /// A press on the selected track selects another place of it at once.
    int onMouseDown(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    int onRightClick(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    void onMenuDown(ZT_HWND parent) override;
    /// A section with more than 64 points, or less than none, does not read; a point that is no position is left out.
    bool Serialize(IOStream& stream) override;

    /// Sum of the steps; kept until a point is added.
    double getDistance(const CSimpleGrid& grid) const;
    /// The same, and adds the seconds in which the boat was moving; `max_speed` (metres per second) grows with the
    /// steps that are no spikes: below 1.25 times the running average.
    double getStats(const CSimpleGrid& grid, double& moving_time, double& max_speed) const;
    /// Metres per second over the steps to the neighbours of the point; 0 where times are missing.
    double SpeedAtPoint(const CSimpleGrid& grid, int index) const;
    /// The point nearest to the place, if it lies nearer than `distance_squared` (squared metres), which then becomes
    /// its distance; -1 when none does.
    int FindClosestPoint(const CSimpleGrid& grid, double lat, double lon, double& distance_squared) const;
    /// Metres along the section up to the point.
    double getDistanceToPoint(const CSimpleGrid& grid, int index) const;
    void ExpandLonLatBounds(CBounds& bounds) const;

    /// `other` becomes the points from `index` on; those up to it, that one included, stay.
    void splitSection(int index, CTrackSection& other);
    /// The points that are left when those within the tolerance (squared metres) of the line are left out.
    std::vector<Vertex> Thinned(const CSimpleGrid& grid, double tolerance_squared) const;
    /// Leaves out the points that lie within the tolerance (squared metres) of the line between their neighbours.
    /// True when there were any.
    bool CompactData(const CSimpleGrid& grid, double tolerance_squared);
    /// Packs the points of all sections anew into full ones, with the one-point overlap; they keep their owner.
    static void repackageSections(std::list<CTrackSection*>& sections);

private:
    void DropBadPoints();
};
