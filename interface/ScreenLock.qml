import QtQuick
import QtQuick.Controls

// Takes all input while the screen is locked; the button appears on an interaction and has to be held.
FocusScope {
    id: lock

    property bool locked_screen: false
    property real unlock_button_opacity: 1
    signal interaction()

    visible: locked_screen
    onLocked_screenChanged: if (locked_screen) {
        forceActiveFocus()
        interaction()
    }
    Keys.onPressed: (event) => {
        lock.interaction()
        event.accepted = true
    }

    MultiPointTouchArea {
        anchors.fill: parent
        mouseEnabled: false
        onPressed: lock.interaction()
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onPressed: lock.interaction()
        onPositionChanged: lock.interaction()
        onWheel: (wheel) => { wheel.accepted = true }
    }
    DelayButton {
        objectName: "unlockButton"
        anchors.centerIn: parent
        text: "Unlock"
        delay: 500
        focus: true
        padding: 20
        visible: opacity > 0.1
        opacity: lock.unlock_button_opacity
        Accessible.name: "Unlock"
        onActivated: {
            progress = 0
            checked = false
            lock.locked_screen = false
        }
    }
}
