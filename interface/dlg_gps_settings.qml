import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import com.zentara.zt

CDlg_gps_setup {
    id: dlg

    ZTDialogFixedSize {
        title: "GPS Setup"
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320
            spacing: 2

            CheckBox {
                objectName: "showVector"
                text: "Velocity Vector"
                checked: dlg.show_vector
                onToggled: dlg.show_vector = checked
            }
            RowLayout {
                Layout.leftMargin: 24
                visible: dlg.show_vector
                Label { text: "Vector Scale: " }
                TextField {
                    objectName: "vectorScale"
                    Layout.preferredWidth: 90
                    text: dlg.vector_scale
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    onTextEdited: dlg.vector_scale = text
                    onAccepted: dlg.accept()
                    Accessible.name: "Vector scale, minutes"
                }
                Label { text: "minutes" }
            }
            CheckBox {
                objectName: "showHeading"
                text: "Compass"
                visible: dlg.has_compass
                checked: dlg.show_heading
                onToggled: dlg.show_heading = checked
            }
            CheckBox {
                objectName: "recordInBackground"
                text: "Record track in Background"
                checked: dlg.record_in_background
                onToggled: dlg.record_in_background = checked
            }
            CheckBox {
                objectName: "showRings"
                text: "Range Ring"
                checked: dlg.show_rings
                onToggled: dlg.show_rings = checked
            }
            RowLayout {
                Layout.leftMargin: 24
                visible: dlg.show_rings
                Label { text: "Radius: " }
                TextField {
                    objectName: "ringRadius"
                    Layout.preferredWidth: 90
                    text: dlg.ring_radius
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    onTextEdited: dlg.ring_radius = text
                    onAccepted: dlg.accept()
                    Accessible.name: "Radius of the rings, " + dlg.distance_unit
                }
                Label { text: dlg.distance_unit }
            }
            RowLayout {
                Layout.leftMargin: 24
                visible: dlg.show_rings
                Label { text: "Rings: " }
                SpinBox {
                    objectName: "ringCount"
                    from: 1
                    to: dlg.most_rings
                    value: dlg.ring_count
                    onValueModified: dlg.ring_count = value
                    Accessible.name: "Number of rings"
                }
            }
            ProblemLabel { text: dlg.problem }
            RowLayout {
                Label { text: "Colour: " }
                Rectangle {
                    objectName: "colourShown"
                    implicitWidth: 48
                    implicitHeight: 24
                    radius: 4
                    color: dlg.colour
                    border.color: Material.foreground
                }
                ZTButton {
                    objectName: "changeColour"
                    text: "Change"
                    onClicked: colours.visible = !colours.visible
                    Accessible.name: "Change the colour"
                }
            }
            ColourGrid {
                id: colours
                objectName: "colours"
                visible: false
                Layout.fillWidth: true
                current: dlg.colour
                onChosen: (colour) => dlg.colour = colour
            }
            ZTButton {
                objectName: "dataConnection"
                text: "Data Connection"
                Layout.fillWidth: true
                onClicked: dlg.onClickedDataConnection(this)
            }
            ZTButton {
                objectName: "debug"
                text: dlg.debug_label
                visible: dlg.connection_debuggable
                Layout.fillWidth: true
                onClicked: dlg.onClickedDebug()
            }
        }
    }
}
