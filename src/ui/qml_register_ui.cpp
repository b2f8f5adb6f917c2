#include "ui/qml_register_ui.h"

#include "ui/button_adaptor.h"
#include "ui/file_dialogs.h"
#include "ui/image_item.h"
#include "ui/message_boxes.h"
#include "ui/notification_banner.h"
#include "ui/painted_icon.h"
#include "ui/progress_dialog.h"
#include "ui/rename_dialog.h"
#include "ui/text_view_adaptor.h"
#include "ui/tree_model.h"
#include "ui/zt_metrics.h"
#include "ui/zt_popup_menu.h"

#include <QtQml>

void qml_register_ui()
{
    constexpr const char* module = "com.zentara.zt";
    qmlRegisterSingletonType<CZTMetrics>(module, 1, 0, "ZTMetrics",
                                         [](QQmlEngine*, QJSEngine*) -> QObject* { return new CZTMetrics; });
    qmlRegisterType<CZTDialog>(module, 1, 0, "CZTDialog");
    qmlRegisterType<CMessageBoxDlg>(module, 1, 0, "CMessageBoxDlg");
    qmlRegisterType<CNotificationDlg>(module, 1, 0, "CNotificationDlg");
    qmlRegisterType<CDlg_progress>(module, 1, 0, "CDlg_progress");
    qmlRegisterType<CDlg_Rename>(module, 1, 0, "CDlg_Rename");
    qmlRegisterType<CDlgQMLFileDialog>(module, 1, 0, "CDlgQMLFileDialog");
    qmlRegisterType<CZTPopupMenu>(module, 1, 0, "CZTPopupMenu");
    qmlRegisterType<CTreeModel>(module, 1, 0, "CTreeModel");
    qmlRegisterType<CTextViewAdaptor>(module, 1, 0, "CTextViewAdaptor");
    qmlRegisterType<CButtonAdaptor_q>(module, 1, 0, "CButtonAdaptor_q");
    qmlRegisterType<CImageItem>(module, 1, 0, "CImageItem");
    qmlRegisterType<CPaintedIcon>(module, 1, 0, "CPaintedIcon");
    qmlRegisterAnonymousType<QItemSelectionModel>(module, 1);
}
