import QtQuick
import QtQuick.Shapes

// A line as it will look on the chart.
Rectangle {
    id: preview

    property color colour
    property real lineWidth: 2
    property int lineStyle: 0
    readonly property var dashes: [[], [4, 3], [1, 3], [4, 3, 1, 3], [4, 3, 1, 3, 1, 3]]

    objectName: "linePreview"
    implicitHeight: 40
    radius: 4
    color: "#d3e6f3"
    Accessible.role: Accessible.Graphic
    Accessible.name: "The line as it will look"

    Shape {
        anchors.fill: parent
        ShapePath {
            strokeColor: preview.colour
            strokeWidth: preview.lineWidth
            strokeStyle: preview.lineStyle === 0 ? ShapePath.SolidLine : ShapePath.DashLine
            dashPattern: preview.lineStyle === 0 ? [4, 2] : preview.dashes[preview.lineStyle]
            fillColor: "transparent"
            capStyle: ShapePath.FlatCap
            startX: 16
            startY: 28
            PathLine { x: preview.width / 2; y: 12 }
            PathLine { x: preview.width - 16; y: 24 }
        }
    }
}
