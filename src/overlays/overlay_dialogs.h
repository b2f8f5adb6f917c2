#pragma once

#include "core/zt_hwnd.h"

class COverlayMark;
class COverlayRoute;
class COverlayTrack;
class CSyncable;

/// The dialogs that overlay objects open from their menus. A base operation does nothing, which is also what happens
/// when nobody has set one. Main thread only.
struct IOverlayDialogs {
    virtual ~IOverlayDialogs() = default;
    /// The mark may be a waypoint, or the template of new marks or waypoints.
    virtual void EditMark(ZT_HWND /*parent*/, COverlayMark&) {}
    /// The route may be the template of new routes.
    virtual void EditRoute(ZT_HWND /*parent*/, COverlayRoute&) {}
    virtual void EditTrack(ZT_HWND /*parent*/, COverlayTrack&) {}
    /// Asks for a file name and writes the object to it.
    virtual void SaveAs(ZT_HWND /*parent*/, CSyncable&) {}
};

/// The ones in force. Never null.
IOverlayDialogs& TheOverlayDialogs();
/// Null brings back those that do nothing.
void SetOverlayDialogs(IOverlayDialogs* dialogs);
