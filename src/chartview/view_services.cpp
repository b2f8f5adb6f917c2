#include "chartview/view_services.h"

#include "chartview/overlay_tool.h"

namespace {

IViewServices no_services;
IViewServices* view_services = &no_services;
IOverlayTool* overlay_tool = nullptr;

} // namespace

IViewServices& TheViewServices()
{
    return *view_services;
}

void SetViewServices(IViewServices* services)
{
    view_services = services != nullptr ? services : &no_services;
}

IOverlayTool* TheOverlayTool()
{
    return overlay_tool;
}

void SetOverlayTool(IOverlayTool* tool)
{
    overlay_tool = tool;
}
