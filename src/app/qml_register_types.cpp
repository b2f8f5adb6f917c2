#include "app/qml_register_types.h"

#include "app/about_dialog.h"
#include "app/display_settings_dialog.h"
#include "app/gps_setup_dialog.h"
#include "app/operating_system.h"
#include "app/zentara_app_model.h"
#include "chartview/qml_register_chartview.h"
#include "displayview/display_view_page.h"
#include "nmea/transports/qml_register_transports.h"
#include "overlays/dialogs/overlay_edit_dialogs.h"
#include "ui/qml_register_ui.h"

#include <QtQml>

void qml_register_types()
{
    constexpr const char* module = "com.zentara.zt";
    qml_register_ui();
    qml_register_chartview();
    qml_register_transports();
    qml_register_overlay_dialogs();
    qmlRegisterType<CDisplayViewPage>(module, 1, 0, "CDisplayViewPage");
    qmlRegisterType<CZentaraAppModel>(module, 1, 0, "CZentaraAppModel");
    qmlRegisterType<COperatingSystem>(module, 1, 0, "COperatingSystem");
    qmlRegisterType<CDlg_display_settings>(module, 1, 0, "CDlg_display_settings");
    qmlRegisterType<CDlg_gps_setup>(module, 1, 0, "CDlg_gps_setup");
    qmlRegisterType<CDlg_settings_about>(module, 1, 0, "CDlg_settings_about");
}
