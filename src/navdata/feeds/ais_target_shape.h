#pragma once

#include <QImage>
#include <QRgb>

/// How one target looks on the screen.
struct CAISTargetLook {
    /// Steps of the direction, a third of a pixel at the shape's tip.
    static constexpr int kDirections = 120;
    static constexpr int kUpright = kDirections; ///< without a heading

    int direction = kUpright; ///< of kDirections, clockwise from up
    QRgb colour = 0;
    bool small = false;    ///< class B
    bool selected = false; ///< with a wide outline

    friend bool operator==(const CAISTargetLook&, const CAISTargetLook&) = default;
};

/// The step of a direction on the screen that has these parts to the right and up.
int AISTargetDirection(double right, double up);

/// The half of the image's width, logical pixels.
constexpr int kAISTargetReach = 18;

/// The shape, with the target's position at its middle, at the display's resolution. Shapes are kept from one painting
/// to the next, so that a paint is a copy; the image stays valid until the next call. Main thread only.
const QImage& AISTargetShape(const CAISTargetLook& look);
