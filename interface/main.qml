import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Qt.labs.settings
import com.zentara.zt

ApplicationWindow {
    id: window

    readonly property int slideTime: 200

    title: "Zentara for All"
    font.pixelSize: 15
    font.capitalization: Font.MixedCase
    minimumWidth: 320
    minimumHeight: 240
    visible: true
    visibility: theApp.fullScreen ? Window.FullScreen : Window.AutomaticVisibility
    Material.theme: theApp.darkTheme ? Material.Dark : Material.Light
    Material.accent: Material.Teal

    function placeWindow() {
        const saved = Qt.rect(settings.x, settings.y, settings.w, settings.h)
        const place = operatingSystem.windowGeometry(saved, Qt.size(settings.availableWidth, settings.availableHeight),
                                                     Qt.size(Screen.desktopAvailableWidth, Screen.desktopAvailableHeight))
        window.x = place.x
        window.y = place.y
        window.width = place.width
        window.height = place.height
    }

    function saveGeometry() {
        if (!operatingSystem.isDesktop || window.visibility !== Window.Windowed || theApp.fullScreen)
            return
        settings.x = window.x
        settings.y = window.y
        settings.w = window.width
        settings.h = window.height
        settings.availableWidth = Screen.desktopAvailableWidth
        settings.availableHeight = Screen.desktopAvailableHeight
    }

    onVisibilityChanged: (now) => { if (now === Window.Windowed && operatingSystem.isDesktop) placeWindow() }
    onClosing: saveGeometry()
    Component.onCompleted: {
        theApp.theme = settings.theme
        theApp.attachCurrentPageToItem(dv_page1, dv_page2)
        controls.setInteractiveTimer()
    }

    Settings {
        id: settings
        property int x: 0
        property int y: 0
        property int w: 0
        property int h: 0
        property int availableWidth: 0
        property int availableHeight: 0
        property int theme: 2 // 0 light, 1 dark, 2 as the system has it
    }

    COperatingSystem { id: operatingSystem }

    FadingControls { id: controls; objectName: "controls" }

    CZentaraAppModel {
        id: theApp
        objectName: "theApp"
        anchors.fill: parent
        dialogParent: dlgParent
        onWidthChanged: widthOrHeightChanged()
        onHeightChanged: widthOrHeightChanged()
        onThemeChanged: settings.theme = theme
        onEnableInactivityTimeout: (enable_timeout) => controls.enableTimeout(enable_timeout)
        onSetInteractive: controls.setInteractiveTimer()
        onScreenLocked: lock.locked_screen = true
        onTransition: (old_item, new_item, slide_direction) => slide.start(old_item, new_item, slide_direction)
        onQuitting: window.saveGeometry()
    }

    Item {
        id: pages
        anchors.fill: parent
        clip: true

        component Page: DisplayViewPage {
            width: pages.width
            height: pages.height
            interactive_controls_visible: controls.visibleEnough
            interactive_control_opacity: controls.interactive_control_opacity
        }
        Page { id: dv_page1; objectName: "dv_page1" }
        Page { id: dv_page2; objectName: "dv_page2"; x: pages.width; visible: false }
        PageSlide { id: slide; duration: window.slideTime; span: pages.width }
    }

    WindowButtons {
        anchors.fill: parent
        app: theApp
        sliding: slide.running
        visible: controls.visibleEnough && !lock.locked_screen
        opacity: controls.interactive_control_opacity
    }

    StatusBox { text: theApp.statusText }

    MouseArea {
        objectName: "interactionWatcher"
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onPressed: (mouse) => {
            theApp.usingTouch = mouse.source !== Qt.MouseEventNotSynthesized
            controls.setInteractiveTimer()
            mouse.accepted = false
        }
        onPositionChanged: (mouse) => {
            controls.setInteractiveTimer()
            mouse.accepted = false
        }
        onWheel: (wheel) => {
            controls.setInteractiveTimer()
            wheel.accepted = false
        }
    }

    FocusScope {
        id: dlgParent
        objectName: "dlgParent"
        anchors.fill: parent
    }

    ScreenLock {
        id: lock
        anchors.fill: parent
        unlock_button_opacity: controls.unlock_button_opacity
        onInteraction: controls.setInteractiveTimer()
    }

    Rectangle {
        id: screen_dimmer_overlay
        objectName: "screen_dimmer_overlay"
        anchors.fill: parent
        color: "black"
        opacity: theApp.screenDimmer
        visible: opacity > 0
    }
}
