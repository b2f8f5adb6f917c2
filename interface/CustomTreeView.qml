import QtQuick
import QtQuick.Controls
import com.zentara.zt

// A list of folders and entries, served by a CTreeModel given as `model`. It keeps the model's expanded and selected
// states; clicks are told through the model's signals.
TreeView {
    id: view

    property bool multiSelect: false
    readonly property CTreeModel tree: model

    function choose(index, row) {
        selectionModel.setCurrentIndex(index, ItemSelectionModel.NoUpdate)
        selectionModel.select(index, multiSelect ? ItemSelectionModel.Toggle : ItemSelectionModel.ClearAndSelect)
        tree.clickedItem(index, row)
    }
    function openMenu(index, row) {
        selectionModel.setCurrentIndex(index, ItemSelectionModel.NoUpdate)
        tree.rightClickedItem(index, row)
    }
    function currentEntry() {
        return itemAtCell(Qt.point(0, rowAtIndex(selectionModel.currentIndex)))
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    columnWidthProvider: () => width
    onWidthChanged: forceLayout()
    selectionModel: tree ? tree.selectionModel : null
    Accessible.role: Accessible.Tree
    ScrollBar.vertical: ScrollBar { focusPolicy: Qt.NoFocus }
    onExpanded: (row, depth) => tree.onExpanded(modelIndex(Qt.point(0, row)), true)
    onCollapsed: (row, recursively) => tree.onExpanded(modelIndex(Qt.point(0, row)), false)
    onActiveFocusChanged: {
        if (activeFocus && rows > 0 && !selectionModel.currentIndex.valid)
            selectionModel.setCurrentIndex(modelIndex(Qt.point(0, 0)), ItemSelectionModel.NoUpdate)
    }
    Keys.onReturnPressed: choose(selectionModel.currentIndex, currentEntry())
    Keys.onEnterPressed: choose(selectionModel.currentIndex, currentEntry())
    Keys.onMenuPressed: openMenu(selectionModel.currentIndex, currentEntry())
    Keys.onSpacePressed: tree.onToggleCheckstate(selectionModel.currentIndex)

    Connections {
        target: view.tree
        function onExpandNode(index) {
            const row = view.rowAtIndex(index)
            if (row >= 0 && !view.isExpanded(row))
                view.expand(row)
        }
    }

    delegate: CustomTreeRow {}
}
