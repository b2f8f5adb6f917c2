import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The fields that marks, routes and tracks share.
ColumnLayout {
    id: fields

    required property var dlg

    spacing: 2

    Label { text: "Name" }
    TextField {
        objectName: "name"
        Layout.fillWidth: true
        text: fields.dlg.name
        onTextEdited: fields.dlg.name = text
        onAccepted: fields.dlg.accept()
        maximumLength: 1000
        Accessible.name: "Name"
    }
    Label { text: "Description"; visible: !fields.dlg.isTemplate }
    TextArea {
        objectName: "comment"
        Layout.fillWidth: true
        visible: !fields.dlg.isTemplate
        text: fields.dlg.comment
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.Wrap
        onTextChanged: if (activeFocus) fields.dlg.comment = text
        KeyNavigation.priority: KeyNavigation.BeforeItem
        KeyNavigation.tab: folder
        Accessible.name: "Description"
    }
    Label { text: "Folder"; visible: folder.visible }
    TextField {
        id: folder
        objectName: "category"
        Layout.fillWidth: true
        text: fields.dlg.category
        placeholderText: "None"
        onTextEdited: fields.dlg.category = text
        onAccepted: fields.dlg.accept()
        maximumLength: 1000
        Accessible.name: "Folder"
    }
    CheckBox {
        objectName: "locked"
        text: "Locked"
        checked: fields.dlg.locked
        onToggled: fields.dlg.locked = checked
    }
    CheckBox {
        objectName: "keepHere"
        text: "Keep on this device only"
        checked: fields.dlg.keepHere
        onToggled: fields.dlg.keepHere = checked
    }
}
