#include "cached_rastelle_probe.h"
#include "chart/rastelle.h"
#include "core/message_sink.h"
#include "support/temporary_root.h"
#include "test_charts.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <thread>

#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr int kTiles = 32;

struct SilentSink : IMessageSink {
    void Show(ZT_HWND, const std::string&, const std::string&, std::function<void()>) override { ++shown; }
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string&) override {}
    int shown = 0;
};

class View : public CCachedRastelle {
public:
    QImage Paint(const FRect& dest, const DblPoint& origin, int level)
    {
        QImage picture(static_cast<int>(dest.right), static_cast<int>(dest.bottom), QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        QPainter painter(&picture);
        result = Draw(&painter, dest, origin, level, placeholders);
        return picture;
    }
    /// Paints until every square is there. Gives up after a minute.
    QImage PaintLoaded(const FRect& dest, const DblPoint& origin, int level)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        QImage picture = Paint(dest, origin, level);
        while (isLoading() && std::chrono::steady_clock::now() < end) {
            if (TimerCallback()) picture = Paint(dest, origin, level);
            std::this_thread::yield();
        }
        return picture;
    }
    void InvalidateView() override { ++invalidated; }

    int result = -1;
    bool placeholders = false;
    int invalidated = 0;
};

/// The window's pixels straight from the chart.
QImage Expected(CRastelle& chart, int w, int h, const DblPoint& origin, int level)
{
    const double factor = std::ldexp(1.0, level);
    const int left = static_cast<int>(std::floor(origin.x / factor / 256.0));
    const int top = static_cast<int>(std::floor(origin.y / factor / 256.0));
    QImage picture(w, h, QImage::Format_RGB32);
    const auto thread = std::make_unique<ThreadDataForRead>();
    std::vector<unsigned> square(256 * 256);
    for (int row = top; (row * 256.0 - origin.y / factor) < h; ++row) {
        for (int col = left; (col * 256.0 - origin.x / factor) < w; ++col) {
            chart.ReadRectRGB(static_cast<int>(col * 256 * factor), static_cast<int>(row * 256 * factor), 256, 256, 256,
                              level, square.data(), thread.get());
            for (int y = 0; y < 256; ++y) {
                for (int x = 0; x < 256; ++x) {
                    const QPoint at(static_cast<int>(col * 256 + x - origin.x / factor),
                                    static_cast<int>(row * 256 + y - origin.y / factor));
                    if (picture.rect().contains(at))
                        picture.setPixel(at, square[static_cast<std::size_t>(y) * 256 + x]);
                }
            }
        }
    }
    return picture;
}

class CachedRastelleTest : public testing::Test {
protected:
    void SetUp() override
    {
        previous_sink = SetMessageSink(&sink);
        path = WritePatternChart(root.file("pattern.rlt"), kTiles);
        ASSERT_FALSE(path.empty());
        view.Open(ZT_HWND(), path.c_str(), {});
        ASSERT_NE(view.Chart(), nullptr);
    }
    void TearDown() override
    {
        view.Close();
        SetMessageSink(previous_sink);
    }

    CTemporaryRoot root;
    SilentSink sink;
    IMessageSink* previous_sink = nullptr;
    std::string path;
    View view;
};

struct PaintCase {
    const char* name;
    DblPoint origin;
    int level;
};

constexpr PaintCase kPaints[] = {
    {"level_0", {100.0, 60.0}, 0},
    {"negative_origin", {-300.0, -10.0}, 0},
    {"beyond_the_far_corner", {1900.0, 1900.0}, 0},
    {"magnified_twice", {321.0, 123.0}, -1},
    {"magnified_four_times_at_negative_origin", {-33.0, 17.0}, -2},
    {"reduced", {128.0, 512.0}, 1},
    {"reduced_three_times_at_negative_origin", {-2048.0, -512.0}, 3},
};

TEST_F(CachedRastelleTest, LoadedPaintShowsTheChartsPixels)
{
    const FRect dest{0, 0, 700, 500};
    for (const PaintCase& c : kPaints) {
        SCOPED_TRACE(c.name);
        const QImage painted = view.PaintLoaded(dest, c.origin, c.level);
        EXPECT_TRUE(painted == Expected(*view.Chart(), 700, 500, c.origin, c.level));
        EXPECT_EQ(view.result, 1);
        EXPECT_FALSE(view.placeholders);
    }
}

