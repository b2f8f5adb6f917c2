import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

Rectangle {
    property real barWidth: 0
    property alias text: label.text
    property color barColor: Material.foreground

    visible: barWidth > 0
    width: barWidth
    height: 25
    border.width: 1
    border.color: barColor
    color: Qt.alpha(Material.background, 0.5)

    Label {
        id: label
        anchors.centerIn: parent
        color: parent.barColor
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: "Scale bar: " + text
    }
}
