#include "app/app_data.h"

#include "app/zentara_app_model.h"
#include "chart/chart_list.h"
#include "core/persistant_data.h"
#include "overlays/gps_position.h"
#include "ui/saveable.h"

void load_app_data()
{
    if (p_chart_list == nullptr) p_chart_list = new CChartList;
    COverlayGPSPosition::LoadOdometer();
}

bool save_all_app_data()
{
    CSaveable::SaveAllOpen();
    COverlayGPSPosition::SaveOdometer();
    PersistantData::SaveAll();
    if (theApp != nullptr) theApp->SavePages();
    return true;
}
