#pragma once

#include "core/simple_grid.h"

class CChartOutline;

/// A catalogue record in the order of the map list: the settings group "CSortedPointer".
struct CSortedPointer {
    enum SortBy { by_title = 0, by_scale = 1, by_distance = 2 };

    static int sort_by;
    static bool reverse_sort; ///< for the list to apply; operator< is always ascending
    static CSimpleGrid grid;  ///< around the position for by_distance; without an origin that order is by scale

    class Persistant;
    static void SetModified();

    const CChartOutline* outline = nullptr;

    friend bool operator<(const CSortedPointer& a, const CSortedPointer& b);
};
