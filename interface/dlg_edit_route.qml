import QtQuick
import QtQuick.Layouts
import com.zentara.zt

CDlg_edit_route {
    id: dlg

    ZTDialogFixedSize {
        title: dlg.title
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: EditLineContents {
            dlg: dlg
            ZTButton {
                objectName: "waypointIcon"
                text: "Icon of all waypoints"
                Layout.fillWidth: true
                onClicked: dlg.chooseWaypointIcon()
            }
        }
    }
}
