#include "overlays/mark_deletion.h"
#include "overlays/mark_reference.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_views.h"

void COverlayRoute::onMenuDown(ZT_HWND parent)
{
    CMenuTree menu(name);
    addMenus(menu, parent);
    menu.ShowMenuTree(parent);
}

void COverlayRoute::addMenus(CMenuTree& menu, ZT_HWND parent)
{
    if (following) menu.Add("Cancel Navigation", [] { g_mark_manager.CancelNavigation(); });
    AddObjectEntry(menu, "Waypoint Operations:Add Waypoints", *this,
                   [](COverlayRoute& route) { route.InsertWPAfter(nullptr); });
    addRouteMenus(menu, parent);
}

void COverlayRoute::addRouteMenus(CMenuTree& menu, ZT_HWND parent)
{
    if (!following) {
        AddObjectEntry(menu, "Follow Route", *this,
                       [](COverlayRoute& route) { g_mark_manager.SetFollowRoute(&route); });
    }
    AddObjectEntry(menu, "Edit Route", *this, [parent](COverlayRoute& route) { route.EditRouteProperties(parent); });
    addRouteOperations(menu);
    AddObjectEntry(menu, visible ? "Hide Route" : "Show Route", *this, [](COverlayRoute& route) {
        route.setVisible(!route.visible);
        route.Dispatch(kChanged);
    });
    AddObjectEntry(menu, locked ? "Unlock Route" : "Lock Route", *this, [](COverlayRoute& route) {
        route.setLocked(!route.locked);
        route.Dispatch(kLookChanged);
    });
    AddObjectEntry(menu, "Save Route As", *this,
                   [parent](COverlayRoute& route) { TheOverlayDialogs().SaveAs(parent, route); });
    AddObjectEntry(menu, "Delete Route", *this, [parent](COverlayRoute& route) { route.onDelete(parent); });
}

void COverlayRoute::addRouteOperations(CMenuTree& menu)
{
    AddObjectEntry(menu, "Route Operations:Reverse route", *this,
                   [](COverlayRoute& route) { route.ReverseWaypoints(); });
    AddObjectEntry(menu, "Route Operations:Convert to Track", *this,
                   [](COverlayRoute& route) { route.ConvertToTrack(); });
}

void COverlayRoute::addJoinMenu(CMenuTree& menu, COverlayMark& waypoint)
{
    const CMarkManager& manager = g_mark_manager;
    if (&waypoint == waypoints.back()) {
        const COverlayRoute* next =
            manager.FindRouteStartingAt(waypoint.lat, waypoint.lon, JoinDistance() * JoinDistance(), this);
        if (next != nullptr) {
            AddObjectEntry(menu, "Join Route", *this,
                           [reference = CObjectRef<COverlayRoute>(*next)](COverlayRoute& route) {
                               route.JoinRoute(reference.get());
                           });
            return;
        }
    }
    if (&waypoint != waypoints.front()) return;
    COverlayRoute* const before =
        manager.FindRouteEndingAt(waypoint.lat, waypoint.lon, JoinDistance() * JoinDistance(), this);
    if (before == nullptr) return;
    AddObjectEntry(menu, "Join Route", *before, [reference = CObjectRef<COverlayRoute>(*this)](COverlayRoute& route) {
        route.JoinRoute(reference.get());
    });
}

void COverlayRoute::onDelete(ZT_HWND parent)
{
    DeleteAfterQuestion(parent, *this, locked, "Delete route", [reference = CObjectRef<COverlayRoute>(*this)] {
        if (COverlayRoute* const route = reference.get()) g_mark_manager.DeleteRoute(route);
    });
}
