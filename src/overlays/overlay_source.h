#pragma once

#include "core/listener.h"
#include "overlays/overlay_object.h"

/// An owner of overlay objects. It is on the list of all sources for as long as it lives. Main thread only.
class IOverlaySource {
public:
    IOverlaySource();
    IOverlaySource(const IOverlaySource&) = delete;
    IOverlaySource& operator=(const IOverlaySource&) = delete;
    virtual ~IOverlaySource();

    /// Calls the listener once per object that is not deleted, with `action` stored in the object.
    virtual void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) = 0;

    /// Asks every source, in the order of their making.
    static void GetUpdatesFromAllSources(COverlayObject::update_action action, Listener<COverlayObject>& listener);
};
