import QtQuick
import QtQuick.Controls
import "qrc:/"
import com.zentara.zt

// A dialog higher than any small window.
CDlg_form {
    id: dlg

    ZTDialogFixedSize {
        title: "A form"
        help: "some_tag"
        onAccepted: dlg.closeDialog(1)
        onRejected: dlg.closeDialog(0)
        contents: Column {
            width: 700
            Repeater {
                model: 20
                Switch {
                    required property int index
                    objectName: "switch" + index
                    text: "Switch " + index
                }
            }
        }
    }
}
