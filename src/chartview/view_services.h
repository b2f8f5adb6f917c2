#pragma once

#include "core/zt_hwnd.h"

#include <functional>

class CRastelleView;

/// What a map view asks of rooms above it. A base operation does nothing, which is also what happens when no services
/// are set. Main thread only.
struct IViewServices {
    virtual ~IViewServices() = default;
    virtual void CreateNewMark(CRastelleView&) {}
    virtual void CreateNewRoute(CRastelleView&) {}
    /// Looks for a free chart at a place without one; reports whether a chart came.
    virtual void DownloadBestFreeMap(CRastelleView&, double /*lat*/, double /*lon*/, std::function<void(bool)> done)
    {
        if (done) done(false);
    }
    virtual void ShowMapListDialog(CRastelleView*, ZT_HWND, std::function<void()> /*done*/) {}
    /// The map's own menu at a screen point (device pixels).
    virtual void ShowContextMenu(CRastelleView&, double /*x*/, double /*y*/) {}
    /// Presses the global Done button; false when it is not active.
    virtual bool InvokeDoneButton() { return false; }
};

/// The services in force. Never null.
IViewServices& TheViewServices();
/// Null brings back those that do nothing.
void SetViewServices(IViewServices* services);
