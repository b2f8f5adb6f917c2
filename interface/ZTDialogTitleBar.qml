import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import com.zentara.zt

// Close or reject at the left, the title, help, menu and accept at the right.
Item {
    id: bar

    required property Item frame

    implicitWidth: row.implicitWidth + 8
    implicitHeight: Math.max(row.implicitHeight, ZTMetrics.touchRow)

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        spacing: 0

        ZTIconButton {
            objectName: "closeButton"
            visible: bar.frame.showCloseButton
            label: "Close"
            icon.source: "qrc:/back.svg"
            onClicked: bar.frame.rejected()
        }
        ZTIconButton {
            objectName: "rejectButton"
            visible: bar.frame.showRejectButton
            label: "Cancel"
            icon.source: "qrc:/close.svg"
            onClicked: bar.frame.rejected()
        }
        Label {
            objectName: "dialogTitle"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            text: bar.frame.title
            textFormat: Text.PlainText
            font.pixelSize: 18
            font.weight: Font.Medium
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        ZTIconButton {
            objectName: "helpButton"
            visible: bar.frame.help.length > 0
            label: "Help"
            icon.source: "qrc:/Help.svg"
            onClicked: bar.frame.dialog.onHelp(bar.frame.help)
        }
        ZTIconButton {
            objectName: "menuButton"
            visible: bar.frame.showMenuButton
            label: "Menu"
            icon.source: "qrc:/menu.svg"
            onClicked: bar.frame.menuButtonClicked(this)
        }
        ZTIconButton {
            objectName: "acceptButton"
            visible: bar.frame.showAcceptButton
            label: "OK"
            icon.source: "qrc:/check.svg"
            icon.color: Material.accent
            onClicked: bar.frame.accepted()
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Material.dividerColor
    }
}
