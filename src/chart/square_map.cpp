#include "chart/square_map.h"

#include "chart/dib_square.h"

#include <algorithm>
#include <cmath>

namespace {

int CellNumber(double level_coordinate)
{
    return static_cast<int>(std::floor(level_coordinate / DIB_square::kSide));
}

/// Cells from `first` to the one that holds the last pixel of `length` from `start` on.
int CellCount(double start, double length, int first)
{
    return std::max(CellNumber(start + length - 1.0), first) - first + 1;
}

} // namespace

void square_map::setup(double oy, double ox, double height, double width, int at_level)
{
    top = CellNumber(oy);
    left = CellNumber(ox);
    level = at_level;
    const int rows = CellCount(oy, height, top);
    const int cols = CellCount(ox, width, left);
    in_progress.Reset(cols, rows);
    squares.Reset(cols, rows);
    // An odd origin makes the first parent stick out: the count follows from the first and the last parent.
    zoomed_in.Reset(ParentCol(cols - 1) + 1, ParentRow(rows - 1) + 1);
    zoomed_out.Reset(2 * cols, 2 * rows);
}

bool square_map::CellOf(const DIB_square& square, int& col, int& row) const
{
    col = CellNumber(square.x) - left;
    row = CellNumber(square.y) - top;
    return square.level == level && squares.Has(col, row);
}

square_map::Placing square_map::set(DIB_square* square)
{
    if (square->level == level) {
        int col = 0;
        int row = 0;
        if (!CellOf(*square, col, row)) return Placing::elsewhere;
        DIB_square*& cell = squares.At(col, row);
        if (cell != nullptr && cell->shortfall <= square->shortfall) {
            square->Invalidate();
            return Placing::dropped;
        }
        if (cell != nullptr) cell->Invalidate();
        cell = square;
        return Placing::taken;
    }
    const bool coarser = square->level == level + 1;
    if (!coarser && square->level != level - 1) return Placing::elsewhere;
    CellGrid<DIB_square*>& grid = coarser ? zoomed_in : zoomed_out;
    const int col = CellNumber(square->x) - (coarser ? left >> 1 : 2 * left);
    const int row = CellNumber(square->y) - (coarser ? top >> 1 : 2 * top);
    if (grid.Has(col, row)) grid.At(col, row) = square;
    return Placing::elsewhere;
}

bool square_map::MarkInProgress(const DIB_square& square)
{
    int col = 0;
    int row = 0;
    if (!CellOf(square, col, row)) return false;
    in_progress.At(col, row) = 1;
    return true;
}

bool square_map::Holds(const DIB_square& square) const
{
    int col = 0;
    int row = 0;
    return CellOf(square, col, row) && squares.At(col, row) == &square;
}
