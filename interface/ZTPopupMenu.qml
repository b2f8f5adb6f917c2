import QtQuick
import QtQuick.Controls
import com.zentara.zt

// Turns a finished tree into a menu and opens it; what was chosen is told when the menu has gone.
CZTPopupMenu {
    id: sheet

    property var chosen
    property Item draggedOver
    property var menus: [menu]

    function createMenuTree(parentIndex, parentMenu) {
        for (let row = 0; row < model.rowCount(parentIndex); ++row) {
            const index = model.index(row, 0, parentIndex)
            const look = {
                "iconSource": model.data(index, CZTPopupMenu.IconRole),
                "touch": usingTouch
            }
            const text = model.data(index, CZTPopupMenu.TextRole)
            const appearance = model.data(index, CZTPopupMenu.AppearanceRole)
            if (model.rowCount(index) > 0) {
                const submenu = submenuComponent.createObject(parentMenu, Object.assign(look, {
                    "title": text, "windowWidth": width
                }))
                createMenuTree(index, submenu)
                menus.push(submenu)
                parentMenu.addMenu(submenu)
            } else if (appearance === CZTPopupMenu.Separator) {
                parentMenu.addItem(separatorComponent.createObject())
            } else if (appearance !== CZTPopupMenu.Hidden) {
                parentMenu.addItem(entryComponent.createObject(null, Object.assign(look, {
                    "text": text, "appearance": appearance, "nodeIndex": index
                })))
            }
        }
        parentMenu.fitWidth()
    }

    // A submenu may take the place of its parent, which is then closed.
    function finishWhenClosed() {
        if (menus.some((open) => open.visible))
            return
        if (chosen !== undefined)
            itemTriggered(chosen)
        menuClosed()
    }

    anchors.fill: parent
    onDragged: (item) => {
        if (draggedOver)
            draggedOver.highlighted = false
        draggedOver = item
        if (item)
            item.highlighted = item.enabled
    }
    Component.onCompleted: {
        if (title.length > 0)
            menu.addItem(titleComponent.createObject(null, {"text": title}))
        createMenuTree(model.index(-1, -1), menu)
        menu.popup(sheet, origin.x, origin.y)
    }

    ZTMenu {
        id: menu
        objectName: "menu"
        touch: sheet.usingTouch
        windowWidth: sheet.width
        onClosed: Qt.callLater(sheet.finishWhenClosed)
    }
    Component {
        id: titleComponent
        Label {
            leftPadding: 16
            rightPadding: 16
            topPadding: 10
            bottomPadding: 6
            textFormat: Text.PlainText
            font.bold: true
            elide: Text.ElideRight
        }
    }
    Component {
        id: submenuComponent
        ZTMenu {
            modal: !cascade // so that the pointer can move on to its parent's other entries
            onClosed: Qt.callLater(sheet.finishWhenClosed)
        }
    }
    Component {
        id: separatorComponent
        MenuSeparator {}
    }
    Component {
        id: entryComponent
        ZTMenuItem { onTriggered: sheet.chosen = nodeIndex }
    }
}
