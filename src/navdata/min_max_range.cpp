#include "navdata/min_max_range.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr float kEmptyMin = 1e30F;
constexpr float kEmptyMax = -1e30F;

} // namespace

MinMaxRange::MinMaxRange(float range_seconds)
{
    SetRangeTime(range_seconds);
    reset();
}

void MinMaxRange::SetRangeTime(float range_seconds)
{
    bucket_time = range_seconds * 0.1;
}

void MinMaxRange::reset()
{
    std::fill(std::begin(mins), std::end(mins), kEmptyMin);
    std::fill(std::begin(maxs), std::end(maxs), kEmptyMax);
}

void MinMaxRange::SetValue(float value, double time)
{
    if (time - bucket_start > bucket_time) {
        bucket_start = time;
        current = (current + 1) % kBuckets;
        mins[current] = kEmptyMin;
        maxs[current] = kEmptyMax;
    }
    mins[current] = std::min(mins[current], value);
    maxs[current] = std::max(maxs[current], value);
}

float MinMaxRange::GetMin() const
{
    return *std::min_element(std::begin(mins), std::end(mins));
}

float MinMaxRange::GetMax() const
{
    return *std::max_element(std::begin(maxs), std::end(maxs));
}

bool MinMaxRange::GetMinMax(float& min, float& max) const
{
    min = GetMin();
    max = GetMax();
    return max > min;
}
