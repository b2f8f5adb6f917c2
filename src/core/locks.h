#pragma once

/// The lock types of the program. The distribution's Qt is not instrumented for the thread sanitizer, which then
/// reports races that are none; a build with ZT_STD_LOCKS takes the standard ones.
#ifdef ZT_STD_LOCKS
#include <condition_variable>
#include <mutex>
#include <shared_mutex>

using CMutex = std::mutex;
using CMutexLocker = std::unique_lock<std::mutex>;

class CWaitCondition {
public:
    void wait(CMutex* mutex)
    {
        std::unique_lock lock(*mutex, std::adopt_lock);
        condition.wait(lock);
        lock.release();
    }
    void wakeOne() { condition.notify_one(); }
    void wakeAll() { condition.notify_all(); }

private:
    std::condition_variable condition;
};

class CReadWriteLock {
public:
    void lockForRead() { lock.lock_shared(); }
    void lockForWrite() { lock.lock(); }
    void unlockRead() { lock.unlock_shared(); }
    void unlockWrite() { lock.unlock(); }

private:
    std::shared_mutex lock;
};
#else
#include <QMutex>
#include <QReadWriteLock>
#include <QWaitCondition>

#include <mutex>

using CMutex = QMutex;
using CMutexLocker = std::unique_lock<QMutex>;
using CWaitCondition = QWaitCondition;

class CReadWriteLock {
public:
    void lockForRead() { lock.lockForRead(); }
    void lockForWrite() { lock.lockForWrite(); }
    void unlockRead() { lock.unlock(); }
    void unlockWrite() { lock.unlock(); }

private:
    QReadWriteLock lock;
};
#endif
