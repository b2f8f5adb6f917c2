#include "chartview/qml_register_chartview.h"

#include "chartview/map_settings.h"
#include "chartview/overlay_tool_item.h"
#include "chartview/rastelle_window.h"

#include <QtQml>

void qml_register_chartview()
{
    qmlRegisterType<CDVI_Rastelle_Window>("com.zentara.zt", 1, 0, "CDVI_Rastelle_Window");
    qmlRegisterType<COverlayToolItem>("com.zentara.zt", 1, 0, "COverlayToolItem");
    qmlRegisterType<CDlg_map_settings>("com.zentara.zt", 1, 0, "CDlg_map_settings");
}
