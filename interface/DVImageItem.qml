import QtQuick
import com.zentara.zt

// A static image, whole or filling the item.
CImageItem {
    id: item

    Image {
        objectName: "picture"
        anchors.fill: parent
        source: item.imageSource
        fillMode: item.fill ? Image.PreserveAspectCrop : Image.PreserveAspectFit
        asynchronous: true
    }
    ItemMenuHandler {}
}
