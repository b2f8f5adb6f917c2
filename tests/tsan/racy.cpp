// Two workers of a pool that change one number without a lock: the thread sanitizer has to report it, otherwise the
// silence of the other tests would prove nothing.

#include "core/worker_thread.h"

#include <cstdio>

namespace {

constexpr int kJobs = 10000;

class CRacyPool : public CWorkerThread {
public:
    CRacyPool() : CWorkerThread(0, 2) {}
    ~CRacyPool() override { Shutdown(); }
    int unguarded = 0;

protected:
    class Job : public JobData {
    public:
        explicit Job(CRacyPool& pool) : JobData(&pool), owner(pool) {}
        bool GetNextJob() override { return owner.left > 0 && owner.left-- > 0; }
        void ProcessJob() override { ++owner.unguarded; }

    private:
        CRacyPool& owner;
    };

    std::unique_ptr<JobData> CreateJobData(int) override { return std::make_unique<Job>(*this); }

private:
    int left = kJobs; ///< under the pool's mutex
};

} // namespace

int main()
{
    CRacyPool pool;
    pool.RunJobsUntilIdle();
    std::printf("%d\n", pool.unguarded);
    return 0;
}
