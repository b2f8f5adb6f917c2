import QtQuick

// The opacities of the controls that fade when nobody touches the screen.
Item {
    id: fading

    property real interactive_control_opacity: 1
    property real unlock_button_opacity: 1
    readonly property bool visibleEnough: interactive_control_opacity > 0.1
    property bool timeoutEnabled: true
    property int fadeDuration: 200
    property int idleTime: 5000
    property int fadeOutTime: 3000

    function setInteractiveTimer() {
        fadeDuration = 200
        controlsOut.stop()
        unlockOut.stop()
        if (interactive_control_opacity < 1) controlsIn.start()
        if (unlock_button_opacity < 1) unlockIn.start()
        timer.restart()
    }

    function enableTimeout(enable) {
        timeoutEnabled = enable
        setInteractiveTimer()
    }

    Timer {
        id: timer
        interval: fading.idleTime
        onTriggered: {
            if (!fading.timeoutEnabled) return
            fading.fadeDuration = fading.fadeOutTime
            controlsIn.stop()
            unlockIn.stop()
            controlsOut.start()
            unlockOut.start()
        }
    }

    component Fade: NumberAnimation {
        target: fading
        duration: fading.fadeDuration
    }
    Fade { id: controlsIn; property: "interactive_control_opacity"; to: 1 }
    Fade { id: controlsOut; property: "interactive_control_opacity"; to: 0 }
    Fade { id: unlockIn; property: "unlock_button_opacity"; to: 1 }
    Fade { id: unlockOut; property: "unlock_button_opacity"; to: 0 }
}
