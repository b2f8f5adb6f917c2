#include "navdata/feeds/feed_gps_time.h"

#include "core/clock.h"

#include <cmath>

CFeedGPSTime CFeedGPSTime::the_feed;

void CFeedGPSTime::OnUpdate(CDataGPSPosition& position)
{
    const bool real_fix =
        position.status != CDataGPSPosition::kNoFix && position.status != CDataGPSPosition::kSimulated;
    if (!real_fix || !(position.time >= kEarliestDate) || !std::isfinite(position.time)) return;
    const double correction = position.time - GetTimeNow();
    if (std::abs(correction - CDataSource::timestamp_correction) > kSameTime)
        CDataSource::timestamp_correction = correction;
}
