#pragma once

#include <QString>

/// The map's scale bar: decides when it changes and how long it is. Widths in logical pixels.
class CScaleBar {
public:
    static constexpr double kLongest = 250.0;
    static constexpr double kLongestShare = 0.4; ///< of the item's width

    /// Takes the scale shown (nautical miles per logical pixel, 0: none) and the item's width; true when the bar
    /// changed. A change of scale below 0.1 per cent leaves the bar alone, unless the user's units have changed.
    bool Update(bool shown, double scale, double item_width);

    double Width() const { return width; }
    const QString& Text() const { return text; }

private:
    bool Clear();

    double last_scale = 0.0;
    double last_item_width = 0.0;
    int last_units = -1; ///< family
    double width = 0.0;  ///< 0 hides the bar
    QString text;
};
