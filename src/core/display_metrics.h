#pragma once

/// Process-wide display factor (device pixels per logical pixel) and squared hit distances in device pixels, set at
/// each paint of the map item.
extern double graphicsResolution;
extern double graphicsClickPrecisionSq; ///< 81 r^2 for a mouse
extern double graphicsTouchPrecisionSq; ///< 225 r^2 for a finger

/// Sets all three for the display factor `resolution`.
void SetGraphicsResolution(double resolution);
