import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_udp_setup {
    id: dlg

    ZTDialogFixedSize {
        id: frame
        title: "UDP Settings"
        onAccepted: dlg.accept(port.text)
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320

            Label {
                text: "Current network: " + dlg.network
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label { text: "Port: " }
            TextField {
                id: port
                objectName: "port"
                Layout.fillWidth: true
                focus: true
                text: dlg.port
                inputMethodHints: Qt.ImhDigitsOnly
                onAccepted: frame.accepted()
                Accessible.name: "Port"
            }
            ProblemLabel { text: dlg.problem }
        }
    }
}
