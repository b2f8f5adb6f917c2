import QtQuick
import QtQuick.Controls
import com.zentara.zt

// A read-out of several lines, which fit by their size.
CTextViewAdaptor {
    id: item

    Accessible.role: Accessible.StaticText
    Accessible.name: value

    Label {
        objectName: "value"
        anchors.fill: parent
        anchors.margins: 6
        text: item.value
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        fontSizeMode: Text.Fit
        minimumPixelSize: 10
        font.pixelSize: 24
        verticalAlignment: Text.AlignVCenter
    }
    ItemMenuHandler {}
}
