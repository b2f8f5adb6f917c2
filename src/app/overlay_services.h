#pragma once

#include "nmea/connection_background.h"
#include "nmea/transports/simulation.h"

/// What the connection asks of overlays and settings, answered by them. Made by the application.
class COverlayServices : public IBackgroundActivity, public ISimulationTrack {
public:
    COverlayServices();
    ~COverlayServices() override;

    bool AnythingRunning() const override { return false; } ///< there are no downloads yet
    bool RecordsInBackground() const override;
    bool IsRecordingTrack() const override;
    void StartSimulation() override;
    void EndSimulation() override;
};
