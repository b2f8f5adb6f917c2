import QtQuick
import com.zentara.zt

CDlg_edit_track {
    id: dlg

    ZTDialogFixedSize {
        title: dlg.title
        onAccepted: dlg.accept()
        onRejected: dlg.closeDialog(1)
        contents: EditLineContents { dlg: dlg }
    }
}
