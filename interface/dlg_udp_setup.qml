import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
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
            Label {
                objectName: "problem"
                visible: dlg.problem.length > 0
                text: dlg.problem
                color: Material.color(Material.Red)
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
    }
}
