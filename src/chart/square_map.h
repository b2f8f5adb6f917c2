#pragma once

#include <vector>

struct DIB_square;

/// A grid of cells that keeps its memory from paint to paint.
template <class T>
struct CellGrid {
    int cols = 0;
    int rows = 0;
    std::vector<T> cells; ///< row by row

    void Reset(int new_cols, int new_rows)
    {
        cols = new_cols;
        rows = new_rows;
        cells.assign(static_cast<std::size_t>(cols) * static_cast<std::size_t>(rows), T{});
    }
    bool Has(int col, int row) const { return col >= 0 && col < cols && row >= 0 && row < rows; }
    T& At(int col, int row) { return cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(cols) + col]; }
    const T& At(int col, int row) const
    {
        return cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(cols) + col];
    }
};

/// The picture of the visible grid that one paint makes for itself: which square stands in which cell, at the painted
/// level and at its two neighbours. A cell is 256 x 256 pixels of its level.
struct square_map {
    CellGrid<unsigned char> in_progress;
    CellGrid<DIB_square*> squares;
    CellGrid<DIB_square*> zoomed_in;  ///< next coarser level (level + 1)
    CellGrid<DIB_square*> zoomed_out; ///< next finer level (level - 1)
    int top = 0;                      ///< grid origin in cells
    int left = 0;
    int level = 0;

    enum class Placing { elsewhere, taken, dropped };

    /// Lays the grid over the rectangle from (oy, ox), level coordinates, and clears it. The rectangle is sane: see
    /// CCachedRastelle::Draw.
    void setup(double oy, double ox, double height, double width, int at_level);
    /// Puts a square where it belongs. Of two for one cell the one with the smaller shortfall stays and the other is
    /// invalidated. `taken`: it now fills a cell; `dropped`: it was the one invalidated.
    Placing set(DIB_square* square);
    /// Whether the square lies in the grid at its level; then marks its cell as being read.
    bool MarkInProgress(const DIB_square& square);
    /// Whether the square fills a cell of the grid.
    bool Holds(const DIB_square& square) const;

    /// Cell of `zoomed_in` over a cell of the grid.
    int ParentCol(int col) const { return ((left + col) >> 1) - (left >> 1); }
    int ParentRow(int row) const { return ((top + row) >> 1) - (top >> 1); }

private:
    bool CellOf(const DIB_square& square, int& col, int& row) const;
};
