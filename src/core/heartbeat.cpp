#include "core/heartbeat.h"

#include "core/clock.h"

#include <cmath>
#include <cstdlib>

CHeartbeat CHeartbeat::TheHeartbeat;

CHeartbeat::Counter::Counter(int ticks) : countdown(ticks), period(ticks)
{
    Connect();
    // Jobs made at the same moment are spread over their period.
    if (period > 0) countdown = (std::rand() & 0x7FFF) % period + 1;
}

void CHeartbeat::Counter::AlignToClock(int ticks_per_second)
{
    if (ticks_per_second == 0) return;
    const double f = ticks_per_second;
    const double position = CHeartbeat::TheHeartbeat.Timestamp() * f;
    countdown = static_cast<int>((position - std::floor(position)) / f * 10.0);
}

void CHeartbeat::Pulse()
{
    CDataSource* channel = Listener<CHeartbeat>::pDatasource;
    if (channel == nullptr) return;
    channel->ClearTimestamp();
    channel->Walk([this](CDataSource::callback& node) {
        auto* listener = static_cast<Listener<CHeartbeat>*>(node.user);
        auto* counter = dynamic_cast<Counter*>(listener);
        if (counter == nullptr) {
            listener->OnUpdate(*this);
            return true;
        }
        if (counter->countdown > 0) --counter->countdown;
        if (counter->countdown <= 0) {
            counter->countdown = counter->period;
            counter->OnHeartbeat();
        }
        return true;
    });
}

double CHeartbeat::Timestamp() const
{
    const CDataSource* channel = Listener<CHeartbeat>::pDatasource;
    return channel != nullptr ? channel->Timestamp() : GetTimeNow() + CDataSource::timestamp_correction;
}
