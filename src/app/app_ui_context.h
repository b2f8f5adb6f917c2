#pragma once

#include "app/desktop_notifications.h"
#include "app/overlay_services.h"
#include "chartview/chart_overlay_views.h"
#include "chartview/view_services.h"
#include "overlays/dialogs/overlay_edit_dialogs.h"
#include "ui/alarm_bell.h"
#include "ui/message_boxes.h"
#include "ui/notification_banner.h"
#include "ui/ui_context.h"

/// What the interface room and the map view ask of the application, answered by the engine and the interface's root.
/// While it lives it is the context in force, messages go to message boxes, and alarms to the banner, the bell and
/// the desktop. Main thread only.
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

    void CreateNewMark(CRastelleView& view) override;
    void CreateNewRoute(CRastelleView& view) override;
    void ShowMapListDialog(CRastelleView* view, ZT_HWND hwnd, std::function<void()> done) override;
    void ShowContextMenu(CRastelleView& view, double x, double y) override;
    bool InvokeDoneButton() override;

private:
    CMessageBoxSink messages;
    MyNotificationUI banner{g_user_notification_manager};
    CDesktopBell bell_sound;
    CAlarmBell bell{g_user_notification_manager, bell_sound};
    CDesktopNotifications desktop;
    CChartOverlayViews overlay_views;
    COverlayEditDialogs overlay_dialogs;
    COverlayServices overlay_services;
};
