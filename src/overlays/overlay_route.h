#pragma once

#include "core/simple_grid.h"
#include "core/zt_hwnd.h"
#include "overlays/line_appearance.h"
#include "overlays/overlay_object.h"
#include "overlays/syncable.h"

#include <list>
#include <vector>

class CMenuTree;
class COverlayMark;
class COverlayTrack;
class CPolyline;

/// An ordered list of waypoints. Main thread only.
class COverlayRoute : public COverlayObject, public CSyncable, public CLineAppearance {
public:
    class cType;

    static constexpr int kTypeId = 40;

    /// One usable leg in the plane of `grid`; lengths in metres.
    struct segment {
        COverlayMark* to = nullptr; ///< the waypoint at its end
        double dir_x = 0.0;         ///< unit vector
        double dir_y = 0.0;
        double start_x = 0.0;
        double start_y = 0.0;
        double end_x = 0.0;
        double end_y = 0.0;
        double length = 0.0;
        double perp_squared = 0.0; ///< squared distance of the boat from the line of the leg, once past_start
        double remaining = 0.0;    ///< length of the route behind this leg
        bool past_start = false;   ///< the boat has passed the plane that bisects the turn at the leg's start

        /// False, and then not to be used, for a leg of 3 metres or less.
        bool init(const DblPoint& start, COverlayMark& end_mark, const DblPoint& end);
        /// Places the boat, (x, y), against the leg. `previous` is the leg before this one; null for the first.
        void compute(double x, double y, const segment* previous);
    };

    /// What FindNearestLeg finds.
    struct CLeg {
        COverlayMark* from = nullptr;     ///< null: the boat is still before the first leg
        COverlayMark* to = nullptr;       ///< the waypoint to steer for
        COverlayMark* after_to = nullptr; ///< the one behind it; null at the end
        double remaining = 0.0;           ///< metres of the route behind `to`
    };

    std::list<COverlayMark*> waypoints; ///< owned, in sailing order
    bool following = false;
    std::vector<segment> segments; ///< empty: not computed
    CSimpleGrid grid;              ///< the plane of the segments

    /// Looks like the default route.
    COverlayRoute();
    /// A template of new routes: a name template and a look. Takes over the template of new waypoints.
    COverlayRoute(const std::string& name_template, COverlayMark* waypoint);
    COverlayRoute(const COverlayRoute&) = delete;
    COverlayRoute& operator=(const COverlayRoute&) = delete;
    ~COverlayRoute() override;

    /// Publishes the route and then each waypoint. kChanged also forgets the segments.
    void Dispatch(update_action new_action);
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    bool isVisible() override { return visible; }
    /// While waypoints are added to the route, adds one at the place.
    int onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place) override;
    void onMenuDown(ZT_HWND parent) override;

    int GetTypeId() const override { return kTypeId; }
    bool Serialize(IOStream& stream) override;
    bool SyncObject(IOStream& stream, double since) override;
    void getLonLatBounds(CBounds& bounds) const override;
    /// The length, the number of waypoints, and where the route begins from the reader.
    std::string getSubText(const CSimpleGrid& reader) const override;

    // Geometry.
    double getTotalLengthMeters() const;
    /// Makes the segments anew and gives their number. Waypoints without a position are left out.
    int InitSegments();
    void ClearSegments() { segments.clear(); }
    /// Metres, over the segments; 0 without any.
    double TotalLengthofSegments() const;
    /// Metres from the start of the route; 0 for a mark that no leg ends at.
    double getDistanceUpToWaypoint(const COverlayMark& mark);
    /// The first waypoint that has a position; null without one.
    COverlayMark* FirstWaypoint() const;
    /// Null at the ends, and for a mark of another route.
    COverlayMark* getWaypointBefore(const COverlayMark& mark) const;
    COverlayMark* getWaypointAfter(const COverlayMark& mark) const;
    void GetVertices(CPolyline& line) const;
    /// The leg that a boat at the position (degrees) is on. Geometry alone decides, so that skipped and revisited
    /// waypoints need no history. False without a leg.
    bool FindNearestLeg(double lat, double lon, CLeg& leg);

    // Editing.
    /// Puts the waypoint, which becomes the route's, before `before`; null or another route's: at the end.
    void InsertWaypoint(COverlayMark* waypoint, const COverlayMark* before);
    /// Every tap now adds a waypoint behind `mark`; null or another route's: at the end.
    void InsertWPAfter(const COverlayMark* mark);
    /// Ends the adding of waypoints, if it goes on.
    static void onDoneButton(void*);
    /// The same, and takes the button away, if it is this route that waypoints are added to.
    void EndAddingWaypoints();
    /// Makes a waypoint where waypoints are being added and selects it in the view, which may be null.
    COverlayMark* AddWaypoint(double lat, double lon, CRastelleView* view, const FPoint& screen, const DblPoint& place);
    /// The same at a mark, whose texts it takes; an unlocked mark is deleted.
    void AddWaypointFromMark(COverlayMark& mark, CRastelleView* view, const FPoint& screen, const DblPoint& place);
    /// A route of one or two waypoints is deleted whole.
    void DeleteWaypoint(COverlayMark* mark);
    void ReverseWaypoints();
    /// What lies behind the waypoint becomes a route of its own; the waypoint is in both.
    void SplitRoute(COverlayMark* at);
    /// Appends the other route without its first waypoint, and deletes it.
    void JoinRoute(COverlayRoute* other);
    /// Adds every waypoint as a point without time.
    void ConvertToTrack(COverlayTrack& track) const;
    /// Makes a track beside the route, and hides the route.
    void ConvertToTrack();
    /// Gives all waypoints the icon and colour of the mark and, when it has a name, names by that template. Dispatch()
    /// is to follow, as with SetNameFromEndWaypoints().
    void SetAllWaypointsLike(const COverlayMark& mark);
    /// "%R" in the template is the route's name, the last "#" the number from 1 on, which otherwise comes behind.
    void NameAllWaypoints(const std::string& name_template);
    void SetNameFromEndWaypoints();
    /// Equal texts and waypoints.
    bool sameData(const COverlayRoute& other) const;
    /// Leaves a tombstone: id, times and flags.
    void ClearData();

    void EditRouteProperties(ZT_HWND parent);
    /// Adds what the user can do with the route to a menu.
    void addMenus(CMenuTree& menu, ZT_HWND parent);
    /// The part of it that a waypoint's menu has too.
    void addRouteMenus(CMenuTree& menu, ZT_HWND parent);
    /// Offers to join the route with one that begins or ends at this waypoint of its.
    void addJoinMenu(CMenuTree& menu, COverlayMark& waypoint);
    /// Deletes the route, as a rule after a question.
    void onDelete(ZT_HWND parent);

private:
    void Adopt(COverlayMark& waypoint);
    void AfterReading();
    void ClearWaypoints();
    void TouchAndDispatch();
    void addRouteOperations(CMenuTree& menu);
    void SetOrigin();
};
