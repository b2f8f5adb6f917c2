#include "core/persistant_data.h"
#include "overlays/mark_manager.h"

// The definitions of this file are in the order of their use.

bool CDataGotoMark::auto_reverse = false;
bool CMarkManager::enable_alarm_notifications = true;
int CMarkManager::sync_mode = 0;
bool CMarkManager::route_create_hint = true;
bool CMarkManager::route_hint = true;
bool CMarkManager::optimize_route_tip = true;

namespace {

constexpr const char* kMarkNames = "P#";
constexpr const char* kRouteNames = "R#";
constexpr const char* kWaypointNames = "%RP#";

} // namespace

CMarkManager::CMarkManager()
    : marks_file(*this)
    , routes_file(*this)
    , default_mark(kMarkNames, "Flag", GraphicsColor(1.0F, 0.0F, 0.0F))
    , default_route(kRouteNames, new COverlayMark(kWaypointNames, "Dot", GraphicsColor(0.0F, 0.0F, 1.0F)))
{}

CMarkManager g_mark_manager;

class CMarkManager::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CMarkManager") {}

    void DeclareData() override
    {
        COverlayMark& mark = g_mark_manager.DefaultMark();
        COverlayMark& waypoint = g_mark_manager.DefaultWaypoint();
        Declare("route_create_hint", route_create_hint);
        Declare("route_hint", route_hint);
        Declare("optimize_route_tip", optimize_route_tip);
        Declare("default_mark_icon", mark.icon_name);
        Declare("default_wp_icon", waypoint.icon_name);
        Declare("default_mark_color2", mark.colour);
        Declare("default_wp_color2", waypoint.colour);
        Declare("notifications", enable_alarm_notifications);
        Declare("sync_mode", sync_mode);
        Declare("auto_reverse", CDataGotoMark::auto_reverse);
        if (s_saving) return;
        TakeIcon(mark);
        TakeIcon(waypoint);
        mark.name = kMarkNames;
        g_mark_manager.DefaultRoute().name = kRouteNames;
        waypoint.name = kWaypointNames;
    }

    static Persistant mark_settings;

private:
    /// The name from the file names an icon of the program, whatever it says.
    static void TakeIcon(COverlayMark& mark)
    {
        const std::string icon = CIconManager::to_file_name(mark.icon_name);
        const GraphicsColor colour = mark.colour;
        mark.SetIcon(icon, colour);
    }
};

CMarkManager::Persistant CMarkManager::Persistant::mark_settings;

void CMarkManager::SettingsChanged()
{
    Persistant::mark_settings.SetModified();
}
