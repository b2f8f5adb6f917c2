#include "chart/cached_rastelle.h"

#include "chart/cached_rastelle_worker.h"
#include "chart/rastelle.h"
#include "chart/square_painter.h"
#include "core/message_sink.h"

#include <cmath>
#include <string>

#include <QPainter>

namespace {

/// Chart pixels from which on a position cannot be of any chart; keeps all cell numbers inside an int.
constexpr double kFarthestPixel = 536870912.0;
/// Pixels along the side of the largest area that a painter addresses.
constexpr double kLargestSide = 32767.0;

bool IsPaintable(const FRect& dest, const DblPoint& origin, int level)
{
    return level >= CCachedRastelle::kFinestLevel && level <= CCachedRastelle::kCoarsestLevel &&
           std::abs(origin.x) < kFarthestPixel && std::abs(origin.y) < kFarthestPixel && dest.width() > 0.0 &&
           dest.width() <= kLargestSide && dest.height() > 0.0 && dest.height() <= kLargestSide;
}

} // namespace

CCachedRastelle::CCachedRastelle() = default;

CCachedRastelle::~CCachedRastelle()
{
    Close();
}

int CCachedRastelle::Open(ZT_HWND parent, const char* path, std::function<void(bool)> done)
{
    const std::string new_path = path != nullptr ? path : ""; // may be the text of the chart that is closed next
    Close();
    ClearStatusMessage();
    bool opened = false;
    CRastelle* made = CRastelle::Create(parent, new_path.c_str(), [&opened](CRastelle*, bool ok) { opened = ok; });
    if (opened) {
        chart = made;
        width = chart->width_px;
        height = chart->height_px;
    } else if (made != nullptr) {
        made->Destroy();
    }
    // Last: `done` may open another chart in this very object.
    if (done) done(opened);
    return made != nullptr ? 0 : -1;
}

void CCachedRastelle::Close()
{
    worker.reset();
    squares.Clear();
    map = square_map();
    if (chart != nullptr) chart->Destroy();
    chart = nullptr;
    width = 0;
    height = 0;
}

int CCachedRastelle::Draw(QPainter* painter, const FRect& dest, const DblPoint& origin, int level, bool& placeholders)
{
    placeholders = false;
    if (chart == nullptr || !IsPaintable(dest, origin, level)) {
        painter->fillRect(QRectF(dest.left, dest.top, dest.width(), dest.height()), Qt::white);
        return chart != nullptr ? 1 : 0;
    }
    DblPoint offset;
    PrepareGrid(dest, origin, level, offset);
    PaintSquares(*painter, map, offset, placeholders);
    RequestMissing();
    return 1;
}

void CCachedRastelle::PrepareGrid(const FRect& dest, const DblPoint& origin, int level, DblPoint& offset)
{
    const double ox = std::ldexp(origin.x, -level);
    const double oy = std::ldexp(origin.y, -level);
    offset = {dest.left - ox, dest.top - oy};
    map.setup(oy, ox, dest.height(), dest.width(), level);
    if (!worker) StartWorker();
    worker->FilterQueue(map, squares);
    worker->GetProcessed(squares);
    squares.Populate(map.squares.rows * map.squares.cols * kSquaresPerCell, worker->Outstanding());
    PlaceSquares();
}

void CCachedRastelle::StartWorker()
{
    const bool chunked = CRastelleHeader::IsChunked(chart->header->Family());
    worker = std::make_unique<CWorker>(*chart, chunked ? kChunkedThreads : kFlatThreads);
    worker->Start();
}

void CCachedRastelle::PlaceSquares()
{
    for (DIB_square* square = squares.Head(); square != nullptr;) {
        DIB_square* next = square->older;
        if (map.set(square) == square_map::Placing::taken) squares.MoveToHead(square);
        square = next;
    }
}

void CCachedRastelle::RequestMissing()
{
    for (int row = 0; row < map.squares.rows; ++row) {
        for (int col = 0; col < map.squares.cols; ++col) {
            if (map.squares.At(col, row) != nullptr || map.in_progress.At(col, row) != 0) continue;
            DIB_square* square = squares.Tail();
            // Placed squares stand at the head: with one of them in last place all others are with the worker.
            if (square == nullptr || map.Holds(*square)) return;
            squares.Remove(square);
            square->Claim(static_cast<double>(map.left + col) * DIB_square::kSide,
                          static_cast<double>(map.top + row) * DIB_square::kSide, map.level);
            worker->PutNeeded(square);
        }
    }
}

bool CCachedRastelle::TimerCallback()
{
    return worker && worker->HasFinished();
}

void CCachedRastelle::InvalidateAllDibs()
{
    worker.reset();
    squares.Clear();
    map = square_map();
    if (chart != nullptr) chart->invalidate_read_cache();
    InvalidateView();
}

bool CCachedRastelle::isLoading()
{
    return worker && worker->Outstanding() > 0;
}

double CCachedRastelle::getScaleAt(double x, double y) const
{
    return chart != nullptr ? chart->get_scale(x, y) : 0.0;
}

double CCachedRastelle::getRltScaleAtCenter() const
{
    return getScaleAt(width / 2, height / 2);
}

bool CCachedRastelle::CurrentChartDoesContain(double lat, double lon) const
{
    return chart != nullptr && (chart->doesContain(lat, lon) || chart->doesContain(lat, lon + 360.0) ||
                                chart->doesContain(lat, lon - 360.0));
}
