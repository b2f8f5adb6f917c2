#include "overlays/overlay_views.h"

namespace {

IOverlayViews no_views;
IOverlayViews* views_in_force = nullptr;

} // namespace

IOverlayViews& TheOverlayViews()
{
    return views_in_force != nullptr ? *views_in_force : no_views;
}

void SetOverlayViews(IOverlayViews* views)
{
    views_in_force = views;
}
