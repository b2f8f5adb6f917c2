#include "overlays/moving_target.h"

#include "chart/polynomial_projection.h"
#include "core/display_metrics.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace {

constexpr double kMetresPerKnotMinute = 30.866666666666667;
/// Knots: a slower target has no vector.
constexpr float kLeastVectorSpeed = 0.2F;

// Logical pixels.
constexpr double kVectorWidth = 2.0;
constexpr double kArrowArm = 5.0;
constexpr double kRingWidth = 1.0;
/// Device pixels: no window comes near to a ring that is larger, and the painter's coordinates end.
constexpr double kLargestRing = 30000.0;

bool IsSet(const DblPoint& point)
{
    return point.x != 0.0 || point.y != 0.0;
}

QPointF ToQPoint(const DblPoint& point)
{
    return {point.x, point.y};
}

void Extend(FRect& rect, const DblPoint& point, double around)
{
    rect.left = std::min(rect.left, point.x - around);
    rect.top = std::min(rect.top, point.y - around);
    rect.right = std::max(rect.right, point.x + around);
    rect.bottom = std::max(rect.bottom, point.y + around);
}

/// What is not a place on the chart becomes the unset point.
DblPoint FiniteOrUnset(const DblPoint& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) ? point : DblPoint{};
}

} // namespace

COverlayMovingTarget::COverlayMovingTarget()
    : COverlayObject(kTargets, kMovingTarget), colour(QColor::fromRgba(gc_color.argb()))
{}

bool COverlayMovingTarget::HasVector() const
{
    return show_vector && best_source != kNoDirection && get_speed() > kLeastVectorSpeed;
}

DblPoint COverlayMovingTarget::VectorEnd(CMapping& mapping, const CPolynomialProjection& projection) const
{
    const double metres =
        static_cast<double>(get_speed()) * static_cast<double>(velocity_vector_scale) * kMetresPerKnotMinute;
    double lat = 0.0;
    double lon = 0.0;
    grid.xy_to_latlon(metres * static_cast<double>(best_sin), metres * static_cast<double>(best_cos), lat, lon);
    mapping.AddPosition(projection, lat, lon);
    const DblPoint end = mapping.image_points.back();
    mapping.image_points.pop_back();
    return FiniteOrUnset(end);
}

void COverlayMovingTarget::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    FPoint on_chart;
    const bool no_position = !(std::abs(latitude) <= 90.0) || (latitude == 0.0 && longitude == 0.0);
    if (no_position || !projection.latlong_to_xy(latitude, longitude, on_chart)) return;
    mapping.AddPosition(projection, latitude, longitude);
    const DblPoint at = mapping.image_points[kPosition];
    projection.get_rotation(at.x, at.y, chart_cos, chart_sin);

    const DblPoint end = HasVector() ? VectorEnd(mapping, projection) : DblPoint{};
    DblPoint ring;
    const double scale = projection.get_scale(at.x, at.y);
    if (num_range_rings > 0 && scale > 0.0) {
        ring = FiniteOrUnset({at.x + static_cast<double>(range_ring_radius) / scale, at.y});
    }
    mapping.image_points.push_back(end);
    mapping.image_points.push_back(ring);
    mapping.kind = CMapping::kPoints;
    mapping.count = 1;
    Extend(mapping.bounds, at, IsSet(ring) ? (ring.x - at.x) * num_range_rings : 0.0);
    if (IsSet(end)) Extend(mapping.bounds, end, 0.0);
}

void COverlayMovingTarget::DrawVelocityVector(QPainter* painter, const CViewParams&, const CMapping& mapping) const
{
    if (mapping.screen_points.size() <= kVectorEnd || !IsSet(mapping.image_points[kVectorEnd])) return;
    const QPointF from = ToQPoint(mapping.screen_points[kPosition]);
    const QPointF tip = ToQPoint(mapping.screen_points[kVectorEnd]);
    const double length = std::hypot(tip.x() - from.x(), tip.y() - from.y());
    if (!(length > 0.0)) return;

    const QPointF back = (from - tip) / length * kArrowArm * graphicsResolution;
    const QPointF side(-back.y(), back.x());
    const QPointF head[] = {tip + back + side, tip, tip + back - side};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, kVectorWidth * graphicsResolution, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter->drawLine(from, tip);
    painter->drawPolyline(head, 3);
    painter->restore();
}

void COverlayMovingTarget::DrawRangeRing(QPainter* painter, const CViewParams&, const CMapping& mapping) const
{
    if (mapping.screen_points.size() <= kRingRadius || !IsSet(mapping.image_points[kRingRadius])) return;
    const QPointF centre = ToQPoint(mapping.screen_points[kPosition]);
    const QPointF edge = ToQPoint(mapping.screen_points[kRingRadius]);
    const double radius = std::hypot(edge.x() - centre.x(), edge.y() - centre.y());
    if (!(radius > 0.0)) return;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, kRingWidth * graphicsResolution));
    painter->setBrush(Qt::NoBrush);
    for (int ring = 1; ring <= std::min(num_range_rings, kMostRings) && radius * ring <= kLargestRing; ++ring)
        painter->drawEllipse(centre, radius * ring, radius * ring);
    painter->restore();
}
