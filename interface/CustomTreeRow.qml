import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Controls.impl
import QtQuick.Layouts
import com.zentara.zt

// One row: the arrow of a folder, check box, icon, text over subtext, buttons.
Rectangle {
    id: entry

    required property TreeView treeView
    required property bool expanded
    required property bool hasChildren
    required property int depth
    required property int row
    required property bool selected
    required property bool current
    required property string text
    required property string subtext
    required property string icon
    required property bool checkbox
    required property int checkedState
    required property var button
    required property int appearance

    // Asked for at each use: rows move.
    function modelIndex() { return treeView.modelIndex(Qt.point(0, row)) }

    implicitHeight: Math.max(ZTMetrics.touchRow, layout.implicitHeight + 8)
    color: selected ? Qt.tint(Material.background, "#20008000") : "transparent"
    border.width: current && treeView.activeFocus ? 2 : 0
    border.color: Material.accent
    Accessible.role: Accessible.TreeItem
    Accessible.name: subtext.length > 0 ? text + ", " + subtext : text
    Accessible.selected: selected
    Accessible.checkable: checkbox
    Accessible.checked: checkedState === Qt.Checked

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: (mouse) => {
            entry.treeView.forceActiveFocus(Qt.MouseFocusReason)
            if (mouse.button === Qt.RightButton)
                entry.treeView.openMenu(entry.modelIndex(), entry)
        }
        onClicked: (mouse) => {
            if (mouse.button === Qt.LeftButton)
                entry.treeView.choose(entry.modelIndex(), entry)
        }
        onDoubleClicked: (mouse) => {
            if (mouse.button !== Qt.LeftButton)
                return
            if (entry.hasChildren)
                entry.treeView.toggleExpanded(entry.row)
            else
                entry.treeView.tree.doubleClickedItem(entry.modelIndex(), entry)
        }
        onPressAndHold: (mouse) => {
            if (mouse.button === Qt.LeftButton)
                entry.treeView.openMenu(entry.modelIndex(), entry)
        }
    }
    RowLayout {
        id: layout
        anchors.fill: parent
        anchors.leftMargin: entry.depth * 20
        anchors.rightMargin: 8
        spacing: 4

        ZTIconButton {
            objectName: "expander"
            Layout.preferredWidth: ZTMetrics.touchTarget
            opacity: entry.hasChildren ? 1 : 0
            enabled: entry.hasChildren
            focusPolicy: Qt.NoFocus
            label: entry.expanded ? "Close" : "Open"
            rotation: entry.expanded ? 90 : 0
            icon.source: "qrc:/forward.svg"
            onClicked: entry.treeView.toggleExpanded(entry.row)
        }
        CheckBox {
            objectName: "checkBox"
            visible: entry.checkbox
            tristate: true
            checkState: entry.checkedState
            nextCheckState: () => entry.checkedState
            focusPolicy: Qt.NoFocus
            Accessible.name: entry.text
            onClicked: entry.treeView.tree.onToggleCheckstate(entry.modelIndex())
        }
        IconImage {
            visible: entry.icon.length > 0
            source: entry.icon
            sourceSize.width: ZTMetrics.iconSize
            sourceSize.height: ZTMetrics.iconSize
            color: entry.Material.foreground
        }
        Column {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            Label {
                objectName: "text"
                width: parent.width
                text: entry.text
                textFormat: Text.PlainText
                elide: Text.ElideRight
                opacity: entry.appearance === CZTPopupMenu.Disabled ? 0.5 : 1
                font.bold: entry.appearance === CZTPopupMenu.Current
                color: entry.appearance === CZTPopupMenu.Positive ? Material.color(Material.Green)
                       : entry.appearance === CZTPopupMenu.Caution ? Material.color(Material.DeepOrange)
                       : entry.Material.foreground
            }
            Label {
                width: parent.width
                visible: entry.subtext.length > 0
                text: entry.subtext
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font.pixelSize: 12
                color: Material.secondaryTextColor
            }
        }
        Repeater {
            model: entry.button
            ZTButton {
                required property int index
                required property string modelData
                objectName: "button" + index
                text: modelData
                focusPolicy: Qt.NoFocus
                onClicked: entry.treeView.tree.clickedItemButton(entry.modelIndex(), index, this)
            }
        }
    }
}
