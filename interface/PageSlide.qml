import QtQuick

// Slides one page out and the next one in.
Item {
    id: slide

    property int duration: 200
    property real span: 0
    property Item oldItem: null
    property Item newItem: null
    readonly property bool running: animation.running

    function start(old_item, new_item, direction) {
        animation.complete()
        oldItem = old_item
        newItem = new_item
        new_item.x = span * direction
        new_item.visible = true
        slideOut.to = -span * direction
        animation.start()
    }

    ParallelAnimation {
        id: animation
        NumberAnimation { id: slideOut; target: slide.oldItem; property: "x"; duration: slide.duration }
        NumberAnimation { target: slide.newItem; property: "x"; to: 0; duration: slide.duration }
        onFinished: {
            slide.oldItem.visible = false
            theApp.detachItem(slide.oldItem)
            slide.newItem.animationFinished()
        }
    }
}
