import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.zentara.zt

CDlg_map_settings {
    id: dlg

    ZTDialogFixedSize {
        title: "Map Settings"
        showRejectButton: false
        onAccepted: dlg.closeDialog(0)
        onRejected: dlg.closeDialog(0)
        contents: ColumnLayout {
            width: 320

            Switch {
                objectName: "changeScale"
                text: "Change charts by zooming"
                checked: dlg.changeScaleByZooming
                onToggled: dlg.changeScaleByZooming = checked
            }
            Switch {
                objectName: "automaticDownload"
                text: "Download charts as needed"
                checked: dlg.automaticDownload
                onToggled: dlg.automaticDownload = checked
            }
            Switch {
                objectName: "scaleBar"
                text: "Scale bar"
                checked: dlg.scaleBar
                onToggled: dlg.scaleBar = checked
            }
            Label {
                text: "Chart types shown"
                visible: types.count > 0
            }
            Repeater {
                id: types
                model: dlg.chartTypes
                CheckBox {
                    required property string modelData
                    objectName: "type " + modelData
                    text: modelData !== "" ? modelData : "Other"
                    checked: dlg.isTypeShown(modelData)
                    onToggled: {
                        dlg.showType(modelData, checked)
                        checked = dlg.isTypeShown(modelData)
                    }
                }
            }
        }
    }
}
