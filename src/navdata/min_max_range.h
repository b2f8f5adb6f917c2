#pragma once

/// The smallest and the largest value of a sliding span of time, kept in ten buckets: the span covered is 90 to 100
/// per cent of the range.
class MinMaxRange {
public:
    static constexpr int kBuckets = 10;

    explicit MinMaxRange(float range_seconds);
    void SetRangeTime(float range_seconds);
    void reset();
    /// `time` in seconds.
    void SetValue(float value, double time);
    /// 1e30 without values.
    float GetMin() const;
    /// -1e30 without values.
    float GetMax() const;
    /// True when the largest exceeds the smallest.
    bool GetMinMax(float& min, float& max) const;

private:
    float mins[kBuckets];
    float maxs[kBuckets];
    int current = 0;
    double bucket_start = 0.0; ///< seconds
    double bucket_time;        ///< seconds
};
