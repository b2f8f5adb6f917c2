#pragma once

#include "cache/test_charts.h"
#include "chart/chart_list.h"
#include "chart/map_types.h"
#include "chartview/rastelle_view.h"
#include "chartview/view_services.h"
#include "core/clock.h"
#include "core/display_metrics.h"
#include "core/folders.h"
#include "core/heartbeat.h"
#include "core/message_sink.h"
#include "support/temporary_root.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

inline double test_now = 1e9;

struct TestHost : IViewHost {
    void InvalidateView() override { ++invalidated; }
    ZT_HWND hWnd() override { return {}; }
    int invalidated = 0;
};

struct TestSink : IMessageSink {
    void Show(ZT_HWND, const std::string& title, const std::string&, std::function<void()>) override { last = title; }
    void Hint(ZT_HWND, const std::string&) override { ++hints; }
    void Status(const std::string&) override {}
    std::string last;
    int hints = 0;
};

/// A catalogue of made-up charts around 0, 0, a clock moved by hand, and one view of 800 x 600.
class ViewTest : public testing::Test {
protected:
    static constexpr double kWidth = 800.0;
    static constexpr double kHeight = 600.0;

    void SetUp() override
    {
        test_now = 1e9;
        SetClock([] { return test_now; });
        SetGraphicsResolution(1.0);
        SetMessageSink(&sink);
        TheViewSettings() = CViewSettings();
        CSelectMapTypes::show = {"Topo"};
    }
    void TearDown() override
    {
        view.reset();
        catalogue.reset();
        p_chart_list = nullptr;
        SetMessageSink(nullptr);
        SetClock(nullptr);
        TheViewSettings() = CViewSettings();
    }
    /// Charts are to be written before.
    void MakeView()
    {
        MakeCatalogue();
        view = std::make_unique<CRastelleView>(&host);
        view->setScreenRect(0.0, 0.0, kWidth, kHeight);
    }
    void MakeCatalogue()
    {
        catalogue = std::make_unique<CChartList>();
        catalogue->Refresh();
        p_chart_list = catalogue.get();
    }
    /// A chart of `tiles` x `tiles` around a position in the catalogue's folder.
    std::string Chart(const char* name, double scale, int tiles = 16, double lat = 0.0, double lon = 0.0)
    {
        std::filesystem::create_directories(getAppDirectory());
        return WriteChart(getAppDirectory() + "/" + name, ChartAt(lat, lon, scale, tiles).Title(name));
    }
    bool Open(const std::string& path)
    {
        bool opened = false;
        view->onOpen(ZT_HWND(), path.c_str(), true, [&opened](bool ok) { opened = ok; });
        return opened;
    }
    void Fix(double lat, double lon)
    {
        CDataGPSPosition position;
        position.latitude = lat;
        position.longitude = lon;
        DispatchToListeners(position);
    }
    void Ticks(int count)
    {
        for (int i = 0; i < count; ++i) view->onTimer();
    }
    std::string Shown() const { return std::filesystem::path(view->CurrentPath()).filename(); }
    /// Where a position is on the screen.
    DblPoint At(double lat, double lon) const
    {
        DblPoint at{-1e9, -1e9};
        view->LatLongToScreen(lat, lon, at.x, at.y);
        return at;
    }
    QImage Paint()
    {
        QImage picture(static_cast<int>(view->Screen().width()), static_cast<int>(view->Screen().height()),
                       QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        QPainter painter(&picture);
        view->onDraw(&painter, 0.0, 0.0, view->Screen().width(), view->Screen().height());
        return picture;
    }

    /// Paints until every square is there. Gives up after a minute.
    QImage PaintLoaded()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        QImage picture = Paint();
        while (std::chrono::steady_clock::now() < end) {
            const bool was_loading = view->IsLoading();
            host.invalidated = 0;
            view->onTimer();
            if (host.invalidated > 0)
                picture = Paint();
            else if (!was_loading)
                break;
            std::this_thread::yield();
        }
        return picture;
    }

    CTemporaryRoot root;
    TestSink sink;
    TestHost host;
    std::unique_ptr<CChartList> catalogue;
    std::unique_ptr<CRastelleView> view;
};
