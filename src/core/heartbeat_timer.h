#pragma once

#include <QObject>

/// The clockwork of the heartbeat: pulses it every 100 ms (coarse timer) for as long as the object lives and its
/// thread, the main one, runs its event loop.
class RunHeartbeatUntilShutdown : public QObject {
    Q_OBJECT

public:
    RunHeartbeatUntilShutdown();

protected:
    void timerEvent(QTimerEvent* event) override;
};
