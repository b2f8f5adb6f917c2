import QtQuick
import QtQuick.Controls
import com.zentara.zt

// What floats at the selected object: its label above, and for fingers the button of its menu below.
COverlayToolItem {
    id: tool

    objectName: "overlayTool"
    width: 120
    height: 63
    x: -1000
    y: -1000

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.verticalCenter
        anchors.bottomMargin: 18
        width: text.width + 12
        height: text.height + 6
        radius: 4
        color: "#C0C0C0C0"
        visible: tool.label !== ""

        Label {
            id: text
            objectName: "overlayToolLabel"
            anchors.centerIn: parent
            text: tool.label
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            color: "black"
        }
    }
    Item {
        objectName: "overlayToolPopup"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.verticalCenter
        anchors.topMargin: 14
        width: ZTMetrics.touchTarget
        height: ZTMetrics.touchTarget
        visible: tool.touchInterface
        Accessible.role: Accessible.Button
        Accessible.name: "Menu of " + tool.label
        Accessible.onPressAction: tool.onClickPopup()

        Image {
            anchors.centerIn: parent
            width: 32
            height: 32
            source: "qrc:/MarkToolPopup.png"
            mipmap: true
        }
        MouseArea {
            anchors.fill: parent
            onClicked: tool.onClickPopup()
        }
    }
}
