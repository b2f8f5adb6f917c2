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
        unsigned called_in = 0;       ///< the walk that called it last: one that reconnects itself is not called twice

        void attach(CDataSource& source, void (*call)(void*, void*), void* with, int with_priority);
        void detach();
    };

    CDataSource() = default;
    CDataSource(const CDataSource&) = delete;
    CDataSource& operator=(const CDataSource&) = delete;
    /// Detaches whoever is still attached.
    ~CDataSource();

    /// GPS time minus system time, seconds: every time stamp of the program runs on GPS time.
    static double timestamp_correction;

    /// Calls every subscriber with `data` until one sets `stop`. One and the same Timestamp() holds for the whole walk.
    void Dispatch(void* data);
    /// Seconds since 1970 on GPS time, taken once per dispatch.
    double Timestamp() const;
    void ClearTimestamp() { timestamp = 0.0; }
    bool empty() const { return subscribers.empty(); }

    bool stop = false; ///< set by a callback: the dispatch in progress ends before the next one

    /// Walks the subscribers safely; `visit(callback&)` answers false to end the walk. Used by Dispatch and the
    /// heartbeat.
    template <class Visit>
    void Walk(Visit visit);

    /// Frees a channel without subscribers: at once, or when the dispatch in progress has ended.
    static void Release(CDataSource* source);

private:
    /// One walk in progress. A node that is detached while a walk stands on it moves the walk back to its neighbour.
    struct Cursor {
        CPrioritizedList::Node* at;
        Cursor* outer;
    };

    void Unlink(callback* node);

    mutable double timestamp = 0.0; ///< 0.0: not yet taken
    CPrioritizedList subscribers;
    Cursor* walks = nullptr; ///< innermost walk first
    bool released = false;
    static unsigned last_walk;
};

template <class Visit>
void CDataSource::Walk(Visit visit)
{
    const unsigned walk = ++last_walk;
    Cursor cursor{subscribers.end(), walks};
    walks = &cursor;
    for (;;) {
        cursor.at = cursor.at->next;
        if (subscribers.isEnd(cursor.at)) break;
        auto& node = *static_cast<callback*>(cursor.at);
        if (node.called_in == walk) continue;
        node.called_in = walk;
        if (!visit(node)) break;
    }
    walks = cursor.outer;
    if (released && walks == nullptr) delete this;
}
