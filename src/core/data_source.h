#pragma once

#include "core/prioritized_list.h"

/// One publisher channel: calls its subscribers at once, in the publisher's thread. Main thread only, no locks.
///
/// A subscriber may detach itself or any other from inside its callback; a channel whose last listener leaves during
/// its own dispatch is freed when that dispatch has ended.
class CDataSource {
public:
    struct callback : CPrioritizedList::Node {
        void (*function)(void* user, void* data) = nullptr;
        void* user = nullptr;
        CDataSource* owner = nullptr; ///< null while not attached

        void attach(CDataSource& source, void (*call)(void*, void*), void* with, int with_priority);
        void detach();
    };

    /// GPS time minus system time, seconds: every time stamp of the program runs on GPS time.
    static double timestamp_correction;

    /// Calls every subscriber with `data` until one sets `stop`. One and the same Timestamp() holds for the whole walk.
    void Dispatch(void* data);
    /// Seconds since 1970 on GPS time, taken once per dispatch.
    double Timestamp() const;
    void ClearTimestamp() { timestamp = 0.0; }
    bool empty() const { return subscribers.empty(); }

    bool stop = false; ///< set by a callback: the dispatch in progress ends before the next one

    /// Walks the subscribers safely; `visit(callback&)` answers false to end the walk. Used by Dispatch and the heartbeat.
    template <class Visit>
    void Walk(Visit visit);

    /// Frees a channel without subscribers: at once, or when the dispatch in progress has ended.
    static void Release(CDataSource* source);

private:
    struct Cursor; // one walk in progress; detach moves it on
    mutable double timestamp = 0.0; ///< 0.0: not yet taken
    CPrioritizedList subscribers;
    Cursor* walks = nullptr; ///< innermost walk first
    bool released = false;
};
