#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// While it lives, SIGTERM, SIGINT and SIGHUP end the event loop as quitting does, so that everything is saved.
/// One object per process, made on the main thread after the application object.
class CQuitOnSignals : public QObject {
    Q_OBJECT
public:
    CQuitOnSignals();
    ~CQuitOnSignals() override;

private:
    int handles[2] = {-1, -1}; ///< a socket pair: the signal handler writes, the event loop reads
    std::unique_ptr<QSocketNotifier> notifier;
};
