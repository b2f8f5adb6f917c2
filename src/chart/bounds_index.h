#pragma once

#include "core/bounds.h"

#include <cstdint>
#include <vector>

class CChartOutline;

/// Finds the records of a list that may contain a position, without a walk over all of them: for each strip of latitude
/// and each strip of longitude (modulo 360) one bit a record, so that the candidates are the common bits of two strips.
/// Strips are widened outward: no record is ever missed. Bits follow the order in which records were added.
class CBoundsIndex {
public:
    static constexpr int kLatStrips = 180;
    static constexpr int kLonStrips = 360;

    /// Begins anew for `count` records.
    void Reset(std::size_t count);
    void Add(const CChartOutline* record, const CBounds& bounds);
    std::size_t size() const { return records.size(); }
    const CChartOutline* operator[](std::size_t at) const { return records[at]; }

    /// Calls `take(record)` for the candidates of a position from number `from` on, upwards; `take` answers false to
    /// end.
    template <class Take>
    void Ascending(double lat, double lon, std::size_t from, Take take) const;
    /// The same from number `from` (inclusive) down to 0.
    template <class Take>
    void Descending(double lat, double lon, std::size_t from, Take take) const;

private:
    const std::uint64_t* LatStrip(double lat) const;
    const std::uint64_t* LonStrip(double lon) const;

    std::vector<const CChartOutline*> records;
    std::size_t words = 0; ///< 64-bit words a strip
    std::vector<std::uint64_t> lat_bits;
    std::vector<std::uint64_t> lon_bits;
};

template <class Take>
void CBoundsIndex::Ascending(double lat, double lon, std::size_t from, Take take) const
{
    const std::uint64_t* by_lat = LatStrip(lat);
    const std::uint64_t* by_lon = LonStrip(lon);
    if (by_lat == nullptr || by_lon == nullptr || from >= records.size()) return;
    std::uint64_t mask = ~0ULL << (from % 64);
    for (std::size_t word = from / 64; word < words; ++word, mask = ~0ULL) {
        for (std::uint64_t hits = by_lat[word] & by_lon[word] & mask; hits != 0; hits &= hits - 1) {
            if (!take(records[word * 64 + static_cast<std::size_t>(__builtin_ctzll(hits))])) return;
        }
    }
}

template <class Take>
void CBoundsIndex::Descending(double lat, double lon, std::size_t from, Take take) const
{
    const std::uint64_t* by_lat = LatStrip(lat);
    const std::uint64_t* by_lon = LonStrip(lon);
    if (by_lat == nullptr || by_lon == nullptr || from >= records.size()) return;
    std::uint64_t mask = ~0ULL >> (63 - from % 64);
    for (std::size_t word = from / 64 + 1; word-- > 0; mask = ~0ULL) {
        for (std::uint64_t hits = by_lat[word] & by_lon[word] & mask; hits != 0;) {
            const int bit = 63 - __builtin_clzll(hits);
            if (!take(records[word * 64 + static_cast<std::size_t>(bit)])) return;
            hits &= ~(1ULL << bit);
        }
    }
}
