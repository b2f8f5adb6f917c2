import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import com.zentara.zt

CDlg_icon {
    id: dlg

    ZTDialogFixedSize {
        title: "Icon"
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320
            spacing: 8

            Flow {
                Layout.fillWidth: true
                spacing: 4
                Accessible.role: Accessible.Grouping
                Accessible.name: "Icons"

                Repeater {
                    model: dlg.icons
                    AbstractButton {
                        id: choice
                        required property string modelData
                        readonly property bool isCurrent: dlg.iconName === modelData

                        objectName: "icon " + modelData
                        implicitWidth: ZTMetrics.touchTarget + 4
                        implicitHeight: ZTMetrics.touchTarget + 4
                        focusPolicy: Qt.StrongFocus
                        Accessible.role: Accessible.RadioButton
                        Accessible.name: modelData.replace("_", " ")
                        Accessible.checkable: true
                        Accessible.checked: isCurrent
                        onClicked: dlg.iconName = modelData
                        contentItem: CPaintedIcon {
                            iconName: choice.modelData
                            color: dlg.colour
                        }
                        padding: 6
                        background: Rectangle {
                            radius: 4
                            color: choice.isCurrent ? Qt.alpha(choice.Material.accent, 0.3) : "transparent"
                            border.width: choice.visualFocus ? 2 : choice.isCurrent ? 1 : 0
                            border.color: choice.Material.accent
                        }
                    }
                }
            }
            ColourGrid {
                Layout.fillWidth: true
                current: dlg.colour
                onChosen: (colour) => dlg.colour = colour
            }
        }
    }
}
