import QtQuick
import "qrc:/"
import com.zentara.zt

// A dialog around a list.
CDlg_list {
    id: dlg

    ZTDialogVariableSize {
        title: "A list"
        showAcceptButton: false
        showRejectButton: false
        showCloseButton: true
        showMenuButton: true
        margins: 0
        dlgWidth: Math.min(600, availableWidth)
        dlgHeight: Math.min(850, availableHeight)
        onRejected: dlg.closeDialog(0)
        onMenuButtonClicked: (menu_button) => dlg.onHelp(menu_button.label)
        contents: CustomTreeView {
            objectName: "tree"
            model: CTreeModel { objectName: "model" }
        }
    }
}
