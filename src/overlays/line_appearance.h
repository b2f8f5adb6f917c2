#pragma once

#include "core/graphics_color.h"
#include "core/serializable.h"

class QPen;

/// How a route or track is drawn.
struct CLineAppearance {
    static constexpr int kLineStyles = 5;

    GraphicsColor colour{0.0F, 0.0F, 0.0F};
    float line_width = 2.0F; ///< logical pixels
    int line_style = 0;      ///< 0 solid; 1 to 4 dashes, dots, dash and dot, dash and two dots

    /// Files the three fields, one section. What is read is kept in bounds.
    bool SerializeAppearance(CSerializable::IOStream& stream);
    /// Puts the defaults in the place of a width or style that cannot be drawn.
    void KeepInBounds();
    /// The pen for the display's resolution.
    QPen Pen() const;
    /// The wider, translucent pen of what lies under the line of a selected object.
    QPen UnderPen() const;
};
