#pragma once

#include <vector>

#include <QRectF>

/// Which parts of a chart are still free of names and signs.
class CFreeSpace {
public:
    CFreeSpace(int width, int height);
    bool IsFree(const QRectF& rect) const;
    void Take(const QRectF& rect);

private:
    struct CCellRange;
    CCellRange CellsOf(const QRectF& rect) const;

    static constexpr double kCell = 128.0;
    QRectF whole;
    int columns;
    int rows;
    std::vector<std::vector<QRectF>> taken; ///< by cell; a rectangle stands in each cell that it touches
};
