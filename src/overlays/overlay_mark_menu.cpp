#include "overlays/mark_deletion.h"
#include "overlays/mark_link.h"
#include "overlays/mark_reference.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_views.h"

namespace {

/// While waypoints are added, a free mark is what the next one is made of.
bool BecomesWaypoint(const COverlayMark& mark)
{
    return g_mark_manager.route_being_edited != nullptr && mark.route == nullptr;
}

} // namespace

int COverlayMark::onTap(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (view != nullptr && BecomesWaypoint(*this)) {
        g_mark_manager.route_being_edited->AddWaypointFromMark(*this, view, screen, place);
        return 1;
    }
    return onMouseDown(view, screen, place);
}

int COverlayMark::onMouseDown(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (view == nullptr || BecomesWaypoint(*this)) return 0;
    IOverlayViews& views = TheOverlayViews();
    if (!views.IsSelected(*this)) views.Select(*view, *this, screen, place);
    return 1;
}

int COverlayMark::onRightClick(CRastelleView* view, const FPoint& screen, const DblPoint& place)
{
    if (view == nullptr) return 0;
    IOverlayViews& views = TheOverlayViews();
    if (!views.IsSelected(*this)) views.Select(*view, *this, screen, place);
    onMenuDown(views.HandleAt(*view, screen));
    return 1;
}

void COverlayMark::onMenuDown(ZT_HWND parent)
{
    CMenuTree menu(name);
    addMenus(menu, parent);
    menu.ShowMenuTree(parent);
}

void COverlayMark::addMenus(CMenuTree& menu, ZT_HWND parent)
{
    AddObjectEntry(menu, route != nullptr ? "Edit Waypoint" : "Edit Mark", *this,
                   [parent](COverlayMark& mark) { mark.EditMarkProperties(parent); });
    if (route != nullptr) {
        addWaypointMenus(menu, parent);
        route->addRouteMenus(menu, parent);
    } else {
        addMarkMenus(menu, parent);
    }
}

void COverlayMark::addMarkMenus(CMenuTree& menu, ZT_HWND parent)
{
    if (isNavigatingToMark()) {
        menu.Add("Cancel Navigation", [] { g_mark_manager.CancelNavigation(); });
    } else {
        AddObjectEntry(menu, "Go-To", *this, [](COverlayMark& mark) { g_mark_manager.SetGoto(&mark); });
    }
    AddObjectEntry(menu, visible ? "Hide Mark" : "Show Mark", *this, [](COverlayMark& mark) {
        mark.setVisible(!mark.visible);
        mark.Dispatch(kChanged);
    });
    AddObjectEntry(menu, locked ? "Unlock Mark" : "Lock Mark", *this, [](COverlayMark& mark) {
        mark.setLocked(!mark.locked);
        mark.Dispatch(kLookChanged);
    });
    AddObjectEntry(menu, "Save Mark As", *this,
                   [parent](COverlayMark& mark) { TheOverlayDialogs().SaveAs(parent, mark); });
    if (!link.empty()) menu.Add("Open Link", [parent, address = link] { OpenUserLink(parent, address); });
    AddObjectEntry(menu, "Create Route", *this,
                   [parent](COverlayMark& mark) { g_mark_manager.CreateRouteFromMark(parent, mark); });
    AddObjectEntry(menu, "Delete Mark", *this, [parent](COverlayMark& mark) { mark.onDelete(parent); });
}

void COverlayMark::addWaypointMenus(CMenuTree& menu, ZT_HWND parent)
{
    if (isNavigatingToMark() || route->following) {
        menu.Add("Cancel Navigation", [] { g_mark_manager.CancelNavigation(); });
    }
    if (!isNavigatingToMark()) {
        AddObjectEntry(menu, "Waypoint Operations:Go-To", *this,
                       [](COverlayMark& mark) { g_mark_manager.SetGoto(&mark); });
    }
    const bool is_first = this == route->waypoints.front();
    const bool is_last = this == route->waypoints.back();
    AddObjectEntry(menu, is_last ? "Waypoint Operations:Add Waypoints" : "Waypoint Operations:Insert Waypoint", *this,
                   [](COverlayMark& mark) { mark.route->InsertWPAfter(&mark); });
    if (!is_first && !is_last) {
        AddObjectEntry(menu, "Waypoint Operations:Split Route", *this,
                       [](COverlayMark& mark) { mark.route->SplitRoute(&mark); });
    }
    AddObjectEntry(menu, "Waypoint Operations:Delete Waypoint", *this,
                   [parent](COverlayMark& mark) { mark.onDelete(parent); });
    if (!link.empty()) menu.Add("Open Link", [parent, address = link] { OpenUserLink(parent, address); });
    route->addJoinMenu(menu, *this);
}

void COverlayMark::onDelete(ZT_HWND parent)
{
    DeleteAfterQuestion(parent, *this, isLocked(), route != nullptr ? "Delete Waypoint" : "Delete Mark",
                        [reference = CObjectRef<COverlayMark>(*this)] {
                            if (COverlayMark* const mark = reference.get()) g_mark_manager.DeleteMark(mark);
                        });
}
