#pragma once

/// The last places of a vessel, at most ten: the oldest gives way. A plain value.
class CPositionHistory {
public:
    static constexpr int kEntries = 10;

    struct Entry {
        double lat = 0.0;  ///< degrees
        double lon = 0.0;  ///< degrees
        double time = 0.0; ///< seconds
    };

    int count() const { return entries; }
    /// Null when there is none.
    const Entry* Oldest() const;
    /// Drops from the oldest end all that lies before `earliest`, and all if one is not older than `now`: the clock
    /// has gone back. Seconds.
    void Expire(double earliest, double now);
    void Push(const Entry& entry);
    void clear() { entries = 0; }

private:
    int OldestIndex() const { return (write_index + kEntries - entries) % kEntries; }

    Entry ring[kEntries];
    int write_index = 0;
    int entries = 0;
};
