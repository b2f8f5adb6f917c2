#pragma once

#include "core/graphics_color.h"
#include "core/zt_hwnd.h"
#include "overlays/icon_manager.h"
#include "overlays/overlay_object.h"
#include "overlays/syncable.h"

#include <string>

class CMenuTree;
class COverlayRoute;

/// A named point on the chart: a free mark, or a waypoint of a route. Main thread only.
class COverlayMark : public COverlayObject, public CSyncable {
public:
    class cType;
    class CCreatingRoute;

    static constexpr int kTypeId = 20;
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

    /// While set, marks are made and filed as waypoints: without a sync block, after the default route's waypoint. Set
    /// through a CCreatingRoute.
    static bool creating_route;

    /// Copies the look of the default mark, or of the default route's waypoint while a route is created.
    COverlayMark();
    /// The same look and alarms under a fresh name.
    COverlayMark(const COverlayMark& other);
    /// A template of new marks: its look and, as `name`, its name template.
    COverlayMark(const std::string& name_template, const std::string& icon, const GraphicsColor& icon_colour);
    COverlayMark& operator=(const COverlayMark&) = delete;
    ~COverlayMark() override;

    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    bool isVisible() override;
    /// Selects the mark; while waypoints are added to a route, a free mark becomes one of them.
    int onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    int onMouseDown(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    void onMenuDown(ZT_HWND parent) override;
    int onRightClick(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;

    int GetTypeId() const override { return kTypeId; }
    bool Serialize(IOStream& stream) override;
    bool SyncObject(IOStream& stream, double since) override;
    void getLonLatBounds(CBounds& bounds) const override;
    /// Distance and bearing from the reader; empty without a position.
    std::string getSubText(const CSimpleGrid& reader) const override;

    bool HasPosition() const;
    /// The mark's own lock or its route's.
    bool isLocked() const;
    bool isNavigatingToMark() const;
    /// As all that changes a mark but its deletion, to be followed by Dispatch().
    void SetIcon(const std::string& name, const GraphicsColor& new_colour);
    /// Takes the look that new marks get from their template.
    void TakeLook(const COverlayMark& from);
    /// Equal data within two metres; a waypoint compares its position alone.
    bool sameData(const COverlayMark& other) const;
    /// Takes the radii from the numbers of the dialog, metres; switched off, both become 0. An anchor beyond the
    /// proximity gets an upper limit of its own, far out.
    void SetAlarm(bool on, float anchor, float proximity);
    /// Ends the notification that is on show.
    void CancelAlarm();
    /// Leaves a tombstone: id, times and flags.
    void ClearData();

    void EditMarkProperties(ZT_HWND parent);
    /// Adds what the user can do with the mark to a menu.
    void addMenus(CMenuTree& menu, ZT_HWND parent);
    /// Deletes the mark or waypoint, as a rule after a question.
    void onDelete(ZT_HWND parent);

private:
    void LoadIcon() const;
    void AfterReading(double created_in_record);
    void addMarkMenus(CMenuTree& menu, ZT_HWND parent);
    void addWaypointMenus(CMenuTree& menu, ZT_HWND parent);

    mutable const CIconManager::CIconDetails* icon = nullptr; ///< not owned; null until it is drawn
};

/// Marks are made as waypoints for as long as this lives.
class COverlayMark::CCreatingRoute {
public:
    CCreatingRoute() : before(creating_route) { creating_route = true; }
    ~CCreatingRoute() { creating_route = before; }
    CCreatingRoute(const CCreatingRoute&) = delete;
    CCreatingRoute& operator=(const CCreatingRoute&) = delete;

private:
    bool before;
};
