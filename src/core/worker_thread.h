#pragma once

#include "core/locks.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include <QThread>

/// A thread that runs one function; an empty function is an error.
class QThread_created : public QThread {
public:
    explicit QThread_created(std::function<void()> function);
    /// Waits for the end of run(); a thread that was never started counts as ended.
    void Join();

protected:
    void run() override;

private:
    std::function<void()> function;
    std::atomic<bool> ended{false}; ///< released at the end of run, acquired by Join: what run wrote is then visible
};

/// A small pool of threads driven by job-data objects. GetNextJob runs under `mutex` and must be short; ProcessJob runs
/// outside it. A client that adds work wakes the waiters itself, and calls Shutdown before the object dies.
class CWorkerThread {
public:
    class JobData {
    public:
        explicit JobData(CWorkerThread* owner) : worker(owner) {}
        virtual ~JobData() = default;
        /// Takes a job; false when there is nothing to do. Called with the mutex held.
        virtual bool GetNextJob() = 0;
        virtual void ProcessJob() = 0;

    protected:
        CWorkerThread* worker;
    };

    /// `mode` below 2 runs at normal priority, otherwise low.
    CWorkerThread(int mode, int threads);
    CWorkerThread(const CWorkerThread&) = delete;
    CWorkerThread& operator=(const CWorkerThread&) = delete;
    virtual ~CWorkerThread();

    void Start();
    /// Works on the calling thread too and returns when every thread found nothing more to do.
    void RunJobsUntilIdle();
    /// Wakes and joins every started thread; a job under way runs to its end.
    void Shutdown();
    bool IsShutdown() const { return shutdown; }

protected:
    /// The job data of thread `index`; owned by the pool until its end.
    virtual std::unique_ptr<JobData> CreateJobData(int index) = 0;
    /// Runs in the first thread before any other starts; false ends the pool.
    virtual bool startup_in_first_thread() { return true; }

    std::atomic<bool> shutdown{false};
    std::atomic<bool> run_until_idle{false};
    CMutex mutex;
    CWaitCondition condition;

private:
    void thread_func_first(JobData* data);
    void thread_func_jobs(JobData* data);
    void JoinStarted();

    std::vector<std::unique_ptr<QThread_created>> threads; ///< one slot a thread, filled when started
    std::vector<std::unique_ptr<JobData>> jobs;
    QThread::Priority priority;
};
