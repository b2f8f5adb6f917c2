#pragma once

#include "nmea/connection_background.h"

/// What the connection asks of overlays and settings, answered by them. Made by the application.
class COverlayServices : public IBackgroundActivity {
public:
    COverlayServices();
    ~COverlayServices() override;

    bool AnythingRunning() const override { return false; } ///< there are no downloads yet
    bool RecordsInBackground() const override;
    bool IsRecordingTrack() const override;
};
