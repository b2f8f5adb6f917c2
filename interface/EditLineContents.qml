import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The contents of the dialogs of a route and of a track.
ColumnLayout {
    id: edit

    required property var dlg

    width: 320
    spacing: 2

    ProblemLabel { text: edit.dlg.problem }
    RowLayout {
        spacing: 8
        LinePreview {
            Layout.fillWidth: true
            colour: edit.dlg.colour
            lineWidth: edit.dlg.lineWidth
            lineStyle: edit.dlg.lineStyle
        }
        ZTButton {
            objectName: "chooseLine"
            text: "Line"
            onClicked: edit.dlg.chooseLine()
        }
    }
    SyncableFields {
        dlg: edit.dlg
        Layout.fillWidth: true
    }
    Label {
        objectName: "figures"
        Layout.fillWidth: true
        visible: text.length > 0
        text: edit.dlg.figures.trim()
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        opacity: 0.8
    }
}
