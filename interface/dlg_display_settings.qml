import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_display_settings {
    id: dlg

    ZTDialogFixedSize {
        title: "Display"
        showRejectButton: false
        onAccepted: dlg.closeDialog(0)
        onRejected: dlg.closeDialog(0)
        contents: ColumnLayout {
            width: 320

            Label { text: "Theme" }
            ComboBox {
                objectName: "theme"
                Layout.fillWidth: true
                model: ["Light", "Dark", "As the system has it"]
                currentIndex: dlg.theme
                onActivated: (index) => dlg.theme = index
                Accessible.name: "Theme"
            }
            Label { text: "Dimming" }
            Slider {
                objectName: "dimmer"
                Layout.fillWidth: true
                to: dlg.darkest
                value: dlg.dimmer
                stepSize: 0.05
                onMoved: dlg.dimmer = value
                Accessible.name: "Dimming"
            }
            Switch {
                objectName: "fullScreen"
                text: "Full screen"
                checked: dlg.fullScreen
                onToggled: dlg.fullScreen = checked
            }
            Switch {
                objectName: "scaleBar"
                text: "Scale bar"
                checked: dlg.scaleBar
                onToggled: dlg.scaleBar = checked
            }
            Switch {
                objectName: "alarmSound"
                text: "Alarm sound"
                checked: dlg.alarmSound
                onToggled: dlg.alarmSound = checked
            }
        }
    }
}
