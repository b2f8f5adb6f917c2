#pragma once

#include "tools/basemap/free_space.h"
#include "tools/basemap/graticule.h"
#include "tools/basemap/land_mask.h"
#include "tools/basemap/places.h"
#include "tools/basemap/sheet_marks.h"

#include <vector>

/// Sets the names of one chart: the important ones first, each where it covers nothing that is set already and crosses
/// as little shore as may be; what finds no place is left out.
class CLabelLayout {
public:
    CLabelLayout(const CChartSheet& sheet, const CLandMask& land, CSheetMarks& marks, CFreeSpace& space);

    /// The seas and oceans that are prominent at this scale: before the compass roses, which have more choice.
    void SetGreatSeas(const std::vector<CPlace>& places);
    /// Everything else.
    void SetNames(const std::vector<CPlace>& places);
    /// Degrees along the lines, over the whole chart, since a window shows only a part of it.
    void SetDegrees(const CGraticule& graticule);

private:
    struct CName;
    void SetAll(std::vector<CName>& names);
    bool SetArea(const CName& name);
    bool SetPoint(const CName& name);
    bool SetSmallDegree(const QString& text, double x, double y);
    std::vector<CName> Choose(const std::vector<CPlace>& places, bool great_seas) const;

    const CChartSheet& sheet;
    const CLandMask& land;
    CSheetMarks& marks;
    CFreeSpace& space;
};
