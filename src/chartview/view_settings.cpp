#include "chartview/view_settings.h"

#include "core/persistant_data.h"

namespace {

CViewSettings view_settings;

class ViewSettingsPersistant : public PersistantData {
public:
    ViewSettingsPersistant() : PersistantData("CRastelleView") {}

    void DeclareData() override
    {
        CViewSettings& s = view_settings;
        Declare("full_screen", s.full_screen);
        Declare("change_scale_by_zooming", s.change_scale_by_zooming);
        Declare("show_scale_bar", s.show_scale_bar);
        Declare("scale_bar_color", s.scale_bar_color);
        Declare("automatic_download", s.automatic_download);
        Declare("app_name", s.app_name);
        Declare("app_icon", s.app_icon);
        Declare("app_website", s.app_website);
        Declare("chb_hide", s.chb_hide);
        Declare("timeOfLastZoomHint", s.time_of_last_zoom_hint);
        if (s_saving) return; // the start position is given from outside, never by the program
        Declare("app_default_lat", s.app_default_lat);
        Declare("app_default_lon", s.app_default_lon);
    }
};

ViewSettingsPersistant view_settings_persistant;

} // namespace

CViewSettings& TheViewSettings()
{
    return view_settings;
}

void ViewSettingsChanged()
{
    view_settings_persistant.SetModified();
}

void SaveViewSettings()
{
    ViewSettingsChanged();
    PersistantData::SaveAll();
}
