import QtQuick
import com.zentara.zt

// Opens the menu of a display item: a right press, or a finger that rests on it.
Item {
    id: handler

    property Item target: parent

    anchors.fill: parent
    enabled: target.interactive

    TapHandler {
        acceptedButtons: Qt.RightButton
        onPressedChanged: if (pressed) handler.target.onRightClick(point.position.x, point.position.y)
    }
    TapHandler {
        acceptedDevices: PointerDevice.TouchScreen
        onLongPressed: handler.target.onRightClick(point.position.x, point.position.y)
    }
}
