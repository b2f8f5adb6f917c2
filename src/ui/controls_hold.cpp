#include "ui/controls_hold.h"

#include "ui/ui_context.h"

void CControlsHold::Take()
{
    if (held) return;
    held = true;
    if (IUiContext* context = TheUiContext()) context->stopInactivityTimeout();
}

void CControlsHold::Release()
{
    if (!held) return;
    held = false;
    if (IUiContext* context = TheUiContext()) context->startInactivityTimeout();
}
