import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// The banner of alarms: on top of everything, one button acknowledges them all.
CNotificationDlg {
    id: dlg

    objectName: "notification"
    z: 100
    width: Math.min(500, parent ? parent.width - 20 : 500)
    height: Math.min(Math.max(150, heading.height + lines.implicitHeight + ok.height + 44),
                     parent ? parent.height - 40 : 150)
    anchors.top: parent ? parent.top : undefined
    anchors.topMargin: 20
    anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title + ". " + message
    onFocusWanted: ok.forceActiveFocus()

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: dlg.Material.dialogColor
        border.width: 3
        border.color: Material.color(Material.Red)
    }
    MouseArea { anchors.fill: parent } // nothing behind the banner is pressed through it

    Label {
        id: heading
        x: 16
        y: 12
        width: parent.width - 32
        text: dlg.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        font.bold: true
        font.pixelSize: 18
    }
    ScrollView {
        anchors { left: heading.left; right: heading.right; top: heading.bottom; topMargin: 8; bottom: ok.top; bottomMargin: 8 }
        clip: true
        contentWidth: availableWidth

        Label {
            id: lines
            width: heading.width
            text: dlg.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
        }
    }
    ZTButton {
        id: ok
        objectName: "acknowledge"
        anchors { right: parent.right; bottom: parent.bottom; margins: 8 }
        width: 96
        text: "OK"
        highlighted: true
        onClicked: dlg.onButtonClicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
    }
}
