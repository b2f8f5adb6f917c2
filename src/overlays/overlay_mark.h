#pragma once

#include "core/graphics_color.h"
#include "overlays/overlay_object.h"
#include "overlays/syncable.h"

#include <string>

class COverlayRoute;
class QImage;

/// A named point on the chart: a free mark, or a waypoint of a route. Main thread only.
class COverlayMark : public COverlayObject, public CSyncable {
public:
    static constexpr double kNoPosition = 999.0;

    double lat = kNoPosition;       ///< degrees; 999: a cleared object
    double lon = kNoPosition;       ///< degrees
    std::string link;               ///< web link
    COverlayRoute* route = nullptr; ///< the owner of this waypoint; null for a free mark
    bool goto_target = false;       ///< the destination of a go-to
    bool alarm_on = false;          ///< its notification is on show
    GraphicsColor colour;
    std::string icon_name;
    float anchor_radius = 0.0F; ///< metres; the alarm zone begins here
    float alarm_radius = 0.0F;  ///< metres; the alarm zone ends here; 0: no alarm

    /// While set, marks are made as waypoints: without a sync block, after the default route's waypoint.
    static bool creating_route;

    /// Copies the look of the default mark, or of the default route's waypoint while a route is created.
    COverlayMark();
    /// The same look and alarms under a fresh name.
    COverlayMark(const COverlayMark& other);
    ~COverlayMark() override;
    // (overrides of both bases, menus and editing: see the class's owner)

    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    bool isVisible() override;
    /// The mark's own lock or its route's.
    bool isLocked() const;
    void SetIcon(const std::string& name, const GraphicsColor& new_colour);
    /// Equal data within two metres; a waypoint compares its position alone.
    bool sameData(const COverlayMark& other) const;
    /// Takes the radii from the numbers of the dialog, metres; switched off, both become 0.
    void SetAlarm(bool on, float anchor, float proximity);
    /// Leaves a tombstone: id, times and flags.
    void ClearData();
};
