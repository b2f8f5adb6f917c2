#include "cache/test_charts.h"
#include "chart/cached_rastelle.h"
#include "chart/chart_list.h"
#include "chart/chart_scan.h"
#include "chart/rastelle.h"
#include "chart/square_painter.h"
#include "core/folders.h"
#include "ratio.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>

#include <QPainter>
#include <QTemporaryDir>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
constexpr int kCharts = 10000;
constexpr int kPositions = 64;

/// The window, the memory copy of it that is the measure, and a chart larger than it.
struct PaintScene {
    PaintScene()
        : painter(&window)
        , copy(static_cast<std::size_t>(window.sizeInBytes()))
        , thread(std::make_unique<ThreadDataForRead>())
    {
        window.fill(Qt::white);
        cache.Open(ZT_HWND(), WritePatternChart(folder.filePath("pattern.rlt").toStdString(), 72).c_str(), {});
        do {
            Paint();
        } while (cache.isLoading());
        Paint();
    }
    void Paint()
    {
        bool placeholders = false;
        cache.Draw(&painter, {0, 0, kWidth, kHeight}, {64.0, 64.0}, 0, placeholders);
    }
    void Copy() { std::memcpy(copy.data(), window.constBits(), copy.size()); }

    QTemporaryDir folder;
    QImage window{kWidth, kHeight, QImage::Format_RGB32};
    QPainter painter;
    std::vector<unsigned char> copy;
    std::unique_ptr<ThreadDataForRead> thread;
    CCachedRastelle cache;
};

/// A grid at level 1 in which some cells miss their own square and the squares of one neighbouring level are all there.
class FillIn {
public:
    FillIn(PaintScene& paint_scene, int neighbour, bool (*missing)(int col, int row)) : scene(paint_scene)
    {
        map.setup(0.0, 0.0, kHeight, kWidth, 1);
        Add(map.squares, 1, missing);
        Add(neighbour > 1 ? map.zoomed_in : map.zoomed_out, neighbour, [](int, int) { return false; });
        Paint();
    }
    void Paint()
    {
        bool placeholders = false;
        PaintSquares(scene.painter, map, {0.0, 0.0}, placeholders);
    }

private:
    void Add(CellGrid<DIB_square*>& grid, int level, bool (*missing)(int col, int row))
    {
        for (int row = 0; row < grid.rows; ++row) {
            for (int col = 0; col < grid.cols; ++col) {
                if (missing(col, row)) continue;
                squares.push_back(std::make_unique<DIB_square>());
                squares.back()->Claim(col * 256.0, row * 256.0, level);
                squares.back()->Read(*scene.cache.Chart(), scene.thread.get());
                map.set(squares.back().get());
            }
        }
    }

    PaintScene& scene;
    square_map map;
    std::vector<std::unique_ptr<DIB_square>> squares;
};

/// 10,000 charts of all scales all over the world, in one folder.
struct CatalogueScene {
    CatalogueScene()
    {
        SetFolderRoot(root.path().toStdString());
        const std::string folder = getAppDirectory("charts");
        std::filesystem::create_directories(folder);
        std::mt19937 random(3);
        std::uniform_real_distribution<double> lat(-60.0, 60.0);
        std::uniform_real_distribution<double> lon(-180.0, 180.0);
        std::uniform_real_distribution<double> scale_exponent(-3.0, -0.5);
        for (int i = 0; i < kCharts; ++i) {
            const double scale = std::pow(10.0, scale_exponent(random));
            paths.push_back(folder + "/" + std::to_string(i) + ".rlt");
            CChartWriter writer = ChartAt(lat(random), lon(random), scale, 4);
            writer.Title("Chart " + std::to_string(i)).Edition("4/2019").ScaleText("1:20000");
            WriteChart(paths.back(), writer);
        }
        for (int i = 0; i < kPositions; ++i) positions.push_back({lat(random), lon(random)});
        list = std::make_unique<CChartList>();
        list->Refresh();
    }
    void Scan() const
    {
        CChartScan scan({getAppDirectory("charts")});
        while (scan.Step()) {
        }
    }
    void PlainRead() const
    {
        char head[416];
        for (const std::string& path : paths) {
            const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
            if (pread(file, head, sizeof(head), 0) != sizeof(head)) std::abort();
            close(file);
        }
    }
    void AtPositions() const
    {
        std::list<const CChartOutline*> charts;
        for (const DblPoint& at : positions) list->ChartsAt(at.x, at.y, charts);
        hits = charts.size();
    }
    void PlainWalk() const
    {
        std::list<const CChartOutline*> charts;
        for (const DblPoint& at : positions) {
            for (const CChartOutline& chart : list->Outlines())
                if (chart.doesContain(at.x, at.y)) charts.push_back(&chart);
        }
        if (charts.size() != hits) std::abort();
    }

    QTemporaryDir root;
    std::vector<std::string> paths;
    std::vector<DblPoint> positions; ///< x latitude, y longitude
    std::unique_ptr<CChartList> list;
    mutable std::size_t hits = 0;
};

PaintScene& Paints()
{
    static PaintScene scene;
    return scene;
}

FillIn& AllMissing(int neighbour)
{
    static FillIn coarser(Paints(), 2, [](int, int) { return true; });
    static FillIn finer(Paints(), 0, [](int, int) { return true; });
    return neighbour > 1 ? coarser : finer;
}

FillIn& OneOfFourMissing()
{
    static FillIn scattered(Paints(), 2, [](int col, int row) { return col % 2 == 1 && row % 2 == 1; });
    return scattered;
}

CatalogueScene& Catalogue()
{
    static CatalogueScene scene;
    return scene;
}

void CopyWindow()
{
    Paints().Copy();
}

const bool registered = [] {
    RegisterRatio(
        "paint/all_present", [] { Paints().Paint(); }, "memory copy of the window", CopyWindow);
    RegisterRatio(
        "paint/from_coarser_all_empty", [] { AllMissing(2).Paint(); }, "memory copy of the window", CopyWindow);
    RegisterRatio(
        "paint/from_coarser_one_of_four_empty", [] { OneOfFourMissing().Paint(); }, "memory copy of the window",
        CopyWindow);
    RegisterRatio(
        "paint/from_finer", [] { AllMissing(0).Paint(); }, "memory copy of the window", CopyWindow);
    RegisterRatio(
        "catalogue/scan_10000", [] { Catalogue().Scan(); }, "open, pread of 416 bytes, close",
        [] { Catalogue().PlainRead(); });
    RegisterRatio(
        "catalogue/charts_at_a_position", [] { Catalogue().AtPositions(); }, "plain walk of the set",
        [] { Catalogue().PlainWalk(); });
    return true;
}();

} // namespace
