#include "ui_window.h"

#include "core/heartbeat.h"
#include "ui/alarm_bell.h"
#include "ui/notification_banner.h"

#include <vector>

#include <QtTest/QTest>

namespace {

/// Presses a banner's states by a script: "3a" shows alarm 3 with message "a", "-3" cancels it, "ok" is the button,
/// "!3" acknowledges one by the manager.
struct BannerCase {
    const char* name;
    std::vector<const char*> steps;
    const char* title; ///< empty: no banner
    const char* message;
};
const BannerCase kBanners[] = {
    {"one_alarm_as_it_stands", {"3a"}, "Alarm 3", "a"},
    {"a_repeat_changes_the_text", {"3a", "3b"}, "Alarm 3", "b"},
    {"two_are_a_list_in_order_of_id", {"5b", "3a"}, "2 Alerts", "Alarm 3: a\nAlarm 5: b"},
    {"back_to_one", {"5b", "3a", "-3"}, "Alarm 5", "b"},
    {"cancelling_the_last_closes", {"3a", "-3"}, "", ""},
    {"cancelling_a_stranger_does_nothing", {"3a", "-4"}, "Alarm 3", "a"},
    {"ok_silences_until_the_condition_ends", {"3a", "ok", "3b"}, "", ""},
    {"and_then_it_alarms_afresh", {"3a", "ok", "-3", "3c"}, "Alarm 3", "c"},
    {"a_new_one_after_ok_stands_alone", {"3a", "ok", "5b"}, "Alarm 5", "b"},
};

class NotificationBanner : public CUiTest {
protected:
    void SetUp() override
    {
        CUiTest::SetUp();
        banner = std::make_unique<MyNotificationUI>(manager);
    }
    void TearDown() override
    {
        banner.reset();
        CUiTest::TearDown();
    }
    void Do(const std::string& step)
    {
        if (step == "ok") {
            ASSERT_NE(banner->Banner(), nullptr);
            Click(Find("acknowledge"));
        } else if (step.front() == '-') {
            manager.CancelNotification(step[1] - '0');
        } else {
            manager.ShowNotification(step[0] - '0', std::string("Alarm ") + step[0], step.substr(1));
        }
    }

    UserNotificationManager manager;
    std::unique_ptr<MyNotificationUI> banner;
};

TEST_F(NotificationBanner, TellsWhatIsOpen)
{
    for (const BannerCase& tested : kBanners) {
        SCOPED_TRACE(tested.name);
        for (const char* step : tested.steps) Do(step);
        const CNotificationDlg* shown = banner->Banner();
        EXPECT_EQ(shown != nullptr ? shown->title() : QString(), tested.title);
        EXPECT_EQ(shown != nullptr ? shown->message() : QString(), tested.message);
        for (int id = 0; id < 10; ++id) manager.CancelNotification(id);
        EXPECT_EQ(banner->Banner(), nullptr);
    }
}

TEST_F(NotificationBanner, FitsSmallWindowsAndTakesKeys)
{
    for (const QSize size : {QSize(800, 480), QSize(480, 800)}) {
        Resize(size.width(), size.height());
        for (int id = 0; id < 200; ++id)
            manager.ShowNotification(id, "Anchor alarm", "A mark with a name is 120 m away");
        ASSERT_NE(banner->Banner(), nullptr);
        ASSERT_TRUE(WaitFor([&] { return banner->Banner()->height() > 150; }));
        EXPECT_TRUE(QRectF(QPointF(), QSizeF(size)).contains(InWindow(banner->Banner())));
        EXPECT_EQ(banner->Banner()->title(), "200 Alerts");
        Key(Qt::Key_Return);
        EXPECT_EQ(banner->Banner(), nullptr);
        EXPECT_EQ(manager.GetActiveCount(), 0);
        for (int id = 0; id < 200; ++id) manager.CancelNotification(id);
    }
}

TEST(Notifications, CallBackOnceWhenAcknowledged)
{
    UserNotificationManager manager;
    int called = 0;
    int broadcasts = 0;
    manager.SetBroadcast([&] { ++broadcasts; });
    manager.ShowNotification(7, "t", "m");
    manager.SetAcknowledgeCallback(
        7, [](void* user) { ++*static_cast<int*>(user); }, &called);
    manager.ShowNotification(7, "t", "m again"); // keeps the callback
    manager.AcknowledgeHere();
    manager.AcknowledgeAll();
    EXPECT_EQ(called, 1);
    EXPECT_EQ(broadcasts, 1); // what came from another device is not sent back
    EXPECT_TRUE(manager.IsAcknowledged(7));
    manager.CancelNotification(7);
    EXPECT_TRUE(manager.IsNew(7));
}

TEST(AlarmBell, RingsUntilAcknowledged)
{
    struct CCountedSound : IAlarmSound {
        void Play() override { ++played; }
        int played = 0;
    } sound;
    UserNotificationManager manager;
    CAlarmBell bell(manager, sound);
    const auto wait = [](int ticks) {
        for (int i = 0; i < ticks; ++i) CHeartbeat::TheHeartbeat.Pulse();
    };
    manager.ShowNotification(1, "t", "m");
    manager.ShowNotification(1, "t", "refreshed");
    EXPECT_EQ(sound.played, 1);
    wait(2 * CAlarmBell::kEvery);
    EXPECT_EQ(sound.played, 3);
    manager.Acknowledge(1);
    wait(2 * CAlarmBell::kEvery);
    EXPECT_EQ(sound.played, 3);
    manager.ShowNotification(1, "t", "still there");
    EXPECT_EQ(sound.played, 3);
    manager.CancelNotification(1);
    manager.ShowNotification(1, "t", "again");
    EXPECT_EQ(sound.played, 4);
    CAlarmBell::sound_on = false;
    manager.ShowNotification(2, "t", "m");
    wait(CAlarmBell::kEvery);
    EXPECT_EQ(sound.played, 4);
    CAlarmBell::sound_on = true;
}

TEST(AlarmBell, IsAWholeWavFile)
{
    const std::string bytes = AlarmBellWav();
    ASSERT_GT(bytes.size(), 44U);
    const auto number = [&](std::size_t at) {
        return static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8 |
               static_cast<unsigned char>(bytes[at + 2]) << 16 | static_cast<unsigned char>(bytes[at + 3]) << 24;
    };
    EXPECT_EQ(static_cast<std::size_t>(number(4)), bytes.size() - 8);
    EXPECT_EQ(static_cast<std::size_t>(number(40)), bytes.size() - 44);
}

} // namespace
