#pragma once

#include "core/heartbeat.h"
#include "core/serializable.h"
#include "navdata/satellite_signals.h"
#include "overlays/moving_target.h"
#include "overlays/overlay_source.h"
#include "overlays/position_history.h"

#include <string>

#include <QImage>

/// Corrections of a compass in 30-degree steps.
struct CompassCalibration {
    static constexpr int kSteps = 12;
    float table[kSteps + 1] = {}; ///< degrees at 0, 30 .. 330, and the first again

    /// The heading with the correction interpolated at it; not folded again.
    float Adjust(float heading) const;
    /// Twelve decimal numbers, a comma behind each.
    std::string Text() const;
    /// Reads up to twelve numbers; what cannot be read stays as it is.
    void SetText(const std::string& text);
};

/// The own ship: the one record of where the vessel is, and what draws it. Status 0 after 5 seconds without an update.
/// Main thread only.
class COverlayGPSPosition : public COverlayMovingTarget,
                            public CDataGPSSatelliteSignals,
                            protected CHeartbeat::Counter,
                            public CSerializable,
                            public IOverlaySource {
public:
    static COverlayGPSPosition theLatestPosition;
    /// The entry of the settings menu, "GPS Settings".
    class SettingsType;

    // Settings, kept in the group "COverlayGPSPosition" with those of COverlayMovingTarget, CDataSpeedDirection and
    // CompassDamping.
    static double averaging_time; ///< seconds
    static bool show_heading;
    static int record_in_background_mode; ///< 0: tracks are not recorded in the background
    static bool screen_keep_alive;
    static CompassCalibration compass_cal;
    /// To be called after a change: the group is saved with the next saving of settings.
    static void SettingsChanged();

    /// Whether a tool edits overlays, so that the place of interest is not the own ship's. Null, or what the room of
    /// the views sets.
    static bool (*tool_is_active)();

    const void* source_mark = nullptr; ///< what set the position last
    double odometer_total = 0.0;       ///< metres, finished legs

    COverlayGPSPosition();
    ~COverlayGPSPosition() override;

    /// Called by every source after it has set the position: averages, odometer, best direction, and the dispatches.
    /// Allocates nothing.
    void DispatchPositionUpdate();
    void DispatchHeadingUpdate();
    /// Forgets the history and the open leg: what comes next is another voyage. The total stays.
    void reset_history();
    /// Metres: finished legs and the open one.
    double odometer() const { return odometer_total + leg; }

    /// The odometer's file in the application's folder. A missing or damaged file leaves the total.
    static bool LoadOdometer();
    /// Writes nothing while the total is what the file holds.
    static bool SaveOdometer();
    bool Serialize(IOStream& stream) override;

    /// Takes the colour of the settings; the icons are made anew when the position is next mapped.
    void LoadIconImages();
    /// Shows what the settings say now, in every view.
    void LookChanged();

    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    void GetUpdatesForAll(update_action new_action, Listener<COverlayObject>& listener) override;

protected:
    /// The watchdog.
    void OnHeartbeat() override;

private:
    class Persistant;
    /// The icons, all of one size, for one display factor.
    struct Icons {
        QImage blink[2]; ///< [0] is the one shown
        QImage no_fix;
        double centre_x = 0.0; ///< device pixels
        double centre_y = 0.0;
        double resolution = 0.0; ///< 0: not yet loaded
    };

    void LoadIcons() const;
    void UpdateMotion();
    void GetAverageSpeed();
    void UpdateOdometer();
    void CloseLeg();
    void DrawCompass(QPainter* painter, const DblPoint& at) const;

    mutable Icons icons;
    double last_blink_time = 0.0; ///< seconds
    CPositionHistory history;
    double next_average_time = 0.0; ///< seconds
    double leg = 0.0;               ///< metres
    double leg_start_lat = 0.0;     ///< degrees
    double leg_start_lon = 0.0;
    double leg_start_time = 0.0; ///< seconds; 0: no leg is open
};
