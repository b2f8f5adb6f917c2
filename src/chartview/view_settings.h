#pragma once

#include "core/graphics_color.h"

#include <set>
#include <string>

/// The settings that all map views share, kept in the settings group "CRastelleView".
struct CViewSettings {
    bool full_screen = false;            ///< the window fills the screen
    bool change_scale_by_zooming = true; ///< step zoom changes to other charts
    bool show_scale_bar = true;
    GraphicsColor scale_bar_color{0.0F, 0.0F, 0.0F, 0.0F}; ///< transparent: the theme's foreground
    bool automatic_download = true;                        ///< chunked charts fetch missing data
    std::string app_name;                                  ///< shown for the application
    std::string app_icon;
    std::string app_website;
    std::set<std::string> chb_hide;      ///< entries hidden in the map list
    double time_of_last_zoom_hint = 0.0; ///< seconds since 1970
    double app_default_lat = 43.04144;   ///< start position, degrees; loaded but never saved
    double app_default_lon = -31.7395;
};

CViewSettings& TheViewSettings();
/// To be called after a change: the group is saved with the next saving of settings.
void ViewSettingsChanged();
/// ViewSettingsChanged() and saves at once.
void SaveViewSettings();
