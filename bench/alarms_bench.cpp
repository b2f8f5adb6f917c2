#include "ratio.h"
#include "ui/notification_banner.h"
#include "ui/qml_register_ui.h"
#include "ui/ui_context.h"

#include <cstdlib>
#include <string>

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>

namespace {

constexpr int kAlarms = 200;

/// A window with the program's style, and the banner in it.
class CAlarmedWindow : public IUiContext {
public:
    CAlarmedWindow() : banner(manager)
    {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        qml_register_ui();
        window.resize(1280, 800);
        window.contentItem()->setSize(window.size());
        window.show();
        SetUiContext(this);
    }
    ~CAlarmedWindow() override { SetUiContext(nullptr); }

    QQmlEngine* Engine() override { return &engine; }
    QQuickItem* DialogParent() override { return window.contentItem(); }
    void stopInactivityTimeout() override {}
    void startInactivityTimeout() override {}
    void showHelpForTag(const QString&) override {}
    void SetStatusText(const QString&) override {}
    void SetShowDoneButton(bool) override {}
    bool UsingTouch() const override { return true; }

    /// Raises the alarms, shows them, acknowledges them with one press.
    void Alarm(int alarms)
    {
        for (int id = 0; id < alarms; ++id)
            manager.ShowNotification(id, "AIS collision alert, Class A", "MOTOR VESSEL, CPA 120 m, 7 min");
        QCoreApplication::sendPostedEvents();
        if (banner.Banner() == nullptr || !(banner.Banner()->height() > 100.0)) std::abort();
        banner.Banner()->onButtonClicked();
        if (banner.Banner() != nullptr) std::abort();
        for (int id = 0; id < alarms; ++id) manager.CancelNotification(id);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    QQmlEngine engine;
    QQuickWindow window;
    UserNotificationManager manager;
    MyNotificationUI banner;
};

CAlarmedWindow& TheWindow()
{
    static auto* const window = new CAlarmedWindow; // not to outlive the application
    return *window;
}

const bool registered = [] {
    RegisterRatio(
        "alarms/200_at_once_one_press", [] { TheWindow().Alarm(kAlarms); }, "one alarm", [] { TheWindow().Alarm(1); });
    return true;
}();

} // namespace
