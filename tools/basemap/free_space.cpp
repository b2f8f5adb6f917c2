#include "tools/basemap/free_space.h"

#include <algorithm>
#include <cmath>

struct CFreeSpace::CCellRange {
    int left, top, right, bottom;
};

CFreeSpace::CFreeSpace(int width, int height)
    : whole(0, 0, width, height)
    , columns(static_cast<int>(width / kCell) + 1)
    , rows(static_cast<int>(height / kCell) + 1)
    , taken(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows))
{}

CFreeSpace::CCellRange CFreeSpace::CellsOf(const QRectF& rect) const
{
    const auto cell = [](double value, int count) {
        return static_cast<int>(std::clamp(std::floor(value / kCell), 0.0, count - 1.0));
    };
    return {cell(rect.left(), columns), cell(rect.top(), rows), cell(rect.right(), columns), cell(rect.bottom(), rows)};
}

bool CFreeSpace::IsFree(const QRectF& rect) const
{
    if (!whole.contains(rect)) return false;
    const CCellRange range = CellsOf(rect);
    for (int row = range.top; row <= range.bottom; ++row) {
        for (int column = range.left; column <= range.right; ++column) {
            const auto& cell = taken[static_cast<std::size_t>(row * columns + column)];
            if (std::any_of(cell.begin(), cell.end(), [&](const QRectF& other) { return other.intersects(rect); }))
                return false;
        }
    }
    return true;
}

void CFreeSpace::Take(const QRectF& rect)
{
    const CCellRange range = CellsOf(rect);
    for (int row = range.top; row <= range.bottom; ++row) {
        for (int column = range.left; column <= range.right; ++column) {
            taken[static_cast<std::size_t>(row * columns + column)].push_back(rect);
        }
    }
}
