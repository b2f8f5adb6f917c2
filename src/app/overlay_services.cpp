#include "app/overlay_services.h"

#include "overlays/gps_position.h"
#include "overlays/track_manager.h"

COverlayServices::COverlayServices()
{
    SetBackgroundActivity(this);
}

COverlayServices::~COverlayServices()
{
    SetBackgroundActivity(nullptr);
}

bool COverlayServices::RecordsInBackground() const
{
    return COverlayGPSPosition::record_in_background_mode != 0;
}

bool COverlayServices::IsRecordingTrack() const
{
    return CTrackManager::doRecordTrack;
}
