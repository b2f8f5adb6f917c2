import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_serial_setup {
    id: dlg

    ZTDialogFixedSize {
        title: "Serial Port setup"
        onAccepted: dlg.accept(port.currentIndex, baud.currentIndex)
        onRejected: dlg.closeDialog(1)
        contents: ColumnLayout {
            width: 320

            Label { text: "Port: " }
            ComboBox {
                id: port
                objectName: "port"
                Layout.fillWidth: true
                focus: true
                model: dlg.ports
                currentIndex: dlg.portRow
                displayText: currentIndex < 0 ? "Choose a port" : currentText
                Accessible.name: "Port"
            }
            Label { text: "Baud rate: " }
            ComboBox {
                id: baud
                objectName: "baud"
                Layout.fillWidth: true
                model: dlg.bauds
                currentIndex: dlg.baudRow
                displayText: currentIndex < 0 ? "Choose a baud rate" : currentText
                Accessible.name: "Baud rate"
            }
        }
    }
}
