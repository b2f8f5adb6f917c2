#include "navdata/compass_damping.h"

#include "navdata/fast_trigonometry.h"

#include <cmath>

float CompassDamping::default_time_const = 1.0F;

void CompassDamping::Set(float new_heading, double new_time)
{
    if (!std::isfinite(new_heading)) return; // would stay in the average
    if (time_constant < 0.0F) {
        time_constant = default_time_const;
        rate = time_constant > 0.0F ? 1.0F / time_constant : 0.0F;
    }
    const auto passed = static_cast<float>(new_time - time);
    if (heading != kNoHeading && passed > 0.0F && passed <= time_constant) {
        heading = fold_degrees(heading + passed * rate * fold_difference(new_heading - heading));
    } else {
        heading = new_heading;
    }
    time = new_time;
}
