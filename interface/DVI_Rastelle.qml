import QtQuick
import QtQuick.Controls.Material
import com.zentara.zt

// A map with its input, edge buttons and scale bar.
CDVI_Rastelle_Window {
    id: map

    readonly property bool controlsVisible: (parent?.interactive_controls_visible ?? true) && !arranging
    readonly property real controlOpacity: parent?.interactive_control_opacity ?? 1
    readonly property point insetLeft: parent?.safeAreaBottomLeft ?? Qt.point(0, 0)
    readonly property point insetRight: parent?.safeAreaBottomRight ?? Qt.point(0, 0)

    anchors.fill: parent
    Accessible.role: Accessible.Canvas
    Accessible.name: "Map"
    Keys.onPressed: (event) => { event.accepted = onKeyPressed(event.key) }

    MultiPointTouchArea {
        id: fingers

        property int count: 0

        function update(points) {
            const before = count
            if (points.length > 2) return
            count = points.length
            const a = points[0]
            const b = points[1]
            if (count === 2) {
                const dx = a.x - b.x
                const dy = a.y - b.y
                const begin = before < 2
                const pinch = begin ? map.onPinchBegin : map.onPinchMove
                pinch((a.x + b.x) / 2, (a.y + b.y) / 2, dx * dx + dy * dy)
            } else if (before === 2) {
                map.onPinchEnd()
            } else if (count === 1) {
                if (before === 0) map.onSingleTouchDown(a.x, a.y)
                else map.onSingleTouchMove(a.x, a.y)
            } else if (before === 1) {
                map.onSingleTouchUp()
            }
        }

        anchors.fill: parent
        mouseEnabled: false
        maximumTouchPoints: 10
        onTouchUpdated: (points) => update(points)
        onCanceled: update([])
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton | Qt.MiddleButton
        scrollGestureEnabled: true
        onPressed: (mouse) => {
            map.forceActiveFocus()
            mouse.accepted = mouse.source === Qt.MouseEventNotSynthesized
                          && map.onPressed(mouse.button, mouse.x, mouse.y)
        }
        onPressAndHold: (mouse) => map.onPressAndHold(mouse.button, mouse.x, mouse.y)
        onReleased: (mouse) => map.onReleased(mouse.button, mouse.x, mouse.y)
        onPositionChanged: (mouse) => map.onMouseDragged(mouse.x, mouse.y)
        onWheel: (wheel) => map.onScrollGesture(wheel.pixelDelta, wheel.inverted)
    }

    MouseArea {
        property bool hasTrackPad: false

        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        scrollGestureEnabled: false
        onWheel: (wheel) => {
            const dx = wheel.angleDelta.x
            const dy = wheel.angleDelta.y
            const dsq = dx * dx + dy * dy
            if (dsq === 14400) hasTrackPad = false
            else if (dsq < 484) hasTrackPad = true
            if (hasTrackPad) map.onScrollGesture(Qt.point(dx, dy), true)
            else map.onMouseWheel(-dy, wheel.x, wheel.y)
        }
    }

    component MapButton: EdgeButton {
        anchors.bottom: parent.bottom
        anchors.margins: 8
        visible: map.controlsVisible
        opacity: map.controlOpacity * (hovered ? 0.9 : 0.8)
    }
    MapButton {
        objectName: "mapsButton"
        anchors.left: parent.left
        anchors.leftMargin: 8 + map.insetLeft.x
        anchors.bottomMargin: 8 + map.insetLeft.y
        icon.source: "qrc:/OpenMap.png"
        Accessible.name: "Maps"
        onClicked: map.onClickedMaps(this)
    }
    MapButton {
        objectName: "lockGPSButton"
        anchors.right: parent.right
        anchors.rightMargin: 8 + map.insetRight.x
        anchors.bottomMargin: 8 + map.insetRight.y
        icon.source: map.gpsLockedOn ? "qrc:/LockGPSon.svg" : "qrc:/LockGPS.svg"
        Accessible.name: map.gpsLockedOn ? "Following own position" : "Follow own position"
        onClicked: map.onClickedLockGPS()
    }

    ScaleBar {
        objectName: "scaleBar"
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 25
        anchors.horizontalCenter: parent.horizontalCenter
        barWidth: map.scaleBarWidth
        text: map.scaleBarText
        barColor: map.scaleBarColor.a > 0 ? map.scaleBarColor : Material.foreground
    }
}
