#pragma once

#include "chart/cached_rastelle.h"
#include "core/worker_thread.h"

#include <array>
#include <atomic>
#include <map>
#include <vector>

/// Reads the squares of one chart behind the view.
///
/// Threads: the operations are the main thread's. A square given to PutNeeded belongs to the worker until FilterQueue
/// or GetProcessed hands it back. Two locks, never held together: `mutex` of the pool for `queue`, `done_lock` for
/// `done`.
class CCachedRastelle::CWorker : public CWorkerThread {
public:
    CWorker(CRastelle& chart_to_read, int thread_count);
    /// Joins the threads and frees the squares that are still here.
    ~CWorker() override;

    void PutNeeded(DIB_square* square);
    /// Moves the finished squares to the head of the list.
    void GetProcessed(Dib_List& list);
    /// Marks the cells whose squares are queued or being read; every other queued square goes back, invalid, to the
    /// tail of the list. To be called before GetProcessed: then a square that finishes in between is marked, and
    /// fetched too.
    void FilterQueue(square_map& grid, Dib_List& list);
    bool HasFinished();
    /// Squares that are queued, being read or finished and not fetched.
    int Outstanding() const { return outstanding; }

protected:
    std::unique_ptr<JobData> CreateJobData(int index) override;

private:
    class Job;

    CRastelle& chart;
    std::multimap<std::int32_t, DIB_square*> queue; ///< by chunk key; under `mutex`
    /// What each thread reads. Set under `mutex`; looked at by the main thread for `in_progress`.
    std::array<std::atomic<DIB_square*>, kChunkedThreads> reading = {};
    CMutex done_lock;
    std::vector<DIB_square*> done; ///< under `done_lock`
    int outstanding = 0;           ///< main thread
};
