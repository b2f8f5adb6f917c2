import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_Rename {
    id: dlg

    ZTDialogFixedSize {
        id: frame
        title: dlg.title
        onAccepted: dlg.accept(nameField.text)
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320

            TextField {
                id: nameField
                objectName: "name"
                Layout.fillWidth: true
                focus: true
                text: dlg.name
                onAccepted: frame.accepted()
                Accessible.name: "Name"
            }
            Label {
                Layout.fillWidth: true
                visible: text.length > 0
                text: dlg.hint
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                opacity: 0.8
            }
            ProblemLabel { text: dlg.problem }
        }
    }
}
