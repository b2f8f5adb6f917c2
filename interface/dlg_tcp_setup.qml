import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_tcp_setup {
    id: dlg

    ZTDialogFixedSize {
        id: frame
        title: "TCP Settings"
        onAccepted: dlg.accept(host.text, port.text, instant.checked, reconnect.checked)
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320

            Label {
                text: "Current network: " + dlg.network
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label { text: "Host/ IP Addr: " }
            TextField {
                id: host
                objectName: "host"
                Layout.fillWidth: true
                focus: true
                text: dlg.host
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
                onAccepted: frame.accepted()
                Accessible.name: "Host or IP address"
            }
            Label { text: "Port: " }
            TextField {
                id: port
                objectName: "port"
                Layout.fillWidth: true
                text: dlg.port
                inputMethodHints: Qt.ImhDigitsOnly
                onAccepted: frame.accepted()
                Accessible.name: "Port"
            }
            ProblemLabel { text: dlg.problem }
            RowLayout {
                Label {
                    text: "Instant Acquisition (Vesper): "
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                Switch {
                    id: instant
                    objectName: "instantAcquisition"
                    checked: dlg.instantAcquisition
                    Accessible.name: "Instant Acquisition"
                }
            }
            CheckBox {
                id: reconnect
                objectName: "reconnect"
                text: "Reconnect automatically"
                checked: dlg.reconnect
                Accessible.name: text
            }
        }
    }
}
