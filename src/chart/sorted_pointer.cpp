#include "chart/sorted_pointer.h"

#include "chart/chart_outline.h"
#include "core/persistant_data.h"

int CSortedPointer::sort_by = CSortedPointer::by_title;
bool CSortedPointer::reverse_sort = false;
CSimpleGrid CSortedPointer::grid;

namespace {

double DistanceToMiddle(const CChartOutline& chart)
{
    const CBounds& bounds = chart.bounds;
    return CSortedPointer::grid.distance((bounds.lat_min + bounds.lat_max) / 2.0,
                                         (bounds.lon_min + bounds.lon_max) / 2.0);
}

/// Charts at the position first, by scale; then the others by their distance.
bool IsNearer(const CChartOutline& a, const CChartOutline& b)
{
    const CSimpleGrid& grid = CSortedPointer::grid;
    const bool a_contains = a.doesContain(grid.origin_lat, grid.origin_lon);
    const bool b_contains = b.doesContain(grid.origin_lat, grid.origin_lon);
    if (a_contains != b_contains) return a_contains;
    return a_contains ? a < b : DistanceToMiddle(a) < DistanceToMiddle(b);
}

} // namespace

bool operator<(const CSortedPointer& a, const CSortedPointer& b)
{
    switch (CSortedPointer::sort_by) {
    case CSortedPointer::by_scale:
        return *a.outline < *b.outline;
    case CSortedPointer::by_distance:
        return CSortedPointer::grid.ready() ? IsNearer(*a.outline, *b.outline) : *a.outline < *b.outline;
    default:
        return a.outline->title < b.outline->title;
    }
}

class CSortedPointer::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CSortedPointer") {}

    void DeclareData() override
    {
        if (!s_saving) {
            // Files of old name the group by the class around it too.
            sort_by = patt->GetInt("CChartOutline::CSortedPointer:sort_by", sort_by);
            reverse_sort = patt->GetInt("CChartOutline::CSortedPointer:reverse_sort", reverse_sort ? 1 : 0) != 0;
        }
        Declare("sort_by", sort_by);
        Declare("reverse_sort", reverse_sort);
    }

    static Persistant group_object;
};

CSortedPointer::Persistant CSortedPointer::Persistant::group_object;

void CSortedPointer::SetModified()
{
    Persistant::group_object.SetModified();
}
