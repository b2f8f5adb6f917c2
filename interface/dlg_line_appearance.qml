import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_line_appearance {
    id: dlg

    ZTDialogFixedSize {
        title: "Line"
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320
            spacing: 4

            LinePreview {
                Layout.fillWidth: true
                colour: dlg.colour
                lineWidth: dlg.lineWidth
                lineStyle: dlg.lineStyle
            }
            Label { text: "Width" }
            Slider {
                objectName: "lineWidth"
                Layout.fillWidth: true
                from: 0.5
                to: dlg.widest
                stepSize: 0.5
                value: dlg.lineWidth
                onMoved: dlg.lineWidth = value
                Accessible.name: "Width of the line"
            }
            Label { text: "Style" }
            ComboBox {
                objectName: "lineStyle"
                Layout.fillWidth: true
                model: ["Solid", "Dashes", "Dots", "Dash and dot", "Dash and two dots"]
                currentIndex: dlg.lineStyle
                onActivated: (index) => dlg.lineStyle = index
                Accessible.name: "Style of the line"
            }
            ColourGrid {
                Layout.fillWidth: true
                current: dlg.colour
                onChosen: (colour) => dlg.colour = colour
            }
        }
    }
}
