import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// A button with a text, which is shown as it stands.
Button {
    id: control

    implicitHeight: Math.max(ZTMetrics.touchTarget, 48)
    leftPadding: 12
    rightPadding: 12
    font.capitalization: Font.MixedCase
    focusPolicy: Qt.StrongFocus
    Accessible.name: text.trim()
    topInset: 4
    bottomInset: 4
    contentItem: Label {
        text: control.text
        textFormat: Text.PlainText
        font: control.font
        color: control.highlighted ? control.Material.dialogColor : control.Material.foreground
        opacity: control.enabled ? 1 : 0.4
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 4
        color: control.highlighted ? control.Material.accent : "transparent"
        border.width: control.visualFocus ? 2 : 1
        border.color: control.visualFocus ? control.Material.foreground : control.Material.dividerColor

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: control.Material.foreground
            opacity: control.down ? 0.2 : control.hovered ? 0.08 : 0
        }
    }
}
