import QtQuick
import QtQuick.Controls
import com.zentara.zt

// A frame as large as its contents and footer, or as the window allows: the contents then scroll.
ZTDialogFrame {
    id: fixed

    property Item footer
    // A width that the contents set themselves, 0 when they are as wide as they like.
    property real contentsOwnWidth: 0
    property bool measured: false
    readonly property real contentsWanted: contentsOwnWidth > 0 ? contentsOwnWidth
                                                                : contents ? contents.implicitWidth : 0
    readonly property real footerHeight: footer ? footer.implicitHeight + margins : 0

    function fitContents() {
        if (measured && contents)
            contents.width = Math.min(contentsWanted, scroller.width)
    }
    function showFocused(item) {
        if (!item || !contents)
            return
        for (let above = item; above !== contents; above = above.parent) {
            if (!above || !above.parent)
                return
        }
        const top = item.mapToItem(contents, 0, 0).y
        const lowest = scroller.contentHeight - scroller.height
        if (top < scroller.contentY)
            scroller.contentY = Math.max(0, top)
        else if (top + item.height > scroller.contentY + scroller.height)
            scroller.contentY = Math.min(lowest, top + item.height - scroller.height)
    }

    gap: 8
    dlgWidth: Math.max(contentsWanted, footer ? footer.implicitWidth : 0, titleWidth - 2 * margins, 220) + 2 * margins
    dlgHeight: titleHeight + (contents ? contents.height : 0) + footerHeight + 2 * margins
    Keys.onUpPressed: scrollBar.decrease()
    Keys.onDownPressed: scrollBar.increase()
    onContentsWantedChanged: fitContents()
    Component.onCompleted: {
        if (contents) {
            contentsOwnWidth = contents.width !== contents.implicitWidth ? contents.width : 0
            contents.parent = holder
        }
        measured = true
        fitContents()
    }

    Connections {
        target: fixed.Window.window
        function onActiveFocusItemChanged() { fixed.showFocused(fixed.Window.window.activeFocusItem) }
    }

    Flickable {
        id: scroller
        objectName: "scroller"
        anchors.fill: parent
        anchors.margins: fixed.margins
        anchors.bottomMargin: fixed.margins + fixed.footerHeight
        contentWidth: width
        contentHeight: holder.height
        interactive: contentHeight > height + 0.5
        clip: interactive
        onWidthChanged: fixed.fitContents()
        ScrollBar.vertical: ScrollBar {
            id: scrollBar
            policy: scroller.interactive ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
            parent: scroller.parent
            anchors.top: scroller.top
            anchors.bottom: scroller.bottom
            anchors.left: scroller.right
            focusPolicy: Qt.NoFocus
        }

        Item {
            id: holder
            x: Math.max(0, (scroller.width - width) / 2)
            width: fixed.contents ? fixed.contents.width : 0
            height: fixed.contents ? fixed.contents.height : 0
        }
    }
    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: fixed.margins
        height: fixed.footer ? fixed.footer.implicitHeight : 0
        data: fixed.footer ? [fixed.footer] : []
    }
}
