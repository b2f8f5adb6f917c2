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
            RowLayout {
                spacing: 8
                visible: dlg.waypointIcon !== ""
                CPaintedIcon {
                    implicitWidth: 36
                    implicitHeight: 36
                    iconName: dlg.waypointIcon
                    color: dlg.waypointColour
                    Accessible.role: Accessible.Graphic
                    Accessible.name: "Icon " + dlg.waypointIcon
                }
                ZTButton {
                    objectName: "waypointIcon"
                    text: "Icon of all waypoints"
                    Layout.fillWidth: true
                    onClicked: dlg.chooseWaypointIcon()
                }
            }
            ZTButton {
                objectName: "waypointNames"
                visible: dlg.waypointIcon !== ""
                text: "Names of all waypoints"
                Layout.fillWidth: true
                onClicked: dlg.nameWaypoints()
            }
        }
    }
}
