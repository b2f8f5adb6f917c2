// The tile cache under the thread sanitizer: asks, fetches and looks at squares as paints do, without a painter, since
// the distribution's Qt is not instrumented.

#include "cache/cached_rastelle_probe.h"
#include "cache/test_charts.h"
#include "chart/rastelle.h"
#include "chart/sliced_file.h"

#include <cstdlib>
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>

namespace {

class TemporaryFolder {
public:
    TemporaryFolder() { std::filesystem::create_directory(path); }
    ~TemporaryFolder() { std::filesystem::remove_all(path); }
    const std::string path =
        (std::filesystem::temp_directory_path() / ("zt_tsan_" + std::to_string(getpid()))).string();
};

/// Adds up a pixel of every square that is there.
unsigned Look(const CCachedRastelle& cache)
{
    unsigned sum = 0;
    for (const DIB_square* square : CachedRastelleProbe::Map(cache).squares.cells)
        if (square != nullptr) sum += square->Bits()[1000];
    return sum;
}

TEST(CacheThreads, ScrollingAndZoomingTwoViewsOfOneChart)
{
    const TemporaryFolder folder;
    const std::string path = WritePatternChart(folder.path + "/pattern.rlt", 24);
    CCachedRastelle first;
    CCachedRastelle second;
    first.Open(ZT_HWND(), path.c_str(), {});
    second.Open(ZT_HWND(), path.c_str(), {});
    ASSERT_NE(first.Chart(), nullptr);
    ASSERT_EQ(first.Chart(), second.Chart());
    const FRect window{0, 0, 700, 500};
    unsigned sum = 0;
    for (int i = 0; i < 400; ++i) {
        CachedRastelleProbe::Ask(first, window, {i * 5.0, i * 3.0}, i / 40 % 3);
        CachedRastelleProbe::Ask(second, window, {1500.0 - i * 3.0, 700.0}, i / 25 % 2);
        sum += Look(first) + Look(second);
        if (i % 100 == 99) first.InvalidateAllDibs();
        std::this_thread::yield();
    }
    do {
        CachedRastelleProbe::Ask(second, window, {0.0, 0.0}, 0);
        std::this_thread::yield();
    } while (second.isLoading());
    sum += Look(second);
    EXPECT_NE(sum, 0U);
    first.Close();
    second.Close();
}

TEST(CacheThreads, SlicedFileFromFourThreads)
{
    const TemporaryFolder folder;
    CMultiThreadedSlicedFile file;
    ASSERT_TRUE(file.ReOpen((folder.path + "/slices").c_str(), CFile64::read_write));
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id) {
        threads.emplace_back([&file, id] {
            for (int i = 0; i < 200; ++i) {
                const long position = file.AllocAtEnd2(sizeof(int), 8);
                int back = -1;
                EXPECT_TRUE(file.LockedWrite(position, &id, sizeof(id)));
                EXPECT_EQ(file.LockedRead(position, &back, sizeof(back)), int{sizeof(back)});
                EXPECT_EQ(back, id);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
}

} // namespace
