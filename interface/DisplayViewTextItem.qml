import QtQuick
import QtQuick.Controls
import com.zentara.zt

// A read-out: the title small at the top, the value as large as the item allows.
CTextViewAdaptor {
    id: item

    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + value

    Label {
        id: titleLabel
        objectName: "title"
        x: 6
        y: 2
        width: parent.width - 12
        height: Math.max(14, parent.height * 0.22)
        text: item.title
        textFormat: Text.PlainText
        fontSizeMode: Text.Fit
        minimumPixelSize: 9
        font.pixelSize: 18
        elide: Text.ElideRight
    }
    Label {
        objectName: "value"
        anchors.fill: parent
        anchors.topMargin: titleLabel.height
        anchors.margins: 4
        text: item.value
        textFormat: Text.PlainText
        fontSizeMode: Text.Fit
        minimumPixelSize: 10
        font.pixelSize: Math.max(12, height)
        font.bold: true
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    ItemMenuHandler {}
}
