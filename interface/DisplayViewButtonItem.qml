import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import com.zentara.zt

// A button: the icon over the label.
CButtonAdaptor_q {
    id: item

    ZTButton {
        id: button
        objectName: "button"
        anchors.fill: parent
        enabled: item.enabled
        text: item.label
        onClicked: item.onClicked()
        contentItem: Item {
            Image {
                id: picture
                objectName: "picture"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: item.iconWidth > 0
                width: Math.min(item.iconWidth, parent.width)
                height: visible ? parent.height - (label.visible ? label.height : 0) : 0
                source: item.icon
                sourceSize.width: item.iconWidth
                fillMode: Image.PreserveAspectFit
            }
            Label {
                id: label
                objectName: "label"
                width: parent.width
                height: item.iconWidth > 0 ? Math.ceil(font.pixelSize * 1.4) : parent.height
                anchors.bottom: parent.bottom
                visible: item.label.length > 0
                text: item.label
                textFormat: Text.PlainText
                color: item.color.valid ? item.color : button.Material.foreground
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
}
