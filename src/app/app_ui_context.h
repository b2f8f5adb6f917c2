#pragma once

#include "chartview/view_services.h"
#include "ui/message_boxes.h"
#include "ui/ui_context.h"

/// What the interface room and the map view ask of the application, answered by the engine and the interface's root.
/// While it lives it is the context in force, and messages go to message boxes. Main thread only.
class CAppUiContext : public IUiContext, public IViewServices {
public:
    CAppUiContext();
    ~CAppUiContext() override;

    QQmlEngine* Engine() override;
    QQuickItem* DialogParent() override;
    void stopInactivityTimeout() override;
    void startInactivityTimeout() override;
    void showHelpForTag(const QString& tag) override;
    void SetStatusText(const QString& text) override;
    void SetShowDoneButton(bool shown) override;
    bool UsingTouch() const override;

    bool InvokeDoneButton() override;

private:
    CMessageBoxSink messages;
};
