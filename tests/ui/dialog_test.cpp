#include "test_dialogs.h"
#include "ui_window.h"

#include "ui/done_button.h"
#include "ui/message_boxes.h"
#include "ui/progress_dialog.h"
#include "ui/rename_dialog.h"
#include "ui/screen_insets.h"
#include "ui/zt_metrics.h"

#include <QtTest/QTest>

namespace {

struct CDlg_missing : CZTDialog {
    static constexpr const char* dialog_url = "qrc:/dlg_that_is_not_there.qml";
};
/// Its file makes another class.
class CDlg_mistaken : public CMessageBoxDlg {
public:
    static constexpr const char* dialog_url = "qrc:/dlg_progress.qml";
};

struct WindowSize {
    int width;
    int height;
};

class Dialogs : public CUiTest, public testing::WithParamInterface<WindowSize> {
protected:
    void SetUp() override
    {
        CUiTest::SetUp();
        Resize(GetParam().width, GetParam().height);
    }
    /// Whether the panel lies in the window, and every visible button in the panel and large enough for a finger.
    void ExpectFits()
    {
        ASSERT_TRUE(WaitOpened());
        QQuickItem* panel = Find("panel");
        ASSERT_NE(panel, nullptr);
        EXPECT_TRUE(QRectF(0, 0, GetParam().width, GetParam().height).contains(InWindow(panel)));
        for (const char* name : {"button0", "button1", "button2", "cancelButton", "acceptButton", "rejectButton",
                                 "closeButton", "helpButton", "menuButton"}) {
            QQuickItem* button = Find(name);
            if (button == nullptr) continue;
            EXPECT_TRUE(InWindow(panel).contains(InWindow(button))) << name;
            EXPECT_GE(button->width(), CZTMetrics().touchTarget()) << name;
            EXPECT_GE(button->height(), CZTMetrics().touchTarget()) << name;
        }
    }
    void CloseAll()
    {
        while (auto* dialog = NewestDialog<CZTDialog>()) {
            dialog->closeDialog(0);
            ASSERT_TRUE(WaitFor([&, dialog] { return NewestDialog<CZTDialog>() != dialog; }));
        }
    }
};

TEST_P(Dialogs, LongMessagesScrollAndKeepTheirButtons)
{
    std::string text;
    for (int i = 0; i < 300; ++i) text += "word" + std::to_string(i) + (i % 17 == 0 ? std::string(60, 'x') : " ");
    MessageBox3({}, std::string(200, 'T'), text, {}, "The first choice", "The second choice", "The third choice");
    ExpectFits();
    QQuickItem* scroller = Find("scroller");
    ASSERT_NE(scroller, nullptr);
    EXPECT_LE(Find("message")->width(), 300);
    const double before = scroller->property("contentY").toDouble();
    Key(Qt::Key_Down);
    EXPECT_TRUE(WaitFor([&] { return scroller->property("contentY").toDouble() > before; }));
    CloseAll();
}

TEST_P(Dialogs, ShortMessagesAreNotStretched)
{
    MessageBoxOK({}, "Title", "Short");
    ExpectFits();
    EXPECT_LT(Find("panel")->width(), 320);
    EXPECT_LT(Find("panel")->height(), 240);
    CloseAll();
}

TEST_P(Dialogs, AFormScrollsToTheFocusedField)
{
    ASSERT_NE(CZTDialog::ShowDialog<CDlg_form>({}), nullptr);
    ExpectFits();
    Click(Find("helpButton"));
    EXPECT_EQ(ui->help, "some_tag");
    QQuickItem* last = Find("switch19");
    ASSERT_NE(last, nullptr);
    last->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(InWindow(Find("scroller")).contains(InWindow(last).center()));
    EXPECT_LE(InWindow(last).right(), GetParam().width);
    // Tab leaves the last field for the first thing of the dialog, never for the window behind.
    for (int i = 0; i < 30; ++i) {
        Key(Qt::Key_Tab);
        ASSERT_TRUE(NewestDialog<CZTDialog>()->isAncestorOf(ui->window->activeFocusItem()));
    }
    Key(Qt::Key_Escape);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_P(Dialogs, ANameIsAskedForUntilThereIsOne)
{
    QString renamed;
    CDlg_Rename::Ask({}, QStringLiteral("Name"), QStringLiteral("A hint"), QStringLiteral("Old"),
                     [&renamed](const QString& name) { renamed = name; });
    ExpectFits();
    QQuickItem* const field = Find("name");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->property("text").toString(), "Old");
    field->setProperty("text", "  ");
    Click(Find("acceptButton"));
    EXPECT_FALSE(Find("problem")->property("text").toString().isEmpty());
    field->setProperty("text", " New: 1 ");
    Key(Qt::Key_Return);
    EXPECT_TRUE(WaitNoDialog());
    EXPECT_EQ(renamed, "New: 1");
}

TEST_P(Dialogs, AListFillsASmallWindow)
{
    ASSERT_NE(CZTDialog::ShowDialog<CDlg_list>({}), nullptr);
    ExpectFits();
    Click(Find("menuButton"));
    EXPECT_EQ(ui->help, "Menu");
    Click(Find("closeButton"));
    EXPECT_TRUE(WaitNoDialog());
}

TEST_P(Dialogs, TheProgressDialogFits)
{
    CProgressDialogData data;
    CZTDialog::ShowDialog<CDlg_progress>(
        {}, [&](CDlg_progress* dialog) { dialog->Follow(&data, std::string(400, 'm'), {}); });
    ExpectFits();
    CloseAll();
}

TEST_P(Dialogs, FollowTheWindowsSize)
{
    MessageBoxOK({}, "Title", "Text");
    ASSERT_TRUE(WaitOpened());
    Resize(GetParam().height, GetParam().width);
    const QRectF panel = InWindow(Find("panel"));
    EXPECT_NEAR(panel.center().x(), GetParam().height / 2.0, 1.0);
    EXPECT_NEAR(panel.center().y(), GetParam().width / 2.0, 1.0);
    CloseAll();
}

INSTANTIATE_TEST_SUITE_P(, Dialogs, testing::Values(WindowSize{800, 480}, WindowSize{480, 800}),
                         [](const auto& tested) { return "w" + std::to_string(tested.param.width); });

class DialogMechanism : public CUiTest {};

TEST_F(DialogMechanism, AFileThatDoesNotLoadCallsNobody)
{
    bool called = false;
    EXPECT_EQ(CZTDialog::ShowDialog<CDlg_missing>({}, [&](CDlg_missing*) { called = true; }), nullptr);
    EXPECT_EQ(CZTDialog::ShowDialog<CMessageBoxDlg>({}) != nullptr, true);
    NewestDialog<CZTDialog>()->closeDialog(0);
    EXPECT_FALSE(called);
    EXPECT_TRUE(WaitNoDialog());
    EXPECT_EQ(ui->stopped, 0);
    ui->warnings.clear();
}

TEST_F(DialogMechanism, AFileOfAnotherClassCallsNobody)
{
    bool called = false;
    EXPECT_EQ(CZTDialog::ShowDialog<CDlg_mistaken>({}, [&](CDlg_mistaken*) { called = true; }), nullptr);
    EXPECT_FALSE(called);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(DialogMechanism, GrowsOutOfThePointOfTheClick)
{
    auto* behind = ui->window->findChild<QQuickItem*>(QStringLiteral("behind"));
    MessageBoxOK(ZT_HWND(behind, 10, 20), "Title", "Text");
    auto* dialog = NewestDialog<CZTDialog>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->origin(), behind->mapToItem(dialog, QPointF(10, 20)));
    EXPECT_EQ(dialog->parentItem(), ui->layer);
    dialog->closeDialog(7);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(DialogMechanism, WithoutAWindowNothingIsShown)
{
    SetUiContext(nullptr);
    bool called = false;
    EXPECT_FALSE(MessageBoxOK({}, "Title", "Text", [&] { called = true; }));
    EXPECT_FALSE(called);
}

TEST_F(DialogMechanism, OpenDialogsTakePartInSaving)
{
    struct CUnsaved : CZTDialog {
        int saved = 0;
        void Save() override { ++saved; }
    } first, second;
    {
        CUnsaved gone;
    }
    CSaveable::SaveAllOpen();
    EXPECT_EQ(first.saved, 1);
    EXPECT_EQ(second.saved, 1);
}

TEST_F(DialogMechanism, TheDoneButtonCallsOnce)
{
    int calls = 0;
    SetDoneButtonCallback([&] {
        ++calls;
        EXPECT_FALSE(ui->done_shown);
    });
    EXPECT_TRUE(ui->done_shown);
    PressDoneButton();
    PressDoneButton();
    EXPECT_EQ(calls, 1);
}

TEST(Insets, AreWhatReachesIntoTheItem)
{
    const ScreenInsets parent{20, 30, 10, 40, 50, 50, 50, 50};
    ScreenInsets insets;
    insets.adjust(0, 0, 100, 200, parent, 100, 200);
    EXPECT_TRUE(insets.isEqual(parent)) << "an item as large as its parent has its insets";
    insets.adjust(15, 25, 30, 30, parent, 200, 200);
    EXPECT_TRUE(insets.isEqual(ScreenInsets{0, 0, 0, 0, 25, 0, 0, 0})) << "a corner reaches further than its sides";
    insets.adjust(60, 60, 40, 40, parent, 200, 200);
    EXPECT_TRUE(insets.isEqual(ScreenInsets{}));
}

} // namespace
