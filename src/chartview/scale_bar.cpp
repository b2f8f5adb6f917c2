#include "chartview/scale_bar.h"

#include "navdata/units.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kChangeThatShows = 1.001;

/// Whether two scales, one of them above 0, differ so much that the bar has to change.
bool Differ(double a, double b)
{
    if (a <= 0.0 || b <= 0.0) return a > 0.0 || b > 0.0;
    return std::max(a, b) / std::min(a, b) > kChangeThatShows;
}

} // namespace

bool CScaleBar::Update(bool shown, double scale, double item_width)
{
    if (!shown) {
        last_scale = 0.0;
        return Clear();
    }
    const int units = CUnits::Default->get_unit_family();
    if (!Differ(last_scale, scale) && last_item_width == item_width && last_units == units) return false;
    last_units = units;
    last_scale = scale;
    last_item_width = item_width;
    if (!(scale > 0.0)) return Clear();

    std::string new_text;
    width = CUnits::Default->format_scale(scale, new_text, std::min(kLongest, kLongestShare * item_width));
    text = QString::fromStdString(new_text);
    return true;
}

bool CScaleBar::Clear()
{
    const bool was_shown = width > 0.0 || !text.isEmpty();
    width = 0.0;
    text.clear();
    return was_shown;
}
