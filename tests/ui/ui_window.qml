import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// A window as the program's, with something to be clicked behind the dialogs.
ApplicationWindow {
    id: window

    property alias layer: dialogLayer
    property int pressed: 0
    property int wheeled: 0
    property int touched: 0

    visible: true
    width: 800
    height: 480
    font.capitalization: Font.MixedCase

    MultiPointTouchArea {
        anchors.fill: parent
        mouseEnabled: false
        onPressed: (points) => window.touched += points.length
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: ++window.pressed
        onWheel: ++window.wheeled
    }
    Button {
        objectName: "behind"
        text: "Behind"
        focus: true
        onClicked: ++window.pressed
    }
    FocusScope {
        id: dialogLayer
        anchors.fill: parent
    }
}
