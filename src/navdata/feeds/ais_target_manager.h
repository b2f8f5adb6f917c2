#pragma once

#include "core/heartbeat.h"
#include "core/simple_grid.h"
#include "navdata/feeds/ais_target.h"
#include "overlays/overlay_source.h"

#include <list>
#include <string>
#include <unordered_map>

/// Keeps every station heard by AIS, warns of those that come too near, and forgets those that fall silent. The own
/// ship's AIS is a source of her position while there is no other. An alarm's id is the MMSI. Main thread only.
///
/// A target in steady state costs no allocation per message.
class CAISTargetManager : public Listener<CNEMA_AIS::VDM>,
                          public Listener<CNEMA_AIS::VDO>,
                          public Listener<CDataGPSPosition>,
                          public CHeartbeat::Counter,
                          public IOverlaySource {
public:
    class Persistant;
    class SettingsType;

    static CAISTargetManager the_manager;

    static constexpr double kMetresPerSecondPerKnot = 0.5144445; ///< in every sum of courses and times

    /// More are not kept: the one silent for longest goes first, but none that is alarmed.
    static constexpr std::size_t kMostTargets = 20'000;
    /// Marks that are made in one day, UTC, for persons overboard.
    static constexpr int kMostMarksADay = 100;

    // Settings
    static float cpa_alarm_distance;             ///< metres
    static float cpa_classB_distance;            ///< metres
    static float cpa_alarm_time;                 ///< seconds
    static float cpa_min_closing_velocity_knots; ///< knots
    static bool alarm_beep;                      ///< collisions notify; they turn red in any case
    static bool record_tracks;                   ///< kept for its users; nothing acts on it
    static bool show_ais_range_ring;
    static bool enable_settings; ///< the settings menu has an entry; set when the first target comes

    CAISTargetManager();
    ~CAISTargetManager() override;

    void OnUpdate(CNEMA_AIS::VDM& message) override;
    void OnUpdate(CNEMA_AIS::VDO& message) override;
    void OnUpdate(CDataGPSPosition& position) override;
    /// Every two minutes: what was silent for 366 seconds loses contact, for 600 it is removed.
    void OnHeartbeat() override;

    /// Range, bearing, CPA and TCPA from the own ship, and the alarm that follows from them. The own position is known.
    void detect_collision(CAISTarget& target);
    /// Takes the list of targets (XML) of a Vesper AIS unit. False, and nothing is taken, when the file is missing,
    /// above 16 MiB, damaged, or no such list.
    bool ReadInstantTargets(const std::string& path);

    /// Null when that station is not known.
    CAISTarget* Find(std::uint32_t mmsi);
    std::size_t Count() const { return by_mmsi.size(); }
    /// Removes every target, as if it had been silent.
    void Clear();
    void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override;

private:
    using Targets = std::list<CAISTarget>;

    /// The target of that MMSI, made if need be, and heard now (seconds); null when no more are kept.
    CAISTarget* Hear(std::uint32_t mmsi, double now);
    bool MakeRoom();
    void Remove(Targets::iterator target);
    void Publish(CAISTarget& target);
    void EnableSettings();
    void UpdateApproach(CAISTarget& target) const;
    void WarnOfCollision(CAISTarget& target) const;
    void WarnOfManOverboard(CAISTarget& target);
    void MarkManOverboard(const CAISTarget& target);
    bool MayMakeMark();

    Targets targets; ///< the one silent for longest first
    std::unordered_map<std::uint32_t, Targets::iterator> by_mmsi;
    CSimpleGrid grid;       ///< origin at the own ship
    bool own_known = false; ///< the own position is known now
    float own_east = 0.0F;  ///< own velocity, metres a second
    float own_north = 0.0F;
    double marks_day = 0.0; ///< days since 1970 of the marks counted
    int marks_made = 0;
};
