#include "core/display_metrics.h"
#include "navdata/feeds/ais_target.h"
#include "navdata/feeds/ais_target_manager.h"

#include <array>

#include <QPainter>

namespace {

// The triangle along the heading, logical pixels.
constexpr double kBehind = 8.40000033378601;
constexpr double kHalfBase = 8.0;
constexpr double kAhead = 19.59999966621399; ///< of the base
// The one without a heading, which stands upright.
constexpr double kBelow = 4.0;
constexpr double kAbove = 9.856;

constexpr double kClassBSize = 0.8;
constexpr double kOutline = 1.0;
constexpr double kSelectedOutline = 3.0;
/// Logical pixels: no part of the shape or of the vector's arrow head lies farther out.
constexpr double kReach = 18.0;

/// Pens and brushes as they are used again and again: making one takes the heap.
class CTargetInk {
public:
    const QPen& Outline(bool selected)
    {
        if (resolution != graphicsResolution) {
            resolution = graphicsResolution;
            pens[0] = QPen(Qt::black, kOutline * resolution, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
            pens[1] = QPen(Qt::black, kSelectedOutline * resolution, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
        }
        return pens[selected ? 1 : 0];
    }
    const QBrush& Fill(const QColor& colour)
    {
        for (const QBrush& brush : brushes)
            if (brush.style() == Qt::SolidPattern && brush.color() == colour) return brush;
        next = (next + 1) % brushes.size();
        brushes[next] = QBrush(colour);
        return brushes[next];
    }

private:
    double resolution = 0.0;
    QPen pens[2];
    std::array<QBrush, 16> brushes; ///< more than there are colours of targets
    std::size_t next = 0;
};

CTargetInk& Ink()
{
    static CTargetInk ink;
    return ink;
}

} // namespace

void CAISTarget::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    COverlayMovingTarget::Map(mapping, projection);
    if (mapping.image_points.empty()) return;
    // A ship can be taken by the end of her vector too, where there is one.
    const DblPoint& end = mapping.image_points[kVectorEnd];
    mapping.count = end.x != 0.0 || end.y != 0.0 ? 2 : 1;
    mapping.drawn_around = kReach * graphicsResolution;
}

void CAISTarget::Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const
{
    if (mapping.screen_points.empty()) return;
    DrawVelocityVector(painter, params, mapping);
    if (CAISTargetManager::show_ais_range_ring) DrawRangeRing(painter, params, mapping);

    const double k = graphicsResolution * (isClassB() ? kClassBSize : 1.0);
    const QPointF at(mapping.screen_points[kPosition].x, mapping.screen_points[kPosition].y);
    std::array<QPointF, 3> corners = {at + QPointF(-kHalfBase, kBelow) * k, at + QPointF(0.0, -kAbove) * k,
                                      at + QPointF(kHalfBase, kBelow) * k};
    if (compass.heading < CNEMA_AIS::kNoHeading) {
        // The heading on the screen: a to the right, b up.
        const double a = static_cast<double>(heading_sin * chart_cos + heading_cos * chart_sin);
        const double b = static_cast<double>(heading_cos * chart_cos - heading_sin * chart_sin);
        const QPointF base = at - QPointF(a, -b) * kBehind * k;
        const QPointF half_base = QPointF(b, a) * kHalfBase * k;
        corners = {base - half_base, base + QPointF(a, -b) * kAhead * k, base + half_base};
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Ink().Outline(this == selected_target));
    painter->setBrush(Ink().Fill(colour));
    painter->drawPolygon(corners.data(), static_cast<int>(corners.size()));
}
