import QtQuick
import com.zentara.zt

// The buttons at the edges of the window.
Item {
    id: buttons

    property CZentaraAppModel app
    property bool sliding: false

    component TopButton: EdgeButton {
        anchors.top: parent.top
        anchors.margins: 8
    }
    component SideButton: EdgeButton {
        visible: buttons.app.hasPages
        enabled: !buttons.sliding
        anchors.verticalCenter: parent.verticalCenter
        anchors.margins: 8
    }

    TopButton {
        objectName: "menuButton"
        anchors.left: parent.left
        icon.source: buttons.app.showDoneButton ? "" : "qrc:/menu.svg"
        text: buttons.app.showDoneButton ? "Done" : ""
        Accessible.name: buttons.app.showDoneButton ? "Done" : "Main menu"
        onClicked: buttons.app.showDoneButton ? buttons.app.onDoneButton() : buttons.app.onMenuButtonClicked(this)
        onRightClicked: clicked()
    }
    TopButton {
        objectName: "overlaysButton"
        anchors.right: parent.right
        icon.source: buttons.app.arranging ? "" : "qrc:/Overlays.png"
        text: buttons.app.arranging ? "Pages" : ""
        Accessible.name: buttons.app.arranging ? "Pages" : "Overlays"
        onClicked: buttons.app.arranging ? buttons.app.onPagesButton(this) : buttons.app.onOverlaysButtonClicked(this)
        onRightClicked: clicked()
    }
    SideButton {
        objectName: "previousPageButton"
        anchors.left: parent.left
        text: "<<"
        Accessible.name: "Previous page"
        onClicked: buttons.app.previousPage()
    }
    SideButton {
        objectName: "nextPageButton"
        anchors.right: parent.right
        text: ">>"
        Accessible.name: "Next page"
        onClicked: buttons.app.nextPage()
    }
}
