#pragma once

#include "core/graphics_color.h"

/// How a route or track is drawn.
struct CLineAppearance {
    GraphicsColor colour{0.0F, 0.0F, 0.0F};
    float line_width = 2.0F; ///< logical pixels
    int line_style = 0;      ///< 0 solid; 1 to 4 the dashed and dotted ones
};
