#pragma once

#include "nmea/ais_sentences.h"
#include "overlays/moving_target.h"

#include <cstdint>
#include <string>

/// A station heard by AIS: a ship, an aircraft, an aid to navigation, a distress transmitter. Position and motion are
/// the base's; course and heading are 999 or 360 and above when not known. Published through Listener<CAISTarget> with
/// every message, and with last_message kRemoved before it goes. Main thread only.
class CAISTarget : public COverlayMovingTarget {
public:
    static constexpr double kNoApproach = 1e10; ///< metres; the CPA of a ship that does not come nearer
    // What last_message holds besides the types of messages.
    static constexpr std::uint8_t kLostContact = 254;
    static constexpr std::uint8_t kRemoved = 255;

    std::uint32_t mmsi;
    std::string name;      ///< empty: not known
    std::string mmsi_text; ///< the MMSI in decimal
    const char* status_text = "n/a";
    std::string details;           ///< what a tap shows; empty until a message with static data came
    std::string type_text;         ///< the ship type in words
    float rate_of_turn = 0.0F;     ///< degrees a minute, to starboard positive
    float range = 0.0F;            ///< metres from the own ship
    float bearing = 0.0F;          ///< degrees true from the own ship
    float tcpa = 0.0F;             ///< seconds to the closest point of approach; 0 or below: none ahead
    float cpa = kNoApproach;       ///< metres at that time, less the ship's length
    float closing_velocity = 0.0F; ///< metres a second, relative to the own ship
    CNEMA_AIS::CDimensions size;
    std::uint8_t nav_status = 0;
    const char* class_text = "";   ///< empty: not known yet, and then the target is not shown
    std::uint8_t last_message = 0; ///< its type
    bool alarmed = false;

    static CAISTarget* selected_target; ///< the one tapped last; null: none

    explicit CAISTarget(std::uint32_t new_mmsi);
    ~CAISTarget() override;

    /// Takes what the message says. A position out of range, or of exactly 0, 0, leaves everything that comes with it.
    void Take(const CNEMA_AIS::VDM& message);
    /// Takes what a list of targets says, as far as it is not known.
    void TakeListed(const std::string& listed_name, const std::string& listed_type, const std::string& call_sign);
    /// Derives directions, and status 1, from a new position; status 0 without one.
    void OnUpdatedPosition();
    /// No message came for a while: the ship stays where she was, without motion.
    void LoseContact();

    bool isClassB() const;
    bool isManOverboard() const { return mmsi_text.starts_with("972"); }
    /// Metres: a CPA below this is an alarm.
    float CpaLimit() const;
    /// Whether the ship comes near within twice the alarm's time and distance.
    bool isCollisionThreat() const;
    int Length() const { return size.to_bow + size.to_stern; }

    bool isVisible() override { return status != kNoFix && *class_text != 0; }
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override;
    void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const override;
    /// Selects the target and shows it on the status line.
    int onTap(CRastelleView* view, const FPoint& screen, const DblPoint& image) override;

private:
    void Take(const CNEMA_AIS::CPositionReport& report);
    void Take(const CNEMA_AIS::CStaticVoyageData& ship, const char* description);
    void Take(const CNEMA_AIS::CAircraft& aircraft);
    bool TakeClassB(const CNEMA_AIS::CMotion& motion);
    void Take(const CNEMA_AIS::CClassBExtended& ship, const char* description);
    void Take(const CNEMA_AIS::CAidToNavigation& aid);
    void Take(const CNEMA_AIS::CStaticDataReport& report, const char* description);

    bool TakePlace(const CNEMA_AIS::CPlace& place);
    bool TakeMotion(const CNEMA_AIS::CMotion& motion);
    void TakeName(const char* sent);
    void TakeSize(const CNEMA_AIS::CDimensions& sent);
    /// "97...": distress transmitters.
    void ClassifyTransmitter();
    void SetClassBDetails();
    /// Formats without the heap; only texts and whole numbers.
    void SetDetails(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

/// Whether a received position is one: in range by magnitude, and not exactly 0, 0.
bool IsPlace(const CNEMA_AIS::CPlace& place);
