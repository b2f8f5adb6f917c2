import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CMessageBoxDlg {
    id: dlg

    // The button that Return presses: the first one, unless Tab or an arrow went to another.
    readonly property int chosen: button1.activeFocus ? 1 : button2.activeFocus ? 2 : 0

    component Choice: ZTButton {
        required property int number
        visible: text.length > 0
        highlighted: dlg.chosen === number
        Layout.fillWidth: true
        Layout.maximumWidth: Math.max(implicitWidth, 120)
        Layout.alignment: Qt.AlignHCenter
        onClicked: dlg.onButtonClicked(number)
    }

    ZTDialogFixedSize {
        title: dlg.title
        showAcceptButton: false
        showRejectButton: false
        onRejected: dlg.onButtonClicked(1)
        Keys.onReturnPressed: dlg.onButtonClicked(dlg.chosen)
        Keys.onEnterPressed: dlg.onButtonClicked(dlg.chosen)
        contents: Label {
            objectName: "message"
            width: Math.min(implicitWidth, 300)
            text: dlg.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        footer: RowLayout {
            anchors.fill: parent
            spacing: 8
            Choice {
                id: button0
                objectName: "button0"
                number: 0
                text: dlg.button0
                focus: true
                KeyNavigation.right: button1.visible ? button1 : null
            }
            Choice {
                id: button1
                objectName: "button1"
                number: 1
                text: dlg.button1
                KeyNavigation.right: button2.visible ? button2 : null
            }
            Choice {
                id: button2
                objectName: "button2"
                number: 2
                text: dlg.button2
            }
        }
    }
}
