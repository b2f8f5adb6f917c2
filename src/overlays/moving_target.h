#pragma once

#include "core/graphics_color.h"
#include "navdata/data_gps_position.h"
#include "overlays/overlay_object.h"

#include <QColor>

/// Something that moves: the own ship, an AIS target. Its velocity vector and range rings are drawn with it.
class COverlayMovingTarget : public CDataGPSPosition, public COverlayObject {
public:
    COverlayMovingTarget();
    /// Three points: the position, the end of the velocity vector, and the one that the rings' radius is taken from;
    /// the last two are (0, 0) where they do not apply. Only the position can be hit. Nothing is mapped without a
    /// position, or where the chart cannot show it.
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;

    QColor colour;

    static constexpr int kMostRings = 5;
    static constexpr float kLongestVector = 1440.0F;  ///< minutes
    static constexpr float kLargestRadius = 10000.0F; ///< nautical miles

    static float velocity_vector_scale; ///< minutes; setting
    static GraphicsColor gc_color;      ///< setting
    static bool show_vector;            ///< setting
    static float range_ring_radius;     ///< nautical miles; setting
    static int num_range_rings;         ///< 0 to kMostRings; setting

protected:
    /// Indices into the mapping's points.
    enum Point { kPosition = 0, kVectorEnd = 1, kRingRadius = 2 };

    /// A line to where the target will be in velocity_vector_scale minutes, with an open arrow head.
    void DrawVelocityVector(QPainter* painter, const CViewParams& params, const CMapping& mapping) const;
    void DrawRangeRing(QPainter* painter, const CViewParams& params, const CMapping& mapping) const;

    /// Of the chart at the position, set by Map: cosine and sine of the direction of north, (1, 0) is north up.
    mutable float chart_cos = 1.0F;
    mutable float chart_sin = 0.0F;

private:
    bool HasVector() const;
    DblPoint VectorEnd(CMapping& mapping, const CPolynomialProjection& projection) const;
};
