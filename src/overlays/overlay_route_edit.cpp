#include "core/message_sink.h"
#include "navdata/units.h"
#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_views.h"
#include "ui/done_button.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view kBetweenEnds = " to ";

/// "P" and a digit: a name that was not given by the user.
bool IsAutomaticName(const std::string& name)
{
    return name.size() >= 2 && name[0] == 'P' && name[1] >= '0' && name[1] <= '9';
}

COverlayMark* NewWaypoint()
{
    const COverlayMark::CCreatingRoute as_waypoint;
    return new COverlayMark;
}

} // namespace

void COverlayRoute::InsertWaypoint(COverlayMark* waypoint, const COverlayMark* before)
{
    Adopt(*waypoint);
    waypoints.insert(std::find(waypoints.begin(), waypoints.end(), before), waypoint);
    ClearSegments();
}

void COverlayRoute::InsertWPAfter(const COverlayMark* mark)
{
    if (g_mark_manager.route_being_edited != nullptr) PressDoneButton();
    g_mark_manager.route_being_edited = this;
    g_mark_manager.insert_before = mark != nullptr ? getWaypointAfter(*mark) : nullptr;
    SetDoneButtonCallback(onDoneButton, this);
    Dispatch(kChanged);
}

void COverlayRoute::onDoneButton(void*)
{
    COverlayRoute* const route = g_mark_manager.route_being_edited;
    if (route == nullptr) return;
    g_mark_manager.route_being_edited = nullptr;
    g_mark_manager.insert_before = nullptr;
    route->Dispatch(kChanged);
    ClearStatusMessage();
}

void COverlayRoute::EndAddingWaypoints()
{
    if (g_mark_manager.route_being_edited == this) PressDoneButton();
}

int COverlayRoute::onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    double lat = 0.0;
    double lon = 0.0;
    if (view == nullptr || g_mark_manager.route_being_edited != this) return 0;
    if (!TheOverlayViews().PositionOf(*view, place, lat, lon) || !ValidLatLon(lat, lon)) return 0;
    AddWaypoint(lat, lon, view, screen, place);
    return 1;
}

COverlayMark* COverlayRoute::AddWaypoint(double lat, double lon, CRastelleView* view, const FPoint& screen,
                                         const DblPoint& place)
{
    COverlayMark* const waypoint = NewWaypoint();
    waypoint->lat = lat;
    waypoint->lon = lon;
    const int number = static_cast<int>(waypoints.size());
    waypoint->name = WaypointName(g_mark_manager.DefaultWaypoint().name, name, number);
    const COverlayMark* const before = g_mark_manager.insert_before;
    InsertWaypoint(waypoint, before);
    SetModifiedNow();
    TheOverlayViews().Deselect();
    if (view != nullptr) waypoint->onTap(view, screen, place);
    Dispatch(kChanged);
    SetStatusMessage("Total distance: " + CUnits::Default->FormatDistance(getTotalLengthMeters()));
    if (before != nullptr) EndAddingWaypoints(); // one tap inserts one waypoint, and the message goes with the button
    return waypoint;
}

void COverlayRoute::AddWaypointFromMark(COverlayMark& mark, CRastelleView* view, const FPoint& screen,
                                        const DblPoint& place)
{
    if (!mark.HasPosition()) return;
    COverlayMark& waypoint = *AddWaypoint(mark.lat, mark.lon, view, screen, place);
    if (!mark.name.empty() && !IsAutomaticName(mark.name)) waypoint.name = mark.name;
    waypoint.comment = mark.comment;
    waypoint.link = mark.link;
    SetNameFromEndWaypoints();
    Dispatch(kChanged); // of the names
    if (!mark.isLocked()) g_mark_manager.DeleteMark(&mark);
}

void COverlayRoute::DeleteWaypoint(COverlayMark* mark)
{
    const auto at = std::find(waypoints.begin(), waypoints.end(), mark);
    if (at == waypoints.end()) return;
    if (waypoints.size() < 3) {
        g_mark_manager.DeleteRoute(this);
        return;
    }
    if (g_mark_manager.insert_before == mark) g_mark_manager.insert_before = getWaypointAfter(*mark);
    waypoints.erase(at);
    ClearSegments();
    delete mark;
    TouchAndDispatch();
}

void COverlayRoute::ReverseWaypoints()
{
    EndAddingWaypoints();
    waypoints.reverse();
    const std::size_t at = name.find(kBetweenEnds);
    if (at != std::string::npos) {
        name = name.substr(at + kBetweenEnds.size()).append(kBetweenEnds).append(name, 0, at);
    }
    TouchAndDispatch();
}

void COverlayRoute::SplitRoute(COverlayMark* at)
{
    const auto found = std::find(waypoints.begin(), waypoints.end(), at);
    if (found == waypoints.end()) return;
    EndAddingWaypoints();
    auto* const rest = new COverlayRoute;
    static_cast<CLineAppearance&>(*rest) = *this;
    rest->name = name + "-split";
    rest->category = category;
    rest->do_not_sync = do_not_sync;
    auto* const first = new COverlayMark(*at);
    first->name = at->name;
    first->comment = at->comment;
    first->lat = at->lat;
    first->lon = at->lon;
    rest->waypoints.push_back(first);
    rest->waypoints.splice(rest->waypoints.end(), waypoints, std::next(found), waypoints.end());
    for (COverlayMark* waypoint : rest->waypoints) rest->Adopt(*waypoint);
    g_mark_manager.routes.push_back(rest);
    TouchAndDispatch();
    rest->Dispatch(kChanged);
}

void COverlayRoute::JoinRoute(COverlayRoute* other)
{
    if (other == nullptr || other == this) return;
    EndAddingWaypoints();
    other->EndAddingWaypoints();
    if (!other->waypoints.empty()) {
        waypoints.splice(waypoints.end(), other->waypoints, std::next(other->waypoints.begin()),
                         other->waypoints.end());
    }
    for (COverlayMark* waypoint : waypoints) Adopt(*waypoint);
    other->ClearSegments();
    g_mark_manager.DeleteRoute(other);
    TouchAndDispatch();
}
