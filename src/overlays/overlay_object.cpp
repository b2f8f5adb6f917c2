#include "overlays/overlay_object.h"

#include "core/listener.h"

COverlayObject::~COverlayObject()
{
    Dispatch(kDeleted);
}

void COverlayObject::Dispatch(update_action new_action)
{
    action = new_action;
    DispatchToListeners(*this);
}

std::uint32_t COverlayObject::Number() const
{
    const auto address = reinterpret_cast<std::uintptr_t>(this);
    return order_key + static_cast<std::uint32_t>((address >> 4) & 0x0FFFFFFFU);
}
