import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import com.zentara.zt

// A folder to choose a file of, or to name one in.
CDlgQMLFileDialog {
    id: dlg

    ZTDialogVariableSize {
        title: dlg.title
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            spacing: 4

            RowLayout {
                ZTButton {
                    objectName: "up"
                    text: "Up"
                    enabled: dlg.folder !== "/"
                    Accessible.name: "To the folder above"
                    onClicked: dlg.goUp()
                }
                Label {
                    objectName: "folder"
                    Layout.fillWidth: true
                    text: dlg.folder
                    textFormat: Text.PlainText
                    elide: Text.ElideLeft
                    Accessible.name: "Folder " + text
                }
            }
            ListView {
                id: list
                objectName: "entries"
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                focus: !dlg.save
                activeFocusOnTab: true
                keyNavigationEnabled: true
                boundsBehavior: Flickable.StopAtBounds
                model: dlg.entries
                Accessible.role: Accessible.List
                Accessible.name: "Files"
                ScrollBar.vertical: ScrollBar {}
                Keys.onReturnPressed: dlg.activate(currentIndex)
                Keys.onEnterPressed: dlg.activate(currentIndex)
                Keys.onSpacePressed: dlg.activate(currentIndex)
                Keys.onPressed: (event) => {
                    if (event.key !== Qt.Key_Backspace || dlg.folder === "/")
                        return
                    dlg.goUp()
                    event.accepted = true
                }
                delegate: ItemDelegate {
                    required property int index
                    required property string modelData
                    readonly property bool isFolder: index < dlg.folderCount
                    objectName: "entry " + modelData
                    width: ListView.view.width
                    implicitHeight: ZTMetrics.touchRow
                    text: isFolder ? modelData + "/" : modelData
                    font.bold: isFolder
                    highlighted: !isFolder && modelData === dlg.fileName
                    focusPolicy: Qt.NoFocus
                    Accessible.name: (isFolder ? "Folder " : "") + modelData
                    background: Rectangle {
                        color: Material.foreground
                        opacity: parent.down ? 0.2 : parent.highlighted ? 0.12
                                             : list.activeFocus && parent.ListView.isCurrentItem ? 0.08 : 0
                    }
                    onClicked: {
                        list.currentIndex = index
                        dlg.activate(index)
                    }
                }
            }
            Label {
                objectName: "nothing"
                visible: list.count === 0
                text: dlg.extension.length > 0 && !dlg.allFiles ? "There is no ." + dlg.extension + " file here"
                                                                : "The folder is empty"
                textFormat: Text.PlainText
            }
            TextField {
                id: name
                objectName: "name"
                Layout.fillWidth: true
                visible: dlg.save
                focus: dlg.save
                text: dlg.fileName
                placeholderText: "Name"
                onTextEdited: dlg.fileName = text
                onAccepted: dlg.accept()
                Accessible.name: "Name"
            }
            Label {
                objectName: "problem"
                visible: dlg.problem.length > 0
                text: dlg.problem
                textFormat: Text.PlainText
                color: Material.color(Material.Red)
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            CheckBox {
                objectName: "allFiles"
                visible: dlg.extension.length > 0
                text: "All files"
                checked: dlg.allFiles
                onToggled: dlg.allFiles = checked
                Accessible.name: text
            }
        }
    }
}