TEST_F(CachedRastelleTest, PaintWithAllSquaresPresentNeedsNeitherFileNorWorker)
{
    const FRect dest{0, 0, 700, 500};
    const QImage before = view.PaintLoaded(dest, {64.0, 64.0}, 0);
    // Whatever is decoded from now on comes out blank: a lost file reads as zeros.
    std::filesystem::resize_file(path, 0);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(view.Paint(dest, {64.0, 64.0}, 0) == before);
    EXPECT_FALSE(view.isLoading());
    // Scrolled away and back: the list has not wrapped.
    view.Paint(dest, {600.0, 64.0}, 0);
    EXPECT_TRUE(view.Paint(dest, {64.0, 64.0}, 0) == before);
}

TEST_F(CachedRastelleTest, ZoomStepShowsTheLevelBeforeScaled)
{
    const FRect dest{0, 0, 512, 512};
    const QImage coarse = view.PaintLoaded({0, 0, 256, 256}, {0.0, 0.0}, 1);
    const QImage doubled = view.Paint(dest, {0.0, 0.0}, 0);
    EXPECT_TRUE(doubled == coarse.scaled(512, 512)) << "a step inwards shows the coarser squares";
    const QImage fine = view.PaintLoaded(dest, {0.0, 0.0}, 0);
    EXPECT_TRUE(fine == Expected(*view.Chart(), 512, 512, {0.0, 0.0}, 0));
    view.InvalidateAllDibs();
    view.PaintLoaded(dest, {0.0, 0.0}, 0);
    const QImage halved = view.Paint({0, 0, 256, 256}, {0.0, 0.0}, 1);
    for (const QPoint at : {QPoint(0, 0), QPoint(130, 40), QPoint(250, 255)})
        EXPECT_TRUE(halved.pixel(at) == fine.pixel(at * 2) || halved.pixel(at) == fine.pixel(at * 2 + QPoint(1, 1)));
}

TEST_F(CachedRastelleTest, ParentAtAnOddOriginIsTheRightOne)
{
    view.PaintLoaded({0, 0, 512, 512}, {0.0, 0.0}, 1);                      // chart pixels 0 to 1023
    const QImage doubled = view.Paint({0, 0, 256, 512}, {256.0, 768.0}, 0); // cell column 1, rows 3 and 4
    View other;
    other.Open(ZT_HWND(), path.c_str(), {});
    const QImage coarse = other.PaintLoaded({0, 0, 128, 128}, {256.0, 768.0}, 1);
    EXPECT_TRUE(doubled.copy(0, 0, 256, 256) == coarse.copy(0, 0, 128, 128).scaled(256, 256));
}

TEST_F(CachedRastelleTest, LivingSquaresStayWithinThreeGrids)
{
    const FRect one{0, 0, 256, 256};
    for (int i = 0; i < 40; ++i) {
        view.Paint(one, {i * 1024.0, 0.0}, i % 3);
        EXPECT_EQ(CachedRastelleProbe::LivingSquares(view), 3);
    }
    view.PaintLoaded(one, {0.0, 0.0}, 0);
    EXPECT_EQ(CachedRastelleProbe::Squares(view).Count(), 3);
    view.Paint({0, 0, 512, 512}, {0.0, 0.0}, 0);
    EXPECT_EQ(CachedRastelleProbe::LivingSquares(view), 12);
    view.Paint(one, {0.0, 0.0}, 0);
    EXPECT_EQ(CachedRastelleProbe::LivingSquares(view), 12) << "the list never shrinks while the chart is open";
}

TEST_F(CachedRastelleTest, EachCellIsAskedForOnce)
{
    const FRect dest{0, 0, 1024, 1024};
    view.Paint(dest, {0.0, 0.0}, 0);
    for (int i = 0; i < 200; ++i) view.Paint(dest, {0.0, 0.0}, 0);
    view.PaintLoaded(dest, {0.0, 0.0}, 0);
    int valid = 0;
    for (const DIB_square* s = CachedRastelleProbe::Squares(view).Head(); s != nullptr; s = s->older)
        if (s->level == 0) ++valid;
    EXPECT_EQ(valid, 16);
}

TEST_F(CachedRastelleTest, InvalidatingForgetsAndTellsTheView)
{
    view.PaintLoaded({0, 0, 256, 256}, {0.0, 0.0}, 0);
    view.InvalidateAllDibs();
    EXPECT_EQ(view.invalidated, 1);
    EXPECT_EQ(CachedRastelleProbe::LivingSquares(view), 0);
    EXPECT_FALSE(view.TimerCallback());
    EXPECT_EQ(view.Chart()->width_px, kTiles * kTileSide);
}

