#include "app/app_data.h"

#include "app/zentara_app_model.h"
#include "chart/chart_list.h"
#include "core/persistant_data.h"
#include "overlays/gps_position.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "ui/saveable.h"

void load_app_data()
{
    if (p_chart_list == nullptr) p_chart_list = new CChartList;
    g_mark_manager.LoadFromFile();
    g_track_manager.LoadFromFile();
    COverlayGPSPosition::LoadOdometer();
}

bool save_all_app_data()
{
    CSaveable::SaveAllOpen();
    g_mark_manager.SaveIfNeeded();
    g_track_manager.SaveIfNeeded();
    COverlayGPSPosition::SaveOdometer();
    PersistantData::SaveAll();
    if (theApp != nullptr) theApp->SavePages();
    return true;
}
