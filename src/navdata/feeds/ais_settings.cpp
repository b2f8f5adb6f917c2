#include "navdata/feeds/ais_settings.h"

#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "ui/action_sheet.h"

#include <algorithm>

float CAISTargetManager::cpa_alarm_distance = 300.0F;
float CAISTargetManager::cpa_classB_distance = 100.0F;
float CAISTargetManager::cpa_alarm_time = 1200.0F;
float CAISTargetManager::cpa_min_closing_velocity_knots = 1.0F;
bool CAISTargetManager::alarm_beep = true;
bool CAISTargetManager::record_tracks = false;
bool CAISTargetManager::show_ais_range_ring = false;
bool CAISTargetManager::enable_settings = false;

// Behind its settings, which the static objects below use.
CAISTargetManager CAISTargetManager::the_manager;

namespace {

constexpr int kSettingsOrder = 8;

// What a settings file may say at most.
constexpr float kGreatestDistance = 1e6F; ///< metres
constexpr float kLongestTime = 86400.0F;  ///< seconds
constexpr float kGreatestVelocity = 100.0F;

} // namespace

class CAISTargetManager::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CAISTargetManager") {}

    void DeclareData() override
    {
        Declare("alarm_distance", cpa_alarm_distance);
        Declare("cpa_classB_distance", cpa_classB_distance);
        Declare("alarm_time", cpa_alarm_time);
        Declare("min_closing_velocity_knots", cpa_min_closing_velocity_knots);
        Declare("alarm_beep", alarm_beep);
        Declare("record_tracks", record_tracks);
        Declare("show_ais_range_ring", show_ais_range_ring);
        Declare("enable_settings", enable_settings);
        if (!s_saving) KeepInBounds();
    }

    static Persistant ais_settings;

private:
    static void KeepInBounds()
    {
        cpa_alarm_distance = std::clamp(cpa_alarm_distance, 0.0F, kGreatestDistance);
        cpa_classB_distance = std::clamp(cpa_classB_distance, 0.0F, kGreatestDistance);
        cpa_alarm_time = std::clamp(cpa_alarm_time, 0.0F, kLongestTime);
        cpa_min_closing_velocity_knots = std::clamp(cpa_min_closing_velocity_knots, 0.0F, kGreatestVelocity);
    }
};

CAISTargetManager::Persistant CAISTargetManager::Persistant::ais_settings;

namespace {

const CAISTargetManager::SettingsType ais_settings_entry;

} // namespace

CAISTargetManager::SettingsType::SettingsType() : CGlobalSettingsType("AIS Settings", kSettingsOrder) {}

void CAISTargetManager::SettingsType::addMenu(CMenuTree* menu, const std::string& path)
{
    if (!enable_settings) return;
    menu->Add(
        path + name, [this] { showDialog(ZT_HWND()); }, "qrc:/ais.svg");
}

void CAISTargetManager::SettingsType::showDialog(ZT_HWND parent)
{
    ShowMessage(parent, "Stub", "AIS Settings is not implemented");
}

void CAISTargetManager::EnableSettings()
{
    if (enable_settings) return;
    enable_settings = true;
    Persistant::ais_settings.SetModified();
    PersistantData::SaveAll();
}
