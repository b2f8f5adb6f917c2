import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Controls.impl
import com.zentara.zt

// One entry of a menu, or the entry that opens a submenu. Texts are shown as they stand.
MenuItem {
    id: entry

    readonly property bool isMenuEntry: true
    property var nodeIndex
    property int appearance: CZTPopupMenu.Normal
    property string iconSource: subMenu ? subMenu.iconSource : ""
    property bool touch: subMenu ? subMenu.touch : false
    readonly property bool current: appearance === CZTPopupMenu.Current

    enabled: appearance !== CZTPopupMenu.Disabled
    // What the whole text needs, not what a narrower menu leaves it.
    implicitWidth: leftPadding + (iconSource.length > 0 ? ZTMetrics.iconSize + content.spacing : 0) + label.implicitWidth + rightPadding
    implicitHeight: Math.max(touch ? ZTMetrics.touchRow : ZTMetrics.touchTarget,
                             content.implicitHeight + topPadding + bottomPadding)
    verticalPadding: touch ? 10 : 6
    leftPadding: 16
    rightPadding: subMenu ? 40 : 16
    font.bold: current
    Accessible.name: text
    Accessible.checked: current
    Material.foreground: appearance === CZTPopupMenu.Positive ? Material.Green
                         : appearance === CZTPopupMenu.Caution ? Material.DeepOrange : undefined
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Row {
        id: content
        spacing: 12
        IconImage {
            anchors.verticalCenter: parent.verticalCenter
            visible: entry.iconSource.length > 0
            source: entry.iconSource
            sourceSize.width: ZTMetrics.iconSize
            sourceSize.height: ZTMetrics.iconSize
            color: entry.highlighted ? entry.Material.foreground : "grey"
        }
        Label {
            id: label
            objectName: "label"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, entry.availableWidth - x)
            text: entry.text
            textFormat: Text.PlainText
            font: entry.font
            color: entry.enabled ? entry.Material.foreground : entry.Material.hintTextColor
            elide: Text.ElideRight
        }
    }
    Rectangle {
        z: -1
        anchors.fill: parent
        visible: entry.current
        color: Qt.alpha(entry.Material.accent, 0.18)
    }
    // Either button chooses.
    TapHandler {
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: entry.clicked()
    }
}
