#pragma once

#include <string>

#include <QString>

class QQmlEngine;
class QQuickItem;

/// What the dialogs, menus and messages need of the application that they run in. The application sets its own once
/// its engine stands; a test sets another. Main thread only.
class IUiContext {
public:
    virtual ~IUiContext() = default;

    /// The engine that dialogs and menus are made with.
    virtual QQmlEngine* Engine() = 0;
    /// The item of the main window that holds the dialogs; null as long as there is no window.
    virtual QQuickItem* DialogParent() = 0;
    /// A pair that nests: an open dialog or menu keeps the controls of the window from fading.
    virtual void stopInactivityTimeout() = 0;
    virtual void startInactivityTimeout() = 0;
    virtual void showHelpForTag(const QString& tag) = 0;
    /// The text at the top centre of the window; empty hides it.
    virtual void SetStatusText(const QString& text) = 0;
    /// Whether the "Done" button takes the place of the menu button.
    virtual void SetShowDoneButton(bool shown) = 0;
    /// Whether the last press came from a finger: menus then get more room.
    virtual bool UsingTouch() const { return false; }
};

/// The context in force, null when there is none: dialogs and menus are then not shown.
IUiContext* TheUiContext();
/// Sets the context and returns the one before. The context must outlive its use.
IUiContext* SetUiContext(IUiContext* context);