TEST_F(CachedRastelleTest, TwoViewsShareOneChartUnderTwoWorkers)
{
    View other;
    other.Open(ZT_HWND(), path.c_str(), {});
    ASSERT_EQ(other.Chart(), view.Chart());
    const FRect dest{0, 0, 1024, 1024};
    view.Paint(dest, {0.0, 0.0}, 0);
    const QImage second = other.PaintLoaded(dest, {512.0, 512.0}, 0);
    const QImage first = view.PaintLoaded(dest, {0.0, 0.0}, 0);
    EXPECT_TRUE(first.copy(512, 512, 512, 512) == second.copy(0, 0, 512, 512));
    view.Close();
    EXPECT_TRUE(other.Paint(dest, {512.0, 512.0}, 0) == second) << "the chart stays for the other view";
}

TEST_F(CachedRastelleTest, UnpaintableRequestsAreWhite)
{
    const struct {
        const char* name;
        FRect dest;
        DblPoint origin;
        int level;
    } cases[] = {
        {"origin_not_a_number", {0, 0, 100, 100}, {NAN, 0.0}, 0},
        {"origin_beyond_any_chart", {0, 0, 100, 100}, {1e300, 0.0}, 0},
        {"level_too_coarse", {0, 0, 100, 100}, {0.0, 0.0}, 7},
        {"level_too_fine", {0, 0, 100, 100}, {0.0, 0.0}, -7},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QImage picture = view.Paint(c.dest, c.origin, c.level);
        EXPECT_EQ(picture.pixel(50, 50), 0xFFFFFFFF);
        EXPECT_EQ(view.result, 1);
    }
    EXPECT_FALSE(CachedRastelleProbe::HasWorker(view));
}

TEST(CachedRastelleWithoutChart, PaintIsAWhiteFillWithoutThreads)
{
    View view;
    const QImage picture = view.Paint({10, 10, 100, 100}, {0.0, 0.0}, 0);
    EXPECT_EQ(view.result, 0);
    EXPECT_EQ(picture.pixel(50, 50), 0xFFFFFFFF);
    EXPECT_EQ(picture.pixel(5, 5), QColor(Qt::magenta).rgb());
    EXPECT_FALSE(CachedRastelleProbe::HasWorker(view));
    EXPECT_EQ(view.getScaleAt(0, 0), 0.0);
    EXPECT_FALSE(view.CurrentChartDoesContain(0, 0));
}

TEST_F(CachedRastelleTest, FailedOpenIsReportedOnceAndLeavesNothingOpen)
{
    const std::string newer = WriteChart(root.file("newer.rlt"), ChartAt(0, 0, 1.0).Version(6));
    ASSERT_FALSE(newer.empty());
    const struct {
        const char* name;
        std::string path;
        int result;
    } cases[] = {
        {"no_such_file", root.file("none.rlt"), -1},
        {"a_folder", root.path(), -1},
        {"newer_version", newer, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        int calls = 0;
        bool told = true;
        EXPECT_EQ(view.Open(ZT_HWND(), c.path.c_str(),
                            [&](bool ok) {
                                ++calls;
                                told = ok;
                            }),
                  c.result);
        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(told);
        EXPECT_EQ(view.Chart(), nullptr);
    }
}

TEST_F(CachedRastelleTest, ChartOpenedFromTheReportOfAFailureStays)
{
    const std::string newer = WriteChart(root.file("newer.rlt"), ChartAt(0, 0, 1.0).Version(6));
    bool reopened = false;
    view.Open(ZT_HWND(), newer.c_str(),
              [&](bool) { view.Open(ZT_HWND(), path.c_str(), [&](bool ok) { reopened = ok; }); });
    EXPECT_TRUE(reopened);
    ASSERT_NE(view.Chart(), nullptr);
    EXPECT_EQ(view.Chart()->path, path);
    EXPECT_EQ(view.width, kTiles * kTileSide);
}

TEST_F(CachedRastelleTest, AChartMayBeReopenedByItsOwnPath)
{
    view.Open(ZT_HWND(), view.Chart()->path.c_str(), {});
    ASSERT_NE(view.Chart(), nullptr);
    EXPECT_EQ(view.Chart()->path, path);
    EXPECT_NEAR(view.getRltScaleAtCenter(), 0.001, 1e-12);
    EXPECT_TRUE(view.CurrentChartDoesContain(50.0, 360.0)) << "once round the world";
}

} // namespace
