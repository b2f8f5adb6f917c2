#include "ui/screen_insets.h"

#include <algorithm>

namespace {

double Remaining(double inset, double distance)
{
    return std::max(0.0, inset - distance);
}

} // namespace

void ScreenInsets::adjust(double x, double y, double width, double height, const ScreenInsets& parent,
                          double parent_width, double parent_height)
{
    const double to_right = parent_width - (x + width);
    const double to_bottom = parent_height - (y + height);
    left = Remaining(parent.left, x);
    top = Remaining(parent.top, y);
    right = Remaining(parent.right, to_right);
    bottom = Remaining(parent.bottom, to_bottom);
    top_left = Remaining(parent.top_left, std::max(x, y));
    bottom_left = Remaining(parent.bottom_left, std::max(x, to_bottom));
    top_right = Remaining(parent.top_right, std::max(to_right, y));
    bottom_right = Remaining(parent.bottom_right, std::max(to_right, to_bottom));
}

bool ScreenInsets::isEqual(const ScreenInsets& other) const
{
    return top == other.top && bottom == other.bottom && left == other.left && right == other.right &&
           top_left == other.top_left && bottom_left == other.bottom_left && top_right == other.top_right &&
           bottom_right == other.bottom_right;
}

ScreenInsets getInsets()
{
    return {};
}
