#pragma once

#include "core/listener.h"
#include "core/serializable.h"
#include "navdata/data_gps_position.h"
#include "overlays/data_goto_mark.h"
#include "overlays/object_names.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_source.h"
#include "overlays/tombstones.h"

#include <list>
#include <string>

/// The owner of all marks and routes, of their files and of the navigation state; it watches the position for the
/// marks' alarms. Main thread only.
///
/// It begins to listen with LoadFromFile, so that it can be made before anything else of the program.
class CMarkManager : public IOverlaySource, public Listener<CDataGPSPosition>, public Listener<COverlayObject> {
public:
    std::list<COverlayMark*> marks;   ///< owned, tombstones included
    std::list<COverlayRoute*> routes; ///< owned, tombstones included
    CDataGotoMark navigation;
    COverlayRoute* route_being_edited = nullptr; ///< takes a waypoint with every tap; null otherwise
    const COverlayMark* insert_before = nullptr; ///< where in that route; null: at its end
    bool marks_modified = false;
    bool routes_modified = false;

    // Settings, kept in the group "CMarkManager" with the icons and colours of the templates.
    static bool enable_alarm_notifications;
    static int sync_mode;          ///< what the server is told of the user's choice
    static bool route_create_hint; ///< the hint has still to be shown; so with the next two
    static bool route_hint;
    static bool optimize_route_tip;
    /// To be called after a change of these or of the look of a template: the group is saved with the next saving.
    static void SettingsChanged();

    CMarkManager();
    ~CMarkManager() override;
    /// Reads both files and begins to listen. True when both were read whole; otherwise what could be read is there.
    bool LoadFromFile();
    /// Writes what changed; the flag of a file that could not be written stays. True when nothing is left to be
    /// written.
    bool SaveIfNeeded();
    /// What stands in the files, for reading it from elsewhere: FilesRead() is to follow.
    CSerializable& MarksFile() { return marks_file; }
    CSerializable& RoutesFile() { return routes_file; }
    /// Publishes all objects and takes the navigation up where the files left it.
    void FilesRead();

    /// The templates of what the user makes; the first waypoint of the default route is the one of waypoints.
    COverlayMark& DefaultMark() { return default_mark; }
    COverlayRoute& DefaultRoute() { return default_route; }
    COverlayMark& DefaultWaypoint();
    void EditDefaultMark(ZT_HWND parent);
    void EditDefaultRoute(ZT_HWND parent);
    std::string DefaultMarkName() const;
    std::string DefaultRouteName() const;

    /// At a position (degrees; nothing happens for what is none); selects the mark in the view, which may be null.
    void CreateNewMark(CRastelleView* view, double lat, double lon);
    /// An empty route, to which waypoints are then added.
    void CreateNewRoute(ZT_HWND parent);
    /// The same, with the mark as its first waypoint.
    void CreateRouteFromMark(ZT_HWND parent, COverlayMark& mark);
    /// Leaves a tombstone; a waypoint goes out of its route.
    void DeleteMark(COverlayMark* mark);
    void DeleteRoute(COverlayRoute* route);
    /// Removes everything, without tombstones.
    void ClearAll();
    bool alreadyHave(const COverlayMark& mark) const;
    bool alreadyHave(const COverlayRoute& route) const;
    /// The mark, waypoint or route at that address; null when there is none any more. The address is only compared.
    COverlayMark* Find(const COverlayMark* address) const;
    COverlayRoute* Find(const COverlayRoute* address) const;
    /// Among the visible routes but `except` the one that begins (ends) nearest to the place (degrees), within a
    /// squared distance in metres; null when none does.
    COverlayRoute* FindRouteStartingAt(double lat, double lon, double max_distance_squared,
                                       const COverlayRoute* except = nullptr) const;
    COverlayRoute* FindRouteEndingAt(double lat, double lon, double max_distance_squared,
                                     const COverlayRoute* except = nullptr) const;

    /// A plain go-to. Nothing for a deleted mark or one without a position.
    void SetGoto(COverlayMark* mark);
    /// The leg is picked at the next fix.
    void SetFollowRoute(COverlayRoute* route);
    void CancelNavigation();

    /// From the destructor of a mark or route: nothing must point to it any more.
    void Forget(const COverlayMark& mark);
    void Forget(const COverlayRoute& route);

    void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override;
    /// Navigates, and shows and ends the alarms of marks.
    void OnUpdate(CDataGPSPosition& position) override;
    void OnUpdate(COverlayObject& object) override;

private:
    class Persistant;
    class CListenerPause;
    struct CMarksFile : CSerializable {
        explicit CMarksFile(CMarkManager& owner) : manager(owner) {}
        bool Serialize(IOStream& stream) override;
        CMarkManager& manager;
    };
    struct CRoutesFile : CSerializable {
        explicit CRoutesFile(CMarkManager& owner) : manager(owner) {}
        bool Serialize(IOStream& stream) override;
        CMarkManager& manager;
    };

    COverlayRoute& AddNewRoute();
    void DropRouteBeingEdited();
    void RestoreNavigation();
    template <class T>
    void Prune(std::list<T*>& objects);
    void Publish();
    void UpdateLeg(const CDataGPSPosition& position);
    bool ShouldReverse(const CDataGPSPosition& position) const;
    void CheckAlarms(const CDataGPSPosition& position);
    void CancelAlarms();
    void Navigated(const COverlayObject& object);
    void TargetMoved();
    void AllGone();
    COverlayRoute* FindRouteAt(COverlayMark* (*end)(const COverlayRoute&), double lat, double lon,
                               double max_distance_squared, const COverlayRoute* except) const;

    CMarksFile marks_file;
    CRoutesFile routes_file;
    CTombstoneAges ages;
    // Last, since their destruction asks the manager to forget them.
    COverlayMark default_mark;
    COverlayRoute default_route;
};

extern CMarkManager g_mark_manager;
