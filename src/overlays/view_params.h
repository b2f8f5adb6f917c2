#pragma once

#include "core/geometry.h"

#include <span>

/// How one view shows a chart image on the screen: image (x, y) lies on the screen at ((x - offset_x) * scale,
/// (y - offset_y) * scale). The offset is kept so that image pixels land on whole screen pixels. Screen units are
/// device pixels, image units chart pixels.
struct CViewParams {
    int level = 0;         ///< reduction by 2^level; negative magnifies
    double scale = 1.0;    ///< 2^-level, screen pixels per chart pixel
    double offset_x = 0.0; ///< chart pixel at the screen's origin
    double offset_y = 0.0;
    FRect view_rect; ///< what is worth drawing, in chart pixels

    /// Sets the level and the scale that belongs to it.
    void SetLevel(int new_level);
    /// Puts image point (x, y) at screen point (sx, sy), as nearly as whole pixels allow.
    void AdjustOffset(double sx, double sy, double x, double y);
    /// Scrolls by a screen delta and writes back the delta that whole pixels allowed.
    void ApplyDelta(double& dx, double& dy);

    void ImageToScreen(double x, double y, double& sx, double& sy) const
    {
        sx = (x - offset_x) * scale;
        sy = (y - offset_y) * scale;
    }
    void ScreenToImage(double sx, double sy, double& x, double& y) const;
    /// Many points at once, to the same bits; as many as `screen` has room for, of at least so many.
    void ImageToScreen(std::span<const DblPoint> image, std::span<DblPoint> screen) const;
    FRect ImageToScreen(const FRect& image) const
    {
        FRect result;
        ImageToScreen(image.left, image.top, result.left, result.top);
        ImageToScreen(image.right, image.bottom, result.right, result.bottom);
        return result;
    }
    FRect ScreenToImage(const FRect& screen) const;
};
