#include "overlays/view_params.h"

#include <cmath>

namespace {

/// The offset nearest to `wanted` that puts image pixels on whole screen pixels.
double SnapOffset(double wanted, int level, double scale)
{
    return level < 1 ? std::round(wanted) : std::round(wanted * scale) / scale;
}

} // namespace

void CViewParams::SetLevel(int new_level)
{
    level = new_level;
    scale = std::ldexp(1.0, -new_level);
}

void CViewParams::AdjustOffset(double sx, double sy, double x, double y)
{
    offset_x = SnapOffset(x - sx / scale, level, scale);
    offset_y = SnapOffset(y - sy / scale, level, scale);
}

void CViewParams::ApplyDelta(double& dx, double& dy)
{
    const double old_x = offset_x;
    const double old_y = offset_y;
    offset_x = SnapOffset(old_x - dx / scale, level, scale);
    offset_y = SnapOffset(old_y - dy / scale, level, scale);
    dx = (old_x - offset_x) * scale;
    dy = (old_y - offset_y) * scale;
}

void CViewParams::ScreenToImage(double sx, double sy, double& x, double& y) const
{
    x = sx / scale + offset_x;
    y = sy / scale + offset_y;
}

void CViewParams::ImageToScreen(std::span<const DblPoint> image, std::span<DblPoint> screen) const
{
    // Copies, which the writing cannot change, so that both coordinates go through one instruction each.
    const double left = offset_x;
    const double top = offset_y;
    const double factor = scale;
    const DblPoint* const from = image.data();
    DblPoint* const to = screen.data();
    const std::size_t count = screen.size();
    const auto map = [=](std::size_t i) { to[i] = {(from[i].x - left) * factor, (from[i].y - top) * factor}; };
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        map(i);
        map(i + 1);
        map(i + 2);
        map(i + 3);
    }
    for (; i < count; ++i) map(i);
}

FRect CViewParams::ScreenToImage(const FRect& screen) const
{
    FRect result;
    ScreenToImage(screen.left, screen.top, result.left, result.top);
    ScreenToImage(screen.right, screen.bottom, result.right, result.bottom);
    return result;
}
