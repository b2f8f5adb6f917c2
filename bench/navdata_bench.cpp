#include "navdata/fast_trigonometry.h"
#include "ratio.h"

#include <random>
#include <vector>

#include <math.h>

namespace {

/// Directions as instruments send them, in no order.
const std::vector<float>& Directions()
{
    static const std::vector<float> directions = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> any(0.0F, 360.0F);
        std::vector<float> made(4096);
        for (float& direction : made) direction = any(random);
        return made;
    }();
    return directions;
}

void Keep(float value)
{
    asm volatile("" : : "x"(value));
}

const bool navdata_rows = [] {
    RegisterRatio(
        "navdata/fast_sin_cos",
        [] {
            for (const float degrees : Directions()) {
                float sine, cosine;
                fast_sin_cos(degrees, sine, cosine);
                Keep(sine + cosine);
            }
        },
        "sincosf",
        [] {
            constexpr float kRadiansPerDegree = 0.017453292F;
            for (const float degrees : Directions()) {
                float sine, cosine;
                sincosf(degrees * kRadiansPerDegree, &sine, &cosine);
                Keep(sine + cosine);
            }
        });
    return true;
}();

} // namespace
