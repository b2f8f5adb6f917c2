#include "overlays/overlay_views.h"

#include "core/nautical_mile.h"

namespace {

constexpr double kJoinPixels = 20.0; ///< on the screen

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

double JoinDistance()
{
    return kJoinPixels * kMetresPerNauticalMile * TheOverlayViews().DisplayedScale();
}
