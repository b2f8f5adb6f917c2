#include "core/display_metrics.h"
#include "navdata/feeds/ais_target.h"
#include "navdata/feeds/ais_target_manager.h"
#include "navdata/feeds/ais_target_shape.h"

#include <cmath>

#include <QPainter>

void CAISTarget::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    COverlayMovingTarget::Map(mapping, projection);
    if (mapping.image_points.empty()) return;
    // A ship can be taken by the end of her vector too, where there is one.
    const DblPoint& end = mapping.image_points[kVectorEnd];
    mapping.count = end.x != 0.0 || end.y != 0.0 ? 2 : 1;
    mapping.drawn_around = kAISTargetReach * graphicsResolution;
}

void CAISTarget::Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const
{
    if (mapping.screen_points.empty()) return;
    DrawVelocityVector(painter, params, mapping);
    if (CAISTargetManager::show_ais_range_ring) DrawRangeRing(painter, params, mapping);

    CAISTargetLook look{CAISTargetLook::kUpright, colour.rgba(), isClassB(), this == selected_target};
    if (compass.heading < CNEMA_AIS::kNoHeading) {
        const float right = heading_sin * chart_cos + heading_cos * chart_sin;
        const float up = heading_cos * chart_cos - heading_sin * chart_sin;
        look.direction = AISTargetDirection(static_cast<double>(right), static_cast<double>(up));
    }
    const QImage& shape = AISTargetShape(look);
    const DblPoint& at = mapping.screen_points[kPosition];
    // On whole pixels, where an image is copied as it is.
    painter->drawImage(QPointF(std::round(at.x) - shape.width() / 2.0, std::round(at.y) - shape.height() / 2.0), shape);
}
