#include "overlays/position_history.h"

#include <algorithm>

const CPositionHistory::Entry* CPositionHistory::Oldest() const
{
    return entries > 0 ? &ring[OldestIndex()] : nullptr;
}

void CPositionHistory::Expire(double earliest, double now)
{
    while (entries > 0 && ring[OldestIndex()].time < earliest) --entries;
    for (int i = 0; i < entries; ++i) {
        if (ring[(OldestIndex() + i) % kEntries].time < now) continue;
        clear();
        return;
    }
}

void CPositionHistory::Push(const Entry& entry)
{
    ring[write_index] = entry;
    write_index = (write_index + 1) % kEntries;
    entries = std::min(entries + 1, kEntries);
}
