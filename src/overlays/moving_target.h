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
    /// the last two are (0, 0) where they do not apply.
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;

    QColor colour;

    static float velocity_vector_scale; ///< minutes; setting
    static GraphicsColor gc_color;      ///< setting
    static bool show_vector;            ///< setting
    static float range_ring_radius;     ///< nautical miles; setting
    static int num_range_rings;         ///< setting

protected:
    void DrawVelocityVector(QPainter* painter, const CViewParams& params, const CMapping& mapping) const;
    void DrawRangeRing(QPainter* painter, const CViewParams& params, const CMapping& mapping) const;

    mutable double chart_rotation = 0.0; ///< of the chart at the position; set by Map
};
