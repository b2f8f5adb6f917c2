#include "chart/bounds_index.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t kBitsPerWord = 64;
/// Degrees by which a record's strips reach beyond its bounds: more than turning a longitude by 360 can round off.
constexpr double kWidening = 1e-6;
/// Beyond this a longitude says nothing about the strip that it is in.
constexpr double kFarthestLongitude = 1e9;
constexpr double kMostLongitudes = CBoundsIndex::kLonStrips - 1;

std::size_t LatNumber(double lat)
{
    const double limited = std::clamp(std::floor(lat) + 90.0, 0.0, double{CBoundsIndex::kLatStrips - 1});
    return static_cast<std::size_t>(limited);
}

std::size_t LonNumber(std::int64_t whole_degrees)
{
    const std::int64_t strip = whole_degrees % CBoundsIndex::kLonStrips;
    return static_cast<std::size_t>(strip < 0 ? strip + CBoundsIndex::kLonStrips : strip);
}

} // namespace

void CBoundsIndex::Reset(std::size_t count)
{
    records.clear();
    records.reserve(count);
    words = (count + kBitsPerWord - 1) / kBitsPerWord;
    lat_bits.assign(kLatStrips * words, 0);
    lon_bits.assign(kLonStrips * words, 0);
}

void CBoundsIndex::Add(const CChartOutline* record, const CBounds& bounds)
{
    const std::size_t word = records.size() / kBitsPerWord;
    const std::uint64_t bit = 1ULL << (records.size() % kBitsPerWord);
    records.push_back(record);
    if (bounds.empty()) return;
    for (std::size_t i = LatNumber(bounds.lat_min - kWidening); i <= LatNumber(bounds.lat_max + kWidening); ++i)
        lat_bits[i * words + word] |= bit;
    const double first = std::floor(bounds.lon_min - kWidening);
    const double last = std::floor(bounds.lon_max + kWidening);
    const bool all = !(last - first < kMostLongitudes) || !(std::abs(first) < kFarthestLongitude);
    const std::int64_t from = all ? 0 : static_cast<std::int64_t>(first);
    const std::int64_t to = all ? kLonStrips - 1 : static_cast<std::int64_t>(last);
    for (std::int64_t i = from; i <= to; ++i) lon_bits[LonNumber(i) * words + word] |= bit;
}

const std::uint64_t* CBoundsIndex::LatStrip(double lat) const
{
    return std::isnan(lat) || records.empty() ? nullptr : &lat_bits[LatNumber(lat) * words];
}

const std::uint64_t* CBoundsIndex::LonStrip(double lon) const
{
    if (!(std::abs(lon) < kFarthestLongitude) || records.empty()) return nullptr;
    return &lon_bits[LonNumber(static_cast<std::int64_t>(std::floor(lon))) * words];
}
