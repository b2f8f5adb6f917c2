#include "core/text.h"
#include "core/user_data_changed.h"
#include "navdata/units.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "ui/user_notification_manager.h"

#include <cmath>

namespace {

constexpr float kTurnBackDegrees = 135.0F;
constexpr float kTurnBackLegShare = 0.2F;
constexpr float kNoDirection = 900.0F; ///< degrees: a course or bearing from here on is none

bool IsSame(const COverlayObject* one, const COverlayObject& other)
{
    return one == &other;
}

} // namespace

void CMarkManager::Publish()
{
    DispatchToListeners(navigation);
}

void CMarkManager::SetGoto(COverlayMark* mark)
{
    CancelNavigation();
    if (mark == nullptr || mark->deleted || !mark->HasPosition()) return;
    navigation.target = mark;
    navigation.grid.SetOrigin(mark->lat, mark->lon);
    mark->goto_target = true;
    Publish();
    mark->Dispatch(COverlayObject::kLookChanged);
}

void CMarkManager::SetFollowRoute(COverlayRoute* route)
{
    CancelNavigation();
    if (route == nullptr || route->deleted) return;
    navigation.route = route;
    route->following = true;
    route->Dispatch(COverlayObject::kLookChanged);
}

void CMarkManager::CancelNavigation()
{
    navigation.CancelNavigation();
    Publish();
}

void CMarkManager::OnUpdate(CDataGPSPosition& position)
{
    if (position.status == CDataGPSPosition::kNoFix || !ValidLatLon(position.latitude, position.longitude)) return;
    if (Listener<CDataGotoMark>::pDatasource != nullptr) {
        if (navigation.route != nullptr) UpdateLeg(position);
        if (navigation.grid.ready()) {
            navigation.UpdatePosition(position.latitude, position.longitude);
            Publish();
        }
    }
    if (enable_alarm_notifications) {
        CheckAlarms(position);
    } else {
        CancelAlarms();
    }
}

/// Whether the boat has turned round before the end of the route. Of the two ways to turn only one counts.
bool CMarkManager::ShouldReverse(const CDataGPSPosition& position) const
{
    const CDataGotoMark& n = navigation;
    if (!CDataGotoMark::auto_reverse || n.target == nullptr || n.route->waypoints.empty()) return false;
    if (n.target != n.route->waypoints.back() || !(n.distance < kTurnBackLegShare * n.leg_length)) return false;
    if (!(n.bearing < kNoDirection) || !(position.course < kNoDirection)) return false;
    float turn = std::abs(n.bearing - position.course);
    if (turn > 180.0F) turn -= 360.0F;
    return turn > kTurnBackDegrees;
}

void CMarkManager::UpdateLeg(const CDataGPSPosition& position)
{
    if (ShouldReverse(position)) navigation.route->ReverseWaypoints();
    COverlayRoute::CLeg leg;
    if (!navigation.route->FindNearestLeg(position.latitude, position.longitude, leg)) return;
    navigation.remaining = static_cast<float>(leg.remaining);
    navigation.after_target = leg.after_to;
    if (leg.to == nullptr || leg.to == navigation.target) return;
    navigation.target = leg.to;
    navigation.leg_normal_x = navigation.leg_normal_y = 0.0F;
    navigation.grid.SetOrigin(leg.to->lat, leg.to->lon);
    if (leg.from != nullptr) navigation.NavigateFrom(leg.from->lat, leg.from->lon);
}

void CMarkManager::CheckAlarms(const CDataGPSPosition& position)
{
    CSimpleGrid plane;
    plane.SetOrigin(position.latitude, position.longitude);
    for (COverlayMark* mark : marks) {
        if (!(mark->alarm_radius > 0.0F) || !mark->HasPosition()) continue;
        const double metres = plane.distance(mark->lat, mark->lon);
        if (metres < static_cast<double>(mark->alarm_radius) && metres >= static_cast<double>(mark->anchor_radius)) {
            const std::string distance = CUnits::Default->FormatDistance(metres);
            mark->alarm_on = true;
            ShowSystemNotification(static_cast<int>(mark->Number()),
                                   mark->anchor_radius != 0.0F ? "Anchor alarm" : "Mark proximity alarm",
                                   stringprintf("%s is %s away", mark->name.c_str(), distance.c_str()));
        } else {
            mark->CancelAlarm();
        }
    }
}

void CMarkManager::CancelAlarms()
{
    for (COverlayMark* mark : marks) mark->CancelAlarm();
}

void CMarkManager::OnUpdate(COverlayObject& object)
{
    if (object.action == COverlayObject::kAllGone) {
        AllGone();
        return;
    }
    const bool of_route = object.type == COverlayObject::kRoute || object.type == COverlayObject::kWaypoint;
    if (object.type != COverlayObject::kMark && !of_route) return;
    Navigated(object);
    (of_route ? routes_modified : marks_modified) = true;
    NoteUserDataChanged();
}

/// What a change of an object means to the navigation and to the adding of waypoints.
void CMarkManager::Navigated(const COverlayObject& object)
{
    const bool is_target = IsSame(navigation.target, object);
    const bool is_route = IsSame(navigation.route, object);
    if (object.action == COverlayObject::kChanged) {
        if (object.type == COverlayObject::kWaypoint) {
            if (COverlayRoute* const route = static_cast<const COverlayMark&>(object).route) route->ClearSegments();
        }
        if (is_target) TargetMoved();
        if (is_route) {
            navigation.route->ClearSegments();
            navigation.target = nullptr;
            navigation.after_target = nullptr;
        }
    } else if (object.action == COverlayObject::kDeleted) {
        if (is_target || is_route) CancelNavigation();
        if (IsSame(route_being_edited, object)) DropRouteBeingEdited();
    }
}

/// Moves the plane along with the target; the leg goes on to start where it did.
void CMarkManager::TargetMoved()
{
    if (!navigation.HasLeg()) return;
    double lat = 0.0;
    double lon = 0.0;
    navigation.grid.xy_to_latlon(navigation.leg_start_x, navigation.leg_start_y, lat, lon);
    navigation.grid.SetOrigin(navigation.target->lat, navigation.target->lon);
    navigation.NavigateFrom(lat, lon);
}

void CMarkManager::AllGone()
{
    CancelNavigation();
    DropRouteBeingEdited();
    marks_modified = true;
    routes_modified = true;
    g_track_manager.stopTrackRecording();
    NoteUserDataChanged();
}

void CMarkManager::Forget(const COverlayMark& mark)
{
    if (navigation.target == &mark) CancelNavigation();
    if (navigation.after_target == &mark) navigation.after_target = nullptr;
    if (insert_before == &mark) insert_before = nullptr;
}

void CMarkManager::Forget(const COverlayRoute& route)
{
    if (navigation.route == &route) CancelNavigation();
    if (route_being_edited == &route) DropRouteBeingEdited();
}
