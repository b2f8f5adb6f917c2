#include "navdata/feeds/ais_target_shape.h"

#include "core/display_metrics.h"

#include <cmath>
#include <functional>
#include <numbers>
#include <unordered_map>

#include <QPainter>

namespace {

// The triangle along the heading, logical pixels.
constexpr double kBehind = 8.40000033378601;
constexpr double kHalfBase = 8.0;
constexpr double kAhead = 19.59999966621399; ///< of the base
// The one without a heading, which stands upright.
constexpr double kBelow = 4.0;
constexpr double kAbove = 9.856;

constexpr double kSmallSize = 0.8;
constexpr double kOutline = 1.0;
constexpr double kSelectedOutline = 3.0;

/// Shapes that are kept; a screen full of ships has fewer looks.
constexpr std::size_t kMostShapes = 512;

struct CLookHash {
    std::size_t operator()(const CAISTargetLook& look) const
    {
        const std::uint64_t rest =
            static_cast<std::uint64_t>(look.direction) << 2 | (look.small ? 2U : 0U) | (look.selected ? 1U : 0U);
        return std::hash<std::uint64_t>()(rest << 32 | look.colour);
    }
};

int HalfWidth()
{
    return static_cast<int>(std::ceil(kAISTargetReach * graphicsResolution));
}

/// The corners around the origin, y down, for `k` device pixels a unit.
void Corners(const CAISTargetLook& look, double k, QPointF (&corners)[3])
{
    if (look.direction == CAISTargetLook::kUpright) {
        corners[0] = QPointF(-kHalfBase, kBelow) * k;
        corners[1] = QPointF(0.0, -kAbove) * k;
        corners[2] = QPointF(kHalfBase, kBelow) * k;
        return;
    }
    const double angle = 2.0 * std::numbers::pi * look.direction / CAISTargetLook::kDirections;
    const QPointF ahead = QPointF(std::sin(angle), -std::cos(angle)) * k;
    const QPointF aside(-ahead.y(), ahead.x());
    const QPointF base = -ahead * kBehind;
    corners[0] = base - aside * kHalfBase;
    corners[1] = base + ahead * kAhead;
    corners[2] = base + aside * kHalfBase;
}

QImage MakeShape(const CAISTargetLook& look)
{
    QPointF corners[3];
    Corners(look, graphicsResolution * (look.small ? kSmallSize : 1.0), corners);
    const int half = HalfWidth();
    QImage image(2 * half, 2 * half, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(half, half);
    const double outline = (look.selected ? kSelectedOutline : kOutline) * graphicsResolution;
    painter.setPen(QPen(Qt::black, outline, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(QColor::fromRgba(look.colour));
    painter.drawPolygon(corners, 3);
    return image;
}

} // namespace

int AISTargetDirection(double right, double up)
{
    const double turns = std::atan2(right, up) / (2.0 * std::numbers::pi);
    const int step = static_cast<int>(std::lround(turns * CAISTargetLook::kDirections));
    return (step + CAISTargetLook::kDirections) % CAISTargetLook::kDirections;
}

const QImage& AISTargetShape(const CAISTargetLook& look)
{
    static std::unordered_map<CAISTargetLook, QImage, CLookHash> shapes;
    static double resolution = 0.0;
    if (resolution != graphicsResolution || shapes.size() >= kMostShapes) {
        shapes.clear();
        resolution = graphicsResolution;
    }
    const auto known = shapes.find(look);
    if (known != shapes.end()) return known->second;
    return shapes.emplace(look, MakeShape(look)).first->second;
}
