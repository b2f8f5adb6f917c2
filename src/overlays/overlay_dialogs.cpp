#include "overlays/overlay_dialogs.h"

namespace {

IOverlayDialogs no_dialogs;
IOverlayDialogs* dialogs_in_force = nullptr;

} // namespace

IOverlayDialogs& TheOverlayDialogs()
{
    return dialogs_in_force != nullptr ? *dialogs_in_force : no_dialogs;
}

void SetOverlayDialogs(IOverlayDialogs* dialogs)
{
    dialogs_in_force = dialogs;
}
