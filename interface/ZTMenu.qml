import QtQuick
import QtQuick.Controls
import com.zentara.zt

// A menu or submenu as wide as its widest entry.
Menu {
    id: menu

    property string iconSource
    property bool touch: false
    property real windowWidth: 640

    // Submenus open beside their parent where there is room, otherwise in its place.
    cascade: windowWidth >= 640 && !touch
    margins: 4
    modal: true
    dim: false
    focus: true
    exit: Transition {}
    delegate: ZTMenuItem {}

    function fitWidth() {
        let widest = 160
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth)
        contentWidth = Math.min(widest, windowWidth - 2 * margins - leftPadding - rightPadding)
    }
}
