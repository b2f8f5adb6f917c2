#include "app/overlay_services.h"

#include "overlays/gps_position.h"
#include "overlays/track_manager.h"

COverlayServices::COverlayServices()
{
    SetBackgroundActivity(this);
    SetSimulationTrack(this);
}

COverlayServices::~COverlayServices()
{
    SetSimulationTrack(nullptr);
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

void COverlayServices::StartSimulation()
{
    g_track_manager.StartSimulation();
}

void COverlayServices::EndSimulation()
{
    g_track_manager.EndSimulation();
}
