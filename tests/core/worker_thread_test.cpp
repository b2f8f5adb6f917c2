#include "core/worker_thread.h"

#include <numeric>

#include <gtest/gtest.h>

namespace {

/// Adds up numbers. The sums of the threads are read without a lock after the join: a race would be seen there.
class CAdder : public CWorkerThread {
public:
    CAdder(int thread_count, int job_count)
        : CWorkerThread(2, thread_count), waiting(job_count), sums(static_cast<std::size_t>(thread_count))
    {}
    ~CAdder() override { Shutdown(); }

    void Add(int count)
    {
        const CMutexLocker locker(mutex);
        waiting += count;
        condition.wakeAll();
    }
    void WaitUntilDone(int count)
    {
        const CMutexLocker locker(mutex);
        while (done < count) finished.wait(&mutex);
    }
    long Total() const { return std::accumulate(sums.begin(), sums.end(), 0L); }
    int Made() const { return made; }
    bool starts = true;

protected:
    class CData : public JobData {
    public:
        CData(CAdder* adder, int index)
            : JobData(adder), owner(adder), sum(adder->sums[static_cast<std::size_t>(index)])
        {}
        bool GetNextJob() override
        {
            if (owner->waiting == 0) return false;
            number = owner->waiting--;
            return true;
        }
        void ProcessJob() override
        {
            sum += number;
            const CMutexLocker locker(owner->mutex);
            ++owner->done;
            owner->finished.wakeAll();
        }

    private:
        CAdder* owner;
        long& sum;
        int number = 0;
    };
    std::unique_ptr<JobData> CreateJobData(int index) override
    {
        ++made;
        return std::make_unique<CData>(this, index);
    }
    bool startup_in_first_thread() override { return starts; }

private:
    int waiting;
    int done = 0;
    std::atomic<int> made{0};
    std::vector<long> sums;
    CWaitCondition finished;
};

} // namespace

TEST(WorkerThread, RunsUntilIdleOnTheCallingThreadToo)
{
    for (const int threads : {1, 2, 5}) {
        CAdder adder(threads, 1000);
        adder.RunJobsUntilIdle();
        EXPECT_EQ(adder.Total(), 500500) << threads;
        EXPECT_EQ(adder.Made(), threads);
        EXPECT_TRUE(adder.IsShutdown());
    }
}

TEST(WorkerThread, WaitsForWorkAndEndsAtShutdown)
{
    CAdder adder(4, 0);
    adder.Start();
    adder.Add(100);
    adder.WaitUntilDone(100);
    adder.Add(10);
    adder.WaitUntilDone(110);
    adder.Shutdown();
    EXPECT_EQ(adder.Total(), 5050 + 55);
    adder.Shutdown();
}

TEST(WorkerThread, ShutdownRightAfterTheStartNeverHangs)
{
    for (int i = 0; i < 200; ++i) {
        CAdder adder(4, 0);
        adder.Start();
    }
}

TEST(WorkerThread, FailedStartUpStartsNoFurtherThread)
{
    CAdder adder(4, 10);
    adder.starts = false;
    adder.RunJobsUntilIdle();
    EXPECT_TRUE(adder.IsShutdown());
    EXPECT_EQ(adder.Made(), 1);
    EXPECT_EQ(adder.Total(), 0);
}

TEST(WorkerThread, CreatedThreadJoinsAlsoWhenNeverStarted)
{
    int ran = 0;
    QThread_created never([&] { ++ran; });
    never.Join();
    QThread_created once([&] { ++ran; });
    once.start();
    once.Join();
    EXPECT_EQ(ran, 1);
}
