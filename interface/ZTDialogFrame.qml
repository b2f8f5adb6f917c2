import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// What the two frames of the dialogs share: the dimmed window behind, the panel that grows out of the point of the
// click, the title bar. A frame is a child of the dialog, whose file handles `accepted` and `rejected`.
FocusScope {
    id: frame

    property CZTDialog dialog: parent
    property string title: "Dialog"
    property string help
    property Item contents
    property bool showAcceptButton: true
    property bool showRejectButton: true
    property bool showCloseButton: false
    property bool showMenuButton: false
    property real margins: ZTMetrics.margin
    property real dlgWidth
    property real dlgHeight
    property real gap: 0
    readonly property real availableWidth: width - dialog.safeAreaLeft - dialog.safeAreaRight - 2 * gap
    readonly property real availableHeight: height - dialog.safeAreaTop - dialog.safeAreaBottom - 2 * gap
    readonly property bool fullPage: panel.width >= width && panel.height >= height
    readonly property real titleWidth: titleBar.implicitWidth
    readonly property real titleHeight: titleBar.height
    readonly property alias opened: frame.fullyOpen
    property bool fullyOpen: growth === 1
    property real growth: 0
    default property alias body: bodyHolder.data

    signal accepted
    signal rejected
    signal menuButtonClicked(Item menu_button)

    anchors.fill: parent
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: title
    Keys.onEscapePressed: rejected()
    Keys.onBackPressed: rejected()

    NumberAnimation on growth {
        id: opening
        to: 1
        duration: 180
        easing.type: Easing.OutCubic
    }
    NumberAnimation {
        id: closing
        target: frame
        property: "growth"
        to: 0
        duration: 120
        easing.type: Easing.InCubic
        onFinished: frame.dialog.destroyDialog()
    }
    Connections {
        target: frame.dialog
        function onRemoveDialog() {
            opening.stop()
            closing.start()
        }
    }

    Rectangle {
        objectName: "dim"
        anchors.fill: parent
        color: "#808080"
        opacity: 0.55 * frame.growth
    }
    MultiPointTouchArea {
        anchors.fill: parent
        mouseEnabled: false
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: (wheel) => wheel.accepted = true
    }

    Rectangle {
        id: panel
        objectName: "panel"
        width: Math.min(frame.dlgWidth, frame.availableWidth)
        height: Math.min(frame.dlgHeight, frame.availableHeight)
        x: Math.round(frame.dialog.safeAreaLeft + frame.gap + (frame.availableWidth - width) / 2)
        y: Math.round(frame.dialog.safeAreaTop + frame.gap + (frame.availableHeight - height) / 2)
        radius: frame.fullPage ? 0 : 8
        color: Material.dialogColor
        border.width: frame.fullPage ? 0 : 1
        border.color: Material.dividerColor
        enabled: !frame.dialog || !closing.running
        transform: Scale {
            origin.x: frame.dialog.origin.x - panel.x
            origin.y: frame.dialog.origin.y - panel.y
            xScale: Math.max(frame.growth, 0.01)
            yScale: Math.max(frame.growth, 0.01)
        }

        ZTDialogTitleBar {
            id: titleBar
            width: parent.width
            frame: frame
        }
        Item {
            id: bodyHolder
            anchors.fill: parent
            anchors.topMargin: titleBar.height
        }
    }
}
