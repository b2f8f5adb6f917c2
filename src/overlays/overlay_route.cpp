#include "overlays/overlay_route.h"

#include "core/polygon.h"
#include "core/text.h"
#include "navdata/units.h"
#include "overlays/mark_manager.h"
#include "overlays/mark_text.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_views.h"

#include <algorithm>

COverlayRoute::COverlayRoute() : COverlayObject(kLines, kRoute), CLineAppearance(g_mark_manager.DefaultRoute())
{
    do_not_sync = g_mark_manager.DefaultRoute().do_not_sync;
}

COverlayRoute::COverlayRoute(const std::string& name_template, COverlayMark* waypoint) : COverlayObject(kLines, kRoute)
{
    name = name_template;
    Adopt(*waypoint);
    waypoints.push_back(waypoint);
}

COverlayRoute::~COverlayRoute()
{
    g_mark_manager.Forget(*this);
    ClearWaypoints();
}

void COverlayRoute::Adopt(COverlayMark& waypoint)
{
    waypoint.route = this;
    waypoint.type = kWaypoint;
}

void COverlayRoute::Dispatch(update_action new_action)
{
    if (new_action == kChanged) ClearSegments();
    COverlayObject::Dispatch(new_action);
    for (COverlayMark* waypoint : waypoints) waypoint->Dispatch(new_action);
}

void COverlayRoute::TouchAndDispatch()
{
    SetModifiedNow();
    Dispatch(kChanged);
}

void COverlayRoute::ClearWaypoints()
{
    ClearSegments();
    while (!waypoints.empty()) {
        const COverlayMark* const waypoint = waypoints.back();
        waypoints.pop_back();
        delete waypoint;
    }
}

void COverlayRoute::ClearData()
{
    if (following) g_mark_manager.CancelNavigation();
    EndAddingWaypoints();
    if (TheOverlayViews().IsSelected(*this)) TheOverlayViews().Deselect();
    ClearWaypoints();
    name.clear();
    comment.clear();
    category.clear();
}

bool COverlayRoute::sameData(const COverlayRoute& other) const
{
    return sameSyncableData(other) &&
           std::equal(waypoints.begin(), waypoints.end(), other.waypoints.begin(), other.waypoints.end(),
                      [](const COverlayMark* a, const COverlayMark* b) { return a->sameData(*b); });
}

COverlayMark* COverlayRoute::getWaypointBefore(const COverlayMark& mark) const
{
    const auto at = std::find(waypoints.begin(), waypoints.end(), &mark);
    return at == waypoints.end() || at == waypoints.begin() ? nullptr : *std::prev(at);
}

COverlayMark* COverlayRoute::getWaypointAfter(const COverlayMark& mark) const
{
    const auto at = std::find(waypoints.begin(), waypoints.end(), &mark);
    return at == waypoints.end() || std::next(at) == waypoints.end() ? nullptr : *std::next(at);
}

void COverlayRoute::GetVertices(CPolyline& line) const
{
    for (const COverlayMark* waypoint : waypoints)
        if (waypoint->HasPosition()) line.add(waypoint->lon, waypoint->lat);
}

void COverlayRoute::getLonLatBounds(CBounds& bounds) const
{
    for (const COverlayMark* waypoint : waypoints) waypoint->getLonLatBounds(bounds);
}

std::string COverlayRoute::getSubText(const CSimpleGrid& reader) const
{
    const int count = static_cast<int>(waypoints.size());
    std::string text = CUnits::Default->FormatDistance(getTotalLengthMeters());
    appendprintf(text, ", %d waypoint%s", count, plural_s(count));
    const std::string place = count > 0 ? waypoints.front()->getSubText(reader) : std::string();
    return place.empty() ? text : text + ", " + place;
}

void COverlayRoute::SetNameFromEndWaypoints()
{
    if (waypoints.size() >= 2) name = waypoints.front()->name + " to " + waypoints.back()->name;
}

void COverlayRoute::SetAllWaypointsLike(const COverlayMark& mark)
{
    for (COverlayMark* waypoint : waypoints) waypoint->SetIcon(mark.icon_name, mark.colour);
    if (!mark.name.empty()) NameAllWaypoints(mark.name);
}

void COverlayRoute::NameAllWaypoints(const std::string& name_template)
{
    int number = 0;
    for (COverlayMark* waypoint : waypoints) waypoint->name = WaypointName(name_template, name, ++number);
}

void COverlayRoute::EditRouteProperties(ZT_HWND parent)
{
    TheOverlayDialogs().EditRoute(parent, *this);
}
