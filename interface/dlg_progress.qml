import QtQuick
import QtQuick.Controls
import com.zentara.zt

CDlg_progress {
    id: dlg

    ZTDialogFixedSize {
        title: "Please wait..."
        showAcceptButton: false
        showRejectButton: false
        onRejected: if (dlg.cancelable) dlg.clickedCancel()
        contents: Column {
            width: 300
            spacing: 12

            Label {
                objectName: "message"
                width: parent.width
                text: dlg.message
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
            }
            ProgressBar {
                objectName: "bar"
                width: parent.width
                value: dlg.progress
                indeterminate: !dlg.total_known
                Accessible.name: "Progress"
            }
            Label {
                objectName: "timeRemaining"
                width: parent.width
                visible: dlg.time_remaining.length > 0
                text: "Estimated time remaining: " + dlg.time_remaining
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
            }
            Label {
                objectName: "plugInMessage"
                width: parent.width
                visible: !dlg.plug_in_message_hidden
                text: "This takes a while. Plug the device in, so that its battery lasts."
                wrapMode: Text.Wrap
            }
        }
        footer: ZTButton {
            objectName: "cancelButton"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: dlg.cancelable
            focus: true
            text: "Cancel"
            onClicked: dlg.clickedCancel()
        }
    }
}
