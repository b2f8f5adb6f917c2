#pragma once

#include "core/graphics_color.h"

#include <string>

#include <QImage>
#include <QSize>

/// Loads an interface or mark icon from the resources by its name ("Flag", "settings.svg", "qrc:/OpenMap.png") or
/// absolute path in the resolution of the display. The layer NAME_c takes `colour`, the layer NAME is drawn over it as
/// it is; either may be missing. A drawing (SVG) is rendered at the scale wanted, a picture is taken as "@3x", "@2x" or
/// plain. Gives a null image when there is neither layer. `takes_colour`, which may be null, tells whether there was a
/// colourable layer. The device pixel ratio of the result is 1.
QImage LoadColorizedImage(const std::string& name, const GraphicsColor& colour, bool* takes_colour = nullptr);
/// The same for one scale (1, 2 or 3), without falling back to a lower one.
QImage LoadColorizedImage_atsize(const std::string& name, const GraphicsColor& colour, bool* takes_colour, int scale);
/// The same, fitted into `size` device pixels with its proportions kept.
QImage LoadColorizedImage_fitted(const std::string& name, const GraphicsColor& colour, bool* takes_colour, QSize size);

/// Multiplies every pixel with `colour`, alpha included: white becomes the colour, greys its shades.
QImage ColorizeImage(const QImage& image, const GraphicsColor& colour);
