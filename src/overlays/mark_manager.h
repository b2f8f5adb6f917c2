#pragma once

#include "core/listener.h"
#include "navdata/data_gps_position.h"
#include "overlays/data_goto_mark.h"
#include "overlays/object_names.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_source.h"

#include <list>
#include <string>

/// The owner of all marks and routes, of their files and of the navigation state; it watches the position for the
/// marks' alarms. Main thread only.
class CMarkManager : public IOverlaySource, public Listener<CDataGPSPosition>, public Listener<COverlayObject> {
public:
    std::list<COverlayMark*> marks;   ///< owned, tombstones included
    std::list<COverlayRoute*> routes; ///< owned, tombstones included
    CDataGotoMark navigation;
    COverlayRoute* route_being_edited = nullptr; ///< takes a waypoint with every tap; null otherwise
    bool marks_modified = false;
    bool routes_modified = false;

    static bool enable_alarm_notifications; ///< setting

    CMarkManager();
    ~CMarkManager() override;
    /// True when both files were read whole.
    bool LoadFromFile();
    /// Writes what changed; the flag of a file that could not be written stays.
    bool SaveIfNeeded();

    COverlayMark& DefaultMark();
    COverlayRoute& DefaultRoute();
    void CreateNewMark(CRastelleView* view, double lat, double lon);
    void CreateNewRoute(ZT_HWND parent);
    void DeleteMark(COverlayMark* mark);
    void DeleteRoute(COverlayRoute* route);
    /// Removes everything, without tombstones.
    void ClearAll();
    std::string DefaultMarkName();
    std::string DefaultRouteName();
    bool alreadyHave(const COverlayMark& mark) const;
    void SetGoto(COverlayMark* mark);
    void SetFollowRoute(COverlayRoute* route);
    void CancelNavigation();
    /// Among the visible routes the one that begins (ends) nearest to the place, within a squared distance in metres.
    COverlayRoute* FindRouteStartingAt(double lat, double lon, double max_distance_squared) const;
    COverlayRoute* FindRouteEndingAt(double lat, double lon, double max_distance_squared) const;

    void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override;
    void OnUpdate(CDataGPSPosition& position) override;
    void OnUpdate(COverlayObject& object) override;
};

extern CMarkManager g_mark_manager;
