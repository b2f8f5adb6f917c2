import QtQuick
import com.zentara.zt

// A frame of the size that the dialog asks for; its contents fill it and scroll by themselves.
ZTDialogFrame {
    id: variable

    dlgWidth: Math.min(600, availableWidth)
    dlgHeight: Math.min(700, availableHeight)
    onContentsChanged: place()
    Component.onCompleted: place()

    function place() {
        if (!contents)
            return
        contents.parent = holder
        contents.anchors.fill = holder
    }

    Item {
        id: holder
        anchors.fill: parent
        anchors.margins: variable.margins
    }
}
