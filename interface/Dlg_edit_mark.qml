import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_edit_mark {
    id: dlg

    ZTDialogFixedSize {
        title: dlg.title
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320
            spacing: 2

            ProblemLabel { text: dlg.problem }
            RowLayout {
                spacing: 8
                CPaintedIcon {
                    objectName: "iconShown"
                    implicitWidth: 36
                    implicitHeight: 36
                    iconName: dlg.iconName
                    color: dlg.colour
                    Accessible.role: Accessible.Graphic
                    Accessible.name: "Icon " + dlg.iconName
                }
                ZTButton {
                    objectName: "chooseIcon"
                    text: "Icon and colour"
                    Layout.fillWidth: true
                    onClicked: dlg.chooseIcon()
                }
            }
            Label { text: "Position (" + dlg.positionFormat + ")"; visible: positionField.visible }
            TextField {
                id: positionField
                objectName: "position"
                Layout.fillWidth: true
                visible: !dlg.isTemplate
                text: dlg.position
                onTextEdited: dlg.position = text
                onAccepted: dlg.accept()
                Accessible.name: "Position"
            }
            SyncableFields {
                dlg: dlg
                Layout.fillWidth: true
            }
            Label { text: "Web link" }
            TextField {
                objectName: "link"
                Layout.fillWidth: true
                text: dlg.link
                inputMethodHints: Qt.ImhUrlCharactersOnly
                onTextEdited: dlg.link = text
                onAccepted: dlg.accept()
                Accessible.name: "Web link"
            }
            CheckBox {
                objectName: "hasAlarm"
                text: "Alarm"
                visible: !dlg.isWaypoint
                checked: dlg.hasAlarm
                onToggled: dlg.hasAlarm = checked
            }
            GridLayout {
                Layout.leftMargin: 24
                columns: 3
                visible: dlg.hasAlarm && !dlg.isWaypoint

                Label { text: "Nearer than" }
                TextField {
                    objectName: "proximity"
                    Layout.preferredWidth: 90
                    text: dlg.proximity
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    onTextEdited: dlg.proximity = text
                    Accessible.name: "Proximity alarm, metres"
                }
                Label { text: "m" }
                Label { text: "Anchor: farther than" }
                TextField {
                    objectName: "anchor"
                    Layout.preferredWidth: 90
                    text: dlg.anchor
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    onTextEdited: dlg.anchor = text
                    Accessible.name: "Anchor alarm, metres"
                }
                Label { text: "m" }
            }
        }
    }
}
