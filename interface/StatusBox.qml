import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// The status line: a rounded pale box at the top, hidden when there is nothing to say.
Rectangle {
    property alias text: label.text

    objectName: "statusBox"
    visible: label.text !== ""
    anchors.top: parent.top
    anchors.topMargin: 15
    anchors.horizontalCenter: parent.horizontalCenter
    width: label.width + 30
    height: label.height + 16
    radius: 8
    color: Qt.alpha(Material.background, 0.85)
    border.color: Qt.alpha(Material.foreground, 0.3)

    Label {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, window.width - 160)
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
