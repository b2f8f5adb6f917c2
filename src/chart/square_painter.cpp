#include "chart/square_painter.h"

#include "chart/dib_square.h"
#include "chart/square_scaling.h"

#include <QPainter>

namespace {

constexpr int kHalfSide = DIB_square::kSide / 2;
constexpr int kCellsPerParent = 4;
/// Scaled squares are painted in strips of so many rows, which stay in the nearest caches in between.
constexpr int kStripRows = 4;
constexpr int kHalvedRows = 64;

class GridPainter {
public:
    GridPainter(QPainter& to, const square_map& grid, const DblPoint& paint_offset)
        : painter(to), map(grid), offset(paint_offset)
    {}

    /// The four cells under the coarser cell (parent_col, parent_row). True when a square stands in for missing data.
    bool PaintFamily(int parent_col, int parent_row)
    {
        DIB_square* parent = map.zoomed_in.At(parent_col, parent_row);
        if (parent != nullptr && EmptyCells(parent_col, parent_row) == kCellsPerParent) {
            DrawWhole(*parent, parent_col, parent_row);
            return false;
        }
        const int covered = parent != nullptr ? LastEmpty(parent_col, parent_row) + 1 : 0;
        bool placeholder = false;
        for (int i = 0; i < kCellsPerParent; ++i) {
            int col = 0;
            int row = 0;
            if (!CellUnder(parent_col, parent_row, i, col, row)) continue;
            DIB_square* own = map.squares.At(col, row);
            placeholder = placeholder || (own != nullptr && own->placeholder);
            if (i < covered) {
                DrawQuarter(*parent, i, col, row);
            } else if (own != nullptr) {
                painter.drawPixmap(CellOrigin(col, row), own->Pixmap());
            } else {
                DrawFiner(col, row);
            }
        }
        return placeholder;
    }

private:
    /// Cell number `i` of a family, row by row; false when it lies outside the grid.
    bool CellUnder(int parent_col, int parent_row, int i, int& col, int& row) const
    {
        col = ((map.left >> 1) + parent_col) * 2 + i % 2 - map.left;
        row = ((map.top >> 1) + parent_row) * 2 + i / 2 - map.top;
        return map.squares.Has(col, row);
    }

    int LastEmpty(int parent_col, int parent_row) const
    {
        int last = -1;
        for (int i = 0; i < kCellsPerParent; ++i) {
            int col = 0;
            int row = 0;
            if (CellUnder(parent_col, parent_row, i, col, row) && map.squares.At(col, row) == nullptr) last = i;
        }
        return last;
    }

    int EmptyCells(int parent_col, int parent_row) const
    {
        int empty = 0;
        for (int i = 0; i < kCellsPerParent; ++i) {
            int col = 0;
            int row = 0;
            if (CellUnder(parent_col, parent_row, i, col, row) && map.squares.At(col, row) == nullptr) ++empty;
        }
        return empty;
    }

    QPointF CellOrigin(int col, int row) const
    {
        return {offset.x + static_cast<double>(map.left + col) * DIB_square::kSide,
                offset.y + static_cast<double>(map.top + row) * DIB_square::kSide};
    }

    /// Draws the coarser square over all its cells.
    void DrawWhole(const DIB_square& parent, int parent_col, int parent_row)
    {
        static QImage strip(2 * DIB_square::kSide, kStripRows, QImage::Format_RGB32);
        int col = 0;
        int row = 0;
        CellUnder(parent_col, parent_row, 0, col, row);
        DrawDoubled(parent.Bits(), DIB_square::kSide, CellOrigin(col, row), strip);
    }

    /// Draws quarter `i` of the coarser square over the whole cell.
    void DrawQuarter(const DIB_square& parent, int i, int col, int row)
    {
        static QImage strip(DIB_square::kSide, kStripRows, QImage::Format_RGB32);
        const int first = (i / 2) * kHalfSide * DIB_square::kSide + (i % 2) * kHalfSide;
        DrawDoubled(parent.Bits() != nullptr ? parent.Bits() + first : nullptr, kHalfSide, CellOrigin(col, row), strip);
    }

    /// Draws a part of a square, as high as it is wide, at twice its size; nothing without a source.
    void DrawDoubled(const std::uint32_t* source, int width, const QPointF& origin, QImage& strip)
    {
        if (source == nullptr) return;
        for (int y = 0; y < 2 * width; y += kStripRows) {
            DoubleRows(source + y / 2 * DIB_square::kSide, width, kStripRows / 2, Pixels(strip));
            painter.drawImage(origin + QPointF(0, y), strip);
        }
    }

    void DrawFiner(int col, int row)
    {
        for (int i = 0; i < kCellsPerParent; ++i) {
            const DIB_square* finer = map.zoomed_out.At(2 * col + i % 2, 2 * row + i / 2);
            if (finer != nullptr && finer->Bits() != nullptr)
                DrawHalved(*finer, CellOrigin(col, row) + QPointF((i % 2) * kHalfSide, (i / 2) * kHalfSide));
        }
    }

    void DrawHalved(const DIB_square& finer, const QPointF& origin)
    {
        static QImage strip(kHalfSide, kHalvedRows, QImage::Format_RGB32);
        for (int y = 0; y < kHalfSide; y += kHalvedRows) {
            HalveRows(finer.Bits() + 2 * y * DIB_square::kSide, kHalvedRows, Pixels(strip));
            painter.drawImage(origin + QPointF(0, y), strip);
        }
    }

    /// For writing; a painter that still holds the image's last content keeps it.
    static std::uint32_t* Pixels(QImage& image) { return reinterpret_cast<std::uint32_t*>(image.bits()); }

    QPainter& painter;
    const square_map& map;
    DblPoint offset;
};

} // namespace

void PaintSquares(QPainter& painter, const square_map& map, const DblPoint& offset, bool& placeholders)
{
    GridPainter grid(painter, map, offset);
    for (int row = 0; row < map.zoomed_in.rows; ++row) {
        for (int col = 0; col < map.zoomed_in.cols; ++col) {
            if (grid.PaintFamily(col, row)) placeholders = true;
        }
    }
}
