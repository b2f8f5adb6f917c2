// Two workers of a pool that change one number without a lock: the thread sanitizer has to report it, otherwise the
// silence of the other tests would prove nothing.

#include "core/worker_thread.h"

#include <atomic>
#include <cstdio>
#include <thread>

namespace {

constexpr int kWorkers = 2;
constexpr int kSteps = 10000;

class CRacyPool : public CWorkerThread {
public:
    CRacyPool() : CWorkerThread(0, kWorkers) {}
    ~CRacyPool() override { Shutdown(); }
    int unguarded = 0;

protected:
    class Job : public JobData {
    public:
        explicit Job(CRacyPool& pool) : JobData(&pool), owner(pool) {}
        bool GetNextJob() override { return owner.left > 0 && owner.left-- > 0; }
        /// Waits until both workers are here, by a relaxed counter that orders nothing: whichever way the machine
        /// schedules them, neither increment happens before the other.
        void ProcessJob() override
        {
            owner.arrived.fetch_add(1, std::memory_order_relaxed);
            while (owner.arrived.load(std::memory_order_relaxed) < kWorkers) std::this_thread::yield();
            for (int step = 0; step < kSteps; ++step) ++owner.unguarded;
        }

    private:
        CRacyPool& owner;
    };

    std::unique_ptr<JobData> CreateJobData(int) override { return std::make_unique<Job>(*this); }

private:
    int left = kWorkers; ///< under the pool's mutex
    std::atomic<int> arrived{0};
};

} // namespace

int main()
{
    CRacyPool pool;
    pool.RunJobsUntilIdle();
    std::printf("%d\n", pool.unguarded);
    return 0;
}
