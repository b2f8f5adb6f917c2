#pragma once

#include "core/heartbeat.h"
#include "core/serializable.h"
#include "navdata/satellite_signals.h"
#include "overlays/moving_target.h"

#include <string>

#include <QImage>

/// Corrections of a compass in 30-degree steps.
struct CompassCalibration {
    static constexpr int kSteps = 12;
    float table[kSteps + 1] = {}; ///< degrees at 0, 30 .. 330, and the first again

    /// The heading with the correction interpolated at it; not folded again.
    float Adjust(float heading) const;
    std::string Text() const;
    /// Reads up to twelve numbers; what cannot be read stays as it is.
    void SetText(const std::string& text);
};

/// The own ship: the one record of where the vessel is, and what draws it. Main thread only.
class COverlayGPSPosition : public COverlayMovingTarget,
                            public CDataGPSSatelliteSignals,
                            protected CHeartbeat::Counter,
                            public CSerializable {
public:
    static COverlayGPSPosition theLatestPosition;

    /// Settings.
    static double averaging_time; ///< seconds
    static bool show_heading;
    static int record_in_background_mode;
    static bool use_averaged_direction;
    static bool screen_keep_alive;
    static CompassCalibration compass_cal;

    const void* source_mark = nullptr; ///< what set the position last
    double odometer_total = 0.0;       ///< metres, finished legs

    COverlayGPSPosition();
    ~COverlayGPSPosition() override;

    /// Called by every source after it has set the position: averages, odometer, best direction, and the dispatches.
    void DispatchPositionUpdate();
    void DispatchHeadingUpdate();
    /// Forgets the history and the open leg: what comes next is another voyage.
    void reset_history();
    /// Metres: finished legs and the open one.
    double odometer() const;

    /// The odometer's file in the application's folder.
    static bool LoadOdometer();
    static bool SaveOdometer();
    // The rest is the drawing and the watchdog: see the class's owner.
};
