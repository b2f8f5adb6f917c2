#pragma once

#include "overlays/mark_manager.h"
#include "ui/action_sheet.h"

#include <utility>

/// A mark, waypoint or route that may have gone by the time that a menu or question is answered. T is COverlayMark or
/// COverlayRoute.
template <class T>
class CObjectRef {
public:
    explicit CObjectRef(const T& object) : address(&object), created(object.created) {}
    /// Null once the object has gone or is but a tombstone.
    T* get() const
    {
        T* const object = g_mark_manager.Find(address);
        return object != nullptr && object->created == created && !object->deleted ? object : nullptr;
    }

private:
    const T* address;
    double created; ///< tells a newer object at the same address apart
};

/// Adds a menu entry that does `action(object)` if the object is still there when it is chosen.
template <class T, class Action>
void AddObjectEntry(CMenuTree& menu, const std::string& label, T& object, Action action)
{
    menu.Add(label, [reference = CObjectRef<T>(object), action = std::move(action)] {
        if (T* const present = reference.get()) action(*present);
    });
}
