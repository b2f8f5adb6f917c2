import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// What keeps a dialog from being accepted.
Label {
    objectName: "problem"
    Layout.fillWidth: true
    visible: text.length > 0
    textFormat: Text.PlainText
    color: Material.color(Material.Red)
    wrapMode: Text.Wrap
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
