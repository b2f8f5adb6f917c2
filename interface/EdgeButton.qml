import QtQuick
import QtQuick.Controls
import QtQuick.Controls.impl
import QtQuick.Controls.Material

// The shared style of the buttons over the map: round, or rounded for a text, and translucent.
AbstractButton {
    id: button

    property real side: Math.max(40, 9 * Screen.pixelDensity) // a fingertip: 9 mm at least
    signal rightClicked()

    implicitWidth: Math.max(side, implicitContentWidth + 24)
    implicitHeight: side
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    icon.width: 24
    icon.height: 24
    icon.color: Material.foreground
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: height / 2
        color: Qt.alpha(button.Material.background, button.down ? 0.95 : button.hovered ? 0.85 : 0.7)
        border.width: button.visualFocus ? 2 : 1
        border.color: button.visualFocus ? button.Material.accent : Qt.alpha(button.Material.foreground, 0.35)
    }
    contentItem: IconLabel {
        icon: button.icon
        text: button.text
        font: button.font
        color: button.Material.foreground
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        acceptedDevices: PointerDevice.Mouse
        onTapped: button.rightClicked()
    }
}
