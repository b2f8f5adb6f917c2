#pragma once

#include "tools/basemap/free_space.h"
#include "tools/basemap/graticule.h"
#include "tools/basemap/land_mask.h"
#include "tools/basemap/lettering.h"
#include "tools/basemap/places.h"
#include "tools/basemap/sheet_marks.h"

#include <optional>
#include <set>
#include <string>
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
    std::vector<CName> Choose(const std::vector<CPlace>& places, bool great_seas) const;
    void SetAll(const std::vector<CName>& names);
    /// Each sets one name with its rim and answers whether there was a place for it.
    bool SetArea(const CName& name);
    bool SetTown(const CName& name);
    bool SetBeside(const CName& name, const CLettering& look, double radius);
    bool SetSmallDegree(const QString& text, double x, double y);
    /// Where the middle of a name in `box` may stand, within a feature or beside a point of `radius` pixels.
    std::optional<QPointF> FindWithin(const CName& name, const QRectF& box) const;
    std::optional<QPointF> FindBeside(const CName& name, const QRectF& box, double radius) const;
    void Place(const CName& name, const QPainterPath& outline, const QRectF& box, const QPointF& at);
    double ReachOf(const CPlace& place) const; ///< half its extent, pixels

    const CChartSheet& sheet;
    const CLandMask& land;
    CSheetMarks& marks;
    CFreeSpace& space;
    std::set<std::string> countries; ///< whose turn has come
};
