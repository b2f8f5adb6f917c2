#include "ui_window.h"

#include "core/worker_thread.h"
#include "ui/message_boxes.h"
#include "ui/progress_dialog.h"

#include <QTimerEvent>

namespace {

class Progress : public CUiTest {
protected:
    void SetUp() override
    {
        CUiTest::SetUp();
        SetProgressWait([this](int milliseconds) {
            waited += milliseconds;
            if (during_wait) during_wait();
        });
    }
    void TearDown() override
    {
        SetProgressWait({});
        CUiTest::TearDown();
    }
    void Start(bool cancelable = true)
    {
        showProgressDialog_join(
            {}, &data, "Copying",
            [this](CProgressDialogData* ended) {
                EXPECT_EQ(ended, &data);
                ++closed;
            },
            cancelable);
        dialog = NewestDialog<CDlg_progress>();
    }
    void Tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            QTimerEvent event(dialog->timerId());
            QCoreApplication::sendEvent(dialog, &event);
        }
    }

    CProgressDialogData data;
    std::function<void()> during_wait;
    CDlg_progress* dialog = nullptr;
    int waited = 0;
    int closed = 0;
};

TEST_F(Progress, AShortOperationShowsNothing)
{
    during_wait = [this] { data.finished = true; };
    Start();
    EXPECT_EQ(dialog, nullptr);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(waited, 10);
}

TEST_F(Progress, TheWorkerIsJoinedBeforeTheCallback)
{
    int written = 0;
    QThread_created worker([&] {
        written = 42;
        data.finished = true;
    });
    data.worker = &worker;
    int seen = 0;
    bool running = true;
    worker.start();
    showProgressDialog_join({}, &data, "Working", [&](CProgressDialogData*) {
        seen = written;
        running = worker.isRunning();
    });
    if (auto* shown = NewestDialog<CDlg_progress>()) {
        ASSERT_TRUE(WaitFor([&] { return data.finished.load(); }));
        QTimerEvent event(shown->timerId());
        QCoreApplication::sendEvent(shown, &event);
    }
    EXPECT_EQ(seen, 42);
    EXPECT_FALSE(running);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, CancellingClosesWithoutAnErrorBox)
{
    bool told = false;
    data.cancel = [&] {
        told = true;
        EXPECT_FALSE(data.cancelled);
    };
    Start();
    Tick();
    Key(Qt::Key_Escape);
    EXPECT_TRUE(told);
    EXPECT_TRUE(data.cancelled);
    EXPECT_EQ(closed, 0) << "it is the operation that ends";
    data.error = "Connection closed";
    data.finished = true;
    Tick();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(NewestDialog<CMessageBoxDlg>(), nullptr);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, WhatCannotBeCancelledIgnoresEscape)
{
    Start(false);
    Key(Qt::Key_Escape);
    EXPECT_EQ(Find("cancelButton"), nullptr);
    EXPECT_FALSE(data.cancelled);
    data.finished = true;
    Tick();
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, AnErrorIsShownBeforeTheDialogCloses)
{
    Start();
    data.error = "Disk full";
    data.finished = true;
    Tick();
    auto* box = NewestDialog<CMessageBoxDlg>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->title, "Error");
    EXPECT_EQ(box->message, "Disk full");
    EXPECT_EQ(closed, 0);
    Key(Qt::Key_Return);
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, EstimatesASteadyOperation)
{
    Start();
    EXPECT_FALSE(dialog->total_known());
    data.total = 1000;
    for (int tick = 1; tick <= 100; ++tick) { // 1000 steps in 200 s
        data.done = tick;
        Tick();
        if (tick == 9) {
            EXPECT_EQ(dialog->time_remaining(), "");
        }
    }
    EXPECT_DOUBLE_EQ(dialog->progress(), 0.1);
    EXPECT_EQ(dialog->time_remaining(), "3 minutes");
    EXPECT_TRUE(dialog->plug_in_message_hidden() || Find("plugInMessage") != nullptr);
    data.finished = true;
    Tick();
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, ALongOperationAdvisesToPlugIn)
{
    Start();
    data.total = 100000;
    data.done = 500;
    Tick(30);
    EXPECT_FALSE(dialog->plug_in_message_hidden());
    ASSERT_NE(Find("plugInMessage"), nullptr);
    data.done = 99000;
    Tick(10);
    EXPECT_FALSE(dialog->plug_in_message_hidden()) << "the advice stays";
    data.done = 1 << 30;
    Tick();
    EXPECT_EQ(dialog->progress(), 1.0) << "more done than there is";
    data.finished = true;
    Tick();
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(Progress, WithoutAWindowTheOperationIsFollowedAllTheSame)
{
    SetUiContext(nullptr);
    Start();
    EXPECT_EQ(closed, 0);
    data.finished = true;
    EXPECT_TRUE(WaitFor([this] { return closed == 1; }));
}

struct RemainingCase {
    int seconds;
    const char* text;
};
TEST(RemainingTime, IsWorded)
{
    constexpr RemainingCase cases[] = {
        {0, "0 seconds"},          {1, "1 second "},          {59, "59 seconds"},   {60, "1 m, 0 s"},
        {119, "1 m, 59 s"},        {120, "2 minutes"},        {3599, "59 minutes"}, {3600, "1 hour , 0 mins"},
        {3660, "1 hour , 1 min "}, {7320, "2 hours, 2 mins"},
    };
    for (const RemainingCase& tested : cases) EXPECT_EQ(RemainingTimeText(tested.seconds), tested.text);
}

} // namespace
