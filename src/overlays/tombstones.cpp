#include "overlays/tombstones.h"

#include "core/heartbeat.h"
#include "overlays/syncable.h"

#include <cmath>
#include <ctime>

namespace {

constexpr double kDay = 86400.0;
constexpr double kKeptSeconds = 14.0 * kDay;

double Now()
{
    return CHeartbeat::TheHeartbeat.Timestamp();
}

double Uptime()
{
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace

CTombstoneAges::CTombstoneAges() : clock_then(Now()), uptime_then(Uptime()) {}

bool CTombstoneAges::ClockJumped() const
{
    return std::abs((Now() - clock_then) - (Uptime() - uptime_then)) > kDay;
}

bool CTombstoneAges::IsSpent(const CSyncable& object) const
{
    if (!object.deleted) return false;
    if (!object.NeedsSyncToCloud(0.0)) return true;
    return !(object.modified > Now() - kKeptSeconds) && !ClockJumped();
}
