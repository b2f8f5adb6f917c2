import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// A choice of colours that stand out on a chart, each with its name. Tab goes from one to the next.
Flow {
    id: grid

    property color current
    signal chosen(color colour)

    spacing: 4
    Accessible.role: Accessible.Grouping
    Accessible.name: "Colours"

    Repeater {
        model: [
            {"name": "Red", "value": "#ff0000"}, {"name": "Orange", "value": "#ff8000"},
            {"name": "Yellow", "value": "#ffd800"}, {"name": "Green", "value": "#00a000"},
            {"name": "Cyan", "value": "#00b4c8"}, {"name": "Blue", "value": "#0040ff"},
            {"name": "Purple", "value": "#8000c0"}, {"name": "Magenta", "value": "#ff00c0"},
            {"name": "Brown", "value": "#804000"}, {"name": "Black", "value": "#000000"},
            {"name": "Grey", "value": "#606060"}, {"name": "White", "value": "#ffffff"}
        ]
        AbstractButton {
            id: swatch
            required property var modelData
            readonly property bool isCurrent: Qt.colorEqual(grid.current, modelData.value)

            objectName: "colour " + modelData.name
            implicitWidth: ZTMetrics.touchTarget
            implicitHeight: ZTMetrics.touchTarget
            focusPolicy: Qt.StrongFocus
            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData.name
            Accessible.checkable: true
            Accessible.checked: isCurrent
            onClicked: grid.chosen(modelData.value)
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            contentItem: Item {}
            background: Rectangle {
                radius: 4
                color: swatch.modelData.value
                border.width: swatch.isCurrent || swatch.visualFocus ? 3 : 1
                border.color: swatch.visualFocus ? swatch.Material.accent : swatch.Material.foreground
            }
        }
    }
}
