#include "overlays/mark_manager.h"

#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_views.h"
#include "ui/done_button.h"

#include <algorithm>
#include <memory>

namespace {

constexpr const char* kRouteCreateHint = "Tap on the map to add waypoints to the new route. Press \"Done\" when the "
                                         "route is complete.";

COverlayMark* StartOf(const COverlayRoute& route)
{
    return route.waypoints.front();
}

COverlayMark* EndOf(const COverlayRoute& route)
{
    return route.waypoints.back();
}

template <class T>
void DeleteAll(std::list<T*>& objects)
{
    while (!objects.empty()) {
        const T* const object = objects.back();
        objects.pop_back();
        delete object;
    }
}

template <class T>
T* FindIn(const std::list<T*>& objects, const T* address)
{
    const auto at = std::find(objects.begin(), objects.end(), address);
    return at != objects.end() ? *at : nullptr;
}

template <class T>
bool HasEqual(const std::list<T*>& objects, const T& object)
{
    return std::any_of(objects.begin(), objects.end(),
                       [&object](const T* other) { return other != &object && other->sameData(object); });
}

} // namespace

CMarkManager::~CMarkManager()
{
    Listener<COverlayObject>::Disconnect();
    Listener<CDataGPSPosition>::Disconnect();
    // What would be told of the end of these may itself have gone by now.
    navigation = {};
    route_being_edited = nullptr;
    for (COverlayMark* mark : marks) mark->alarm_on = false;
    DeleteAll(marks);
    DeleteAll(routes);
}

COverlayMark& CMarkManager::DefaultWaypoint()
{
    return default_route.waypoints.empty() ? default_mark : *default_route.waypoints.front();
}

void CMarkManager::EditDefaultMark(ZT_HWND parent)
{
    TheOverlayDialogs().EditMark(parent, default_mark);
}

void CMarkManager::EditDefaultRoute(ZT_HWND parent)
{
    TheOverlayDialogs().EditRoute(parent, default_route);
}

std::string CMarkManager::DefaultMarkName() const
{
    return GetNameFromTemplate(default_mark.name, marks);
}

std::string CMarkManager::DefaultRouteName() const
{
    return GetNameFromTemplate(default_route.name, routes);
}

void CMarkManager::CreateNewMark(CRastelleView* view, double lat, double lon)
{
    if (!ValidLatLon(lat, lon)) return;
    PressDoneButton();
    auto* const mark = new COverlayMark(default_mark);
    mark->lat = lat;
    mark->lon = lon;
    marks.push_back(mark);
    mark->Dispatch(COverlayObject::kChanged);
    if (view != nullptr) mark->onTap(view, {}, {});
    marks_modified = true;
}

COverlayRoute& CMarkManager::AddNewRoute()
{
    auto* const route = new COverlayRoute;
    route->name = DefaultRouteName();
    routes.push_back(route);
    route->InsertWPAfter(nullptr);
    return *route;
}

void CMarkManager::CreateNewRoute(ZT_HWND parent)
{
    AddNewRoute();
    if (!route_create_hint) return;
    route_create_hint = false;
    SettingsChanged();
    PersistantData::SaveAll();
    TheMessageSink().Hint(parent, kRouteCreateHint);
}

void CMarkManager::CreateRouteFromMark(ZT_HWND parent, COverlayMark& mark)
{
    CreateNewRoute(parent);
    if (route_being_edited != nullptr) route_being_edited->AddWaypointFromMark(mark, nullptr, {}, {});
}

void CMarkManager::DeleteMark(COverlayMark* mark)
{
    if (mark->route != nullptr) {
        mark->route->DeleteWaypoint(mark);
        return;
    }
    mark->DeleteSyncItem();
    mark->ClearData();
    mark->Dispatch(COverlayObject::kDeleted);
}

void CMarkManager::DeleteRoute(COverlayRoute* route)
{
    route->DeleteSyncItem();
    route->ClearData();
    route->Dispatch(COverlayObject::kDeleted);
}

void CMarkManager::ClearAll()
{
    CancelNavigation();
    DropRouteBeingEdited();
    DeleteAll(marks);
    DeleteAll(routes);
}

void CMarkManager::DropRouteBeingEdited()
{
    if (route_being_edited == nullptr) return;
    route_being_edited = nullptr;
    insert_before = nullptr;
    SetDoneButtonCallback(std::function<void()>());
    ClearStatusMessage();
}

bool CMarkManager::alreadyHave(const COverlayMark& mark) const
{
    return HasEqual(marks, mark);
}

bool CMarkManager::alreadyHave(const COverlayRoute& route) const
{
    return HasEqual(routes, route);
}

COverlayMark* CMarkManager::Find(const COverlayMark* address) const
{
    if (COverlayMark* const mark = FindIn(marks, address)) return mark;
    for (const COverlayRoute* route : routes) {
        if (COverlayMark* const waypoint = FindIn(route->waypoints, address)) return waypoint;
    }
    return nullptr;
}

COverlayRoute* CMarkManager::Find(const COverlayRoute* address) const
{
    return FindIn(routes, address);
}

COverlayRoute* CMarkManager::FindRouteStartingAt(double lat, double lon, double max_distance_squared,
                                                 const COverlayRoute* except) const
{
    return FindRouteAt(StartOf, lat, lon, max_distance_squared, except);
}

COverlayRoute* CMarkManager::FindRouteEndingAt(double lat, double lon, double max_distance_squared,
                                               const COverlayRoute* except) const
{
    return FindRouteAt(EndOf, lat, lon, max_distance_squared, except);
}

COverlayRoute* CMarkManager::FindRouteAt(COverlayMark* (*end)(const COverlayRoute&), double lat, double lon,
                                         double max_distance_squared, const COverlayRoute* except) const
{
    CSimpleGrid plane;
    plane.SetOrigin(lat, lon);
    COverlayRoute* nearest = nullptr;
    double best = max_distance_squared;
    for (COverlayRoute* route : routes) {
        if (route == except || !route->isVisible() || route->waypoints.empty()) continue;
        const COverlayMark& mark = *end(*route);
        const double distance = plane.distance_squared(mark.lat, mark.lon);
        if (!mark.HasPosition() || !(distance <= best)) continue;
        best = distance;
        nearest = route;
    }
    return nearest;
}

void CMarkManager::GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener)
{
    const auto tell = [action, &listener](COverlayObject& object) {
        object.action = action;
        listener.OnUpdate(object);
    };
    for (COverlayMark* mark : marks) {
        if (!mark->deleted) tell(*mark);
    }
    for (COverlayRoute* route : routes) {
        if (route->deleted) continue;
        for (COverlayMark* waypoint : route->waypoints) tell(*waypoint);
        tell(*route);
    }
}
