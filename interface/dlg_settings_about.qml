import QtQuick
import QtQuick.Controls
import com.zentara.zt

CDlg_settings_about {
    id: dlg

    ZTDialogFixedSize {
        title: "About"
        showRejectButton: false
        onAccepted: dlg.closeDialog(0)
        onRejected: dlg.closeDialog(0)
        contents: Column {
            spacing: 12
            width: 420

            component Paragraph: Label {
                width: parent.width
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
            }
            Paragraph { text: dlg.version; font.pixelSize: 20; font.bold: true }
            Paragraph { text: dlg.notice; font.bold: true }
            Paragraph { text: dlg.licence }
            Paragraph { text: dlg.sources }
        }
    }
}
