#pragma once

/// How far the unsafe border of a screen (rounded corners, cut-outs) reaches into an item, logical pixels.
struct ScreenInsets {
    double top = 0.0;
    double bottom = 0.0;
    double left = 0.0;
    double right = 0.0;
    double top_left = 0.0;
    double bottom_left = 0.0;
    double top_right = 0.0;
    double bottom_right = 0.0;

    /// Becomes what remains of `parent` for an item at x, y of width x height in a parent of the given size: each inset
    /// minus the item's distance from that side; a corner minus the greater of the distances of its two sides. Never
    /// below 0.
    void adjust(double x, double y, double width, double height, const ScreenInsets& parent, double parent_width,
                double parent_height);
    bool isEqual(const ScreenInsets& other) const;
};

/// The screen's insets; all 0 on this platform.
ScreenInsets getInsets();
