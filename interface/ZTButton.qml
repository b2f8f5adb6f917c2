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
    Material.elevation: 0
    Accessible.name: text.trim()
    contentItem: Label {
        text: control.text
        textFormat: Text.PlainText
        font: control.font
        color: control.highlighted ? control.Material.primaryHighlightedTextColor : control.Material.foreground
        opacity: control.enabled ? 1 : 0.4
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
