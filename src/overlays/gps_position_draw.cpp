#include "core/display_metrics.h"
#include "overlays/gps_position.h"
#include "ui/colorized_image.h"

#include <algorithm>

#include <QPainter>

namespace {

const GraphicsColor kNoFixColour{0x80 / 255.0F, 0x80 / 255.0F, 0x80 / 255.0F};
/// Where the position lies in an icon, of its width, in both directions.
constexpr double kIconCentre = 0.46875;

// The triangle that shows the compass heading, logical pixels.
constexpr double kTriangleHalfBase = 6.956522;
constexpr double kTriangleHeight = 16.0;

} // namespace

void COverlayGPSPosition::LoadIconImages()
{
    colour = QColor::fromRgba(gc_color.argb());
    icons.resolution = 0.0;
}

void COverlayGPSPosition::LoadIcons() const
{
    icons.blink[0] = LoadColorizedImage("gps_icon1", gc_color);
    icons.blink[1] = LoadColorizedImage("gps_icon2", gc_color);
    icons.no_fix = LoadColorizedImage("gps_icon1", kNoFixColour);
    icons.centre_x = icons.centre_y = kIconCentre * icons.no_fix.width();
    icons.resolution = graphicsResolution;
}

void COverlayGPSPosition::LookChanged()
{
    LoadIconImages();
    COverlayObject::Dispatch(kChanged);
}

void COverlayGPSPosition::GetUpdatesForAll(update_action new_action, Listener<COverlayObject>& listener)
{
    action = new_action;
    listener.OnUpdate(*this);
}

void COverlayGPSPosition::Map(CMapping& mapping, const CPolynomialProjection& projection) const
{
    if (icons.resolution != graphicsResolution) LoadIcons();
    COverlayMovingTarget::Map(mapping, projection);
    const double icon = std::max(icons.no_fix.width(), icons.no_fix.height());
    mapping.drawn_around = icon + (kTriangleHeight + kTriangleHalfBase) * graphicsResolution;
}

void COverlayGPSPosition::Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const
{
    if (mapping.screen_points.empty()) return;
    const DblPoint& at = mapping.screen_points[kPosition];
    if (best_source == kCompassHeading) {
        DrawCompass(painter, at);
    } else {
        DrawVelocityVector(painter, params, mapping);
    }
    if (num_range_rings > 0) DrawRangeRing(painter, params, mapping);
    painter->drawImage(QPointF(at.x - icons.centre_x, at.y - icons.centre_y),
                       status != kNoFix ? icons.blink[0] : icons.no_fix);
}

void COverlayGPSPosition::DrawCompass(QPainter* painter, const DblPoint& at) const
{
    // The heading on the screen: a to the right, b up.
    const double a = static_cast<double>(best_sin * chart_cos + best_cos * chart_sin);
    const double b = static_cast<double>(best_cos * chart_cos - best_sin * chart_sin);
    const QPointF base(at.x + a * icons.centre_x, at.y - b * icons.centre_y);
    const QPointF half_base = QPointF(b, a) * kTriangleHalfBase * graphicsResolution;
    const QPointF corners[] = {base + half_base, base + QPointF(a, -b) * kTriangleHeight * graphicsResolution,
                               base - half_base};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgba(gc_color.argb()));
    painter->drawPolygon(corners, 3);
    painter->restore();
}
