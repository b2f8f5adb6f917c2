#include "chart/cached_rastelle_worker.h"

#include "chart/rastelle.h"

namespace {

/// Normal priority: the picture is what the user waits for.
constexpr int kWorkerMode = 1;

} // namespace

/// One reading thread.
class CCachedRastelle::CWorker::Job : public CWorkerThread::JobData {
public:
    Job(CWorker& squares_worker, std::atomic<DIB_square*>& current_square)
        : JobData(&squares_worker), owner(squares_worker), current(current_square)
    {}

    bool GetNextJob() override
    {
        if (owner.queue.empty()) return false;
        const auto first = owner.queue.begin();
        current.store(first->second, std::memory_order_release);
        owner.queue.erase(first);
        return true;
    }

    void ProcessJob() override
    {
        DIB_square* square = current.load(std::memory_order_relaxed);
        square->Read(owner.chart, &thread_data);
        const CMutexLocker lock(owner.done_lock);
        owner.done.push_back(square);
        current.store(nullptr, std::memory_order_release);
    }

private:
    CWorker& owner;
    std::atomic<DIB_square*>& current;
    ThreadDataForRead thread_data;
};

CCachedRastelle::CWorker::CWorker(CRastelle& chart_to_read, int thread_count)
    : CWorkerThread(kWorkerMode, thread_count), chart(chart_to_read)
{}

CCachedRastelle::CWorker::~CWorker()
{
    Shutdown();
    for (const auto& [key, square] : queue) delete square;
    for (DIB_square* square : done) delete square;
}

std::unique_ptr<CWorkerThread::JobData> CCachedRastelle::CWorker::CreateJobData(int index)
{
    return std::make_unique<Job>(*this, reading[static_cast<std::size_t>(index)]);
}

void CCachedRastelle::CWorker::PutNeeded(DIB_square* square)
{
    ++outstanding;
    const CMutexLocker lock(mutex);
    queue.emplace(square->ChunkKey(), square);
    condition.wakeOne();
}

void CCachedRastelle::CWorker::FilterQueue(square_map& grid, Dib_List& list)
{
    const CMutexLocker lock(mutex);
    for (auto entry = queue.begin(); entry != queue.end();) {
        DIB_square* square = entry->second;
        if (grid.MarkInProgress(*square)) {
            ++entry;
            continue;
        }
        entry = queue.erase(entry);
        square->Invalidate();
        list.PushTail(square);
        --outstanding;
    }
    for (const auto& current : reading) {
        const DIB_square* square = current.load(std::memory_order_acquire);
        if (square != nullptr) grid.MarkInProgress(*square);
    }
}

void CCachedRastelle::CWorker::GetProcessed(Dib_List& list)
{
    const CMutexLocker lock(done_lock);
    for (DIB_square* square : done) list.PushHead(square);
    outstanding -= static_cast<int>(done.size());
    done.clear();
}

bool CCachedRastelle::CWorker::HasFinished()
{
    const CMutexLocker lock(done_lock);
    return !done.empty();
}
