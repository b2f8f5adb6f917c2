#include "core/worker_thread.h"

#include <algorithm>

QThread_created::QThread_created(std::function<void()> run_this) : function(std::move(run_this))
{
    if (!function) qCritical("a thread without a function");
}

void QThread_created::run()
{
    if (function) function();
    ended.store(true, std::memory_order_release);
}

void QThread_created::Join()
{
    wait();
    (void)ended.load(std::memory_order_acquire);
}

CWorkerThread::CWorkerThread(int mode, int thread_count)
    : threads(static_cast<std::size_t>(std::max(thread_count, 1)))
    , jobs(threads.size())
    , priority(mode < 2 ? QThread::NormalPriority : QThread::LowPriority)
{}

CWorkerThread::~CWorkerThread() = default;

void CWorkerThread::Start()
{
    jobs[0] = CreateJobData(0);
    JobData* data = jobs[0].get();
    threads[0] = std::make_unique<QThread_created>([this, data] { thread_func_first(data); });
    threads[0]->start(priority);
}

void CWorkerThread::RunJobsUntilIdle()
{
    run_until_idle = true;
    jobs[0] = CreateJobData(0);
    thread_func_first(jobs[0].get());
    JoinStarted();
    shutdown = true;
}

void CWorkerThread::Shutdown()
{
    {
        // Under the lock: a thread between its look at the flag and its wait would miss the wake-up.
        const CMutexLocker locker(mutex);
        shutdown = true;
        condition.wakeAll();
    }
    JoinStarted();
}

void CWorkerThread::JoinStarted()
{
    // The first thread fills the other slots, so it is joined before they are looked at.
    for (const auto& thread : threads)
        if (thread) thread->Join();
}

void CWorkerThread::thread_func_first(JobData* data)
{
    if (!startup_in_first_thread()) {
        shutdown = true;
        return;
    }
    for (std::size_t i = 1; i < threads.size(); ++i) {
        jobs[i] = CreateJobData(static_cast<int>(i));
        JobData* own = jobs[i].get();
        threads[i] = std::make_unique<QThread_created>([this, own] { thread_func_jobs(own); });
        threads[i]->start(priority);
    }
    thread_func_jobs(data);
}

void CWorkerThread::thread_func_jobs(JobData* data)
{
    while (!shutdown) {
        {
            const CMutexLocker locker(mutex);
            while (!shutdown && !data->GetNextJob()) {
                if (run_until_idle) return;
                condition.wait(&mutex);
            }
        }
        if (!shutdown) data->ProcessJob();
    }
}
