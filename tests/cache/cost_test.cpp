#include "cached_rastelle_probe.h"
#include "chart/chart_scan.h"
#include "core/folders.h"
#include "support/allocation_counter.h"
#include "support/temporary_root.h"
#include "system_call_counter.h"
#include "test_charts.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include <QPainter>
#include <gtest/gtest.h>

namespace {

/// System calls that a chart may cost in a scan.
constexpr int kMostCallsPerChart = 7;

std::vector<GeoPoint> Ring(int points)
{
    std::vector<GeoPoint> ring;
    for (int i = 0; i < points; ++i) ring.push_back({i % 7 * 0.01, i % 11 * 0.01});
    return ring;
}

TEST(Cost, ChartInAScan)
{
    const CTemporaryRoot root;
    const struct {
        const char* name;
        CChartWriter writer;
    } cases[] = {
        {"bare", ChartAt(0, 0, 1.0)},
        {"texts", ChartAt(0, 0, 1.0).Title("T").Edition("2001").Revision("1/1/2001").Copyright(std::string(900, 'c'))},
        {"outline_beside_the_texts", ChartAt(0, 0, 1.0).Title("T").Outline(Ring(100)).DatumShift(0.1, 0.1)},
        {"outline_longer_than_a_window", ChartAt(0, 0, 1.0).Title("T").Outline(Ring(900)).Edition("2001")},
        {"large_pointer_table", ChartAt(0, 0, 1.0, 60).Title("T").Edition("2001").Outline(Ring(300))},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string folder = root.file(c.name);
        std::filesystem::create_directory(folder);
        constexpr int kCharts = 20;
        const std::string first = WriteChart(folder + "/0.rlt", c.writer);
        for (int i = 1; i < kCharts; ++i) std::filesystem::copy_file(first, folder + "/" + std::to_string(i) + ".rlt");
        CChartScan scan({folder});
        ASSERT_TRUE(scan.Step()); // the folder
        const CSystemCallCounter calls;
        while (scan.Step()) {
        }
        EXPECT_EQ(scan.found.size(), std::size_t{kCharts});
        EXPECT_GE(calls.Count(), 4 * kCharts) << "the calls are really counted";
        EXPECT_LE(calls.Count(), kMostCallsPerChart * kCharts + 1); // and the folder's own close
    }
}

TEST(Cost, PaintWithAllSquaresPresent)
{
    const CTemporaryRoot root;
    const std::string path = WritePatternChart(root.file("pattern.rlt"), 32);
    CCachedRastelle cache;
    cache.Open(ZT_HWND(), path.c_str(), {});
    QImage window(1920, 1080, QImage::Format_RGB32);
    QPainter painter(&window);
    const FRect dest{0, 0, 1920, 1080};
    bool placeholders = false;
    do {
        cache.Draw(&painter, dest, {64.0, 64.0}, 0, placeholders);
        std::this_thread::yield();
    } while (cache.isLoading());
    for (int i = 0; i < 2; ++i) cache.Draw(&painter, dest, {64.0, 64.0}, 0, placeholders);
    const CAllocationCounter allocations;
    const CSystemCallCounter calls;
    for (int i = 0; i < 5; ++i) cache.Draw(&painter, dest, {64.0, 64.0}, 0, placeholders);
    EXPECT_EQ(allocations.Count(), 0U);
    EXPECT_EQ(calls.Count(), 0);
    EXPECT_FALSE(cache.isLoading());
}

} // namespace
