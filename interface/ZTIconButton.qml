import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// A button that is only an icon; `label` is what it is called.
ToolButton {
    id: control

    property string label

    implicitWidth: Math.max(ZTMetrics.touchTarget, 48)
    implicitHeight: implicitWidth
    icon.width: ZTMetrics.iconSize
    icon.height: ZTMetrics.iconSize
    icon.color: Material.foreground
    display: AbstractButton.IconOnly
    focusPolicy: Qt.StrongFocus
    Accessible.name: label
    ToolTip.text: label
    ToolTip.visible: hovered && label.length > 0
    ToolTip.delay: 800
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
