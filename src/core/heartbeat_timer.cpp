#include "core/heartbeat_timer.h"

#include "core/heartbeat.h"

RunHeartbeatUntilShutdown::RunHeartbeatUntilShutdown()
{
    startTimer(CHeartbeat::kTickMilliseconds, Qt::CoarseTimer);
}

void RunHeartbeatUntilShutdown::timerEvent(QTimerEvent*)
{
    CHeartbeat::TheHeartbeat.Pulse();
}
