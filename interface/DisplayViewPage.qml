import QtQuick
import com.zentara.zt

// The place for one page; what a page shows reads these properties from its parent.
CDisplayViewPage {
    property bool interactive_controls_visible: true
    property real interactive_control_opacity: 1
    property point safeAreaBottomLeft: Qt.point(0, 0)
    property point safeAreaBottomRight: Qt.point(0, 0)
}
