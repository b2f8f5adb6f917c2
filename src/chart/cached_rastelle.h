#pragma once

#include "chart/dib_list.h"
#include "chart/square_map.h"
#include "core/geometry.h"
#include "core/zt_hwnd.h"

#include <functional>
#include <memory>

class CRastelle;
class QPainter;

/// Finished 256 x 256 squares of one chart: painted at once, decoded behind.
///
/// Level L is a reduction by 2^L (negative: magnification by 2^-L); chart pixel p has the level coordinate p / 2^L. A
/// paint shows what is there, fills gaps from the neighbouring levels and asks the worker for the rest.
///
/// Threads: main thread only, pixmaps included. A square is in the hands of one thread at a time: of the worker's from
/// the moment it is asked for until it comes back through the worker's done list.
class CCachedRastelle {
public:
    CCachedRastelle();
    CCachedRastelle(const CCachedRastelle&) = delete;
    CCachedRastelle& operator=(const CCachedRastelle&) = delete;
    virtual ~CCachedRastelle();

    /// Closes the chart before and opens the one of `path`. `done` is called exactly once, when this object is ready to
    /// be used or to open another chart from inside the call. 0, or -1 when the file is no chart; a chart that
    /// could not be opened is given back at once.
    int Open(ZT_HWND parent, const char* path, std::function<void(bool)> done);
    /// Waits for the squares that are being read, then lets chart and squares go.
    void Close();

    /// Paints `dest` (view pixels) with the chart from `origin` (chart pixels at its top left) on. Never decodes or
    /// reads a file; squares at the rim reach beyond `dest`. Returns 0 without a chart, otherwise 1; `placeholders`
    /// tells whether a square stands in for missing data.
    int Draw(QPainter* painter, const FRect& dest, const DblPoint& origin, int level, bool& placeholders);
    /// Whether finished squares wait for a paint.
    bool TimerCallback();
    /// Forgets all squares and what the chart itself has cached, then invalidates the view.
    void InvalidateAllDibs();

    /// Whether squares are asked for or being read.
    bool isLoading();
    /// Nautical miles per chart pixel at a chart pixel; 0 without a chart.
    double getScaleAt(double x, double y) const;
    double getRltScaleAtCenter() const;
    bool CurrentChartDoesContain(double lat, double lon) const;
    /// The open chart, null without one.
    CRastelle* Chart() const { return chart; }

    static constexpr int kFlatThreads = 1;
    static constexpr int kChunkedThreads = 4;
    /// Squares that live for each cell of the visible grid.
    static constexpr int kSquaresPerCell = 3;
    /// Zoom levels that can be painted; others show white.
    static constexpr int kFinestLevel = -6;
    static constexpr int kCoarsestLevel = 6;

    int width = 0;  ///< chart pixels
    int height = 0; ///< chart pixels

protected:
    /// What is shown is out of date: the view has to paint again.
    virtual void InvalidateView() {}

private:
    class CWorker;
    friend struct CachedRastelleProbe; // tests look at the lists

    /// Lays the grid and fills its cells with what is there. `offset` leads from level coordinates to view pixels.
    void PrepareGrid(const FRect& dest, const DblPoint& origin, int level, DblPoint& offset);
    void StartWorker();
    void PlaceSquares();
    /// Asks for the cells that are neither there nor being read, as far as squares are free.
    void RequestMissing();

    CRastelle* chart = nullptr;
    square_map map;
    Dib_List squares;
    std::unique_ptr<CWorker> worker; ///< from the first paint until Close or InvalidateAllDibs
};
