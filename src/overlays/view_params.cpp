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

void CViewParams::ImageToScreen(double x, double y, double& sx, double& sy) const
{
    sx = (x - offset_x) * scale;
    sy = (y - offset_y) * scale;
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
    const DblPoint* from = image.data();
    for (DblPoint& to : screen) {
        to = {(from->x - left) * factor, (from->y - top) * factor};
        ++from;
    }
}

FRect CViewParams::ImageToScreen(const FRect& image) const
{
    FRect result;
    ImageToScreen(image.left, image.top, result.left, result.top);
    ImageToScreen(image.right, image.bottom, result.right, result.bottom);
    return result;
}

FRect CViewParams::ScreenToImage(const FRect& screen) const
{
    FRect result;
    ScreenToImage(screen.left, screen.top, result.left, result.top);
    ScreenToImage(screen.right, screen.bottom, result.right, result.bottom);
    return result;
}
