#include "ui_window.h"

#include "ui/message_boxes.h"

#include <vector>

#include <QtTest/QTest>

namespace {

struct KeyCase {
    const char* name;
    std::vector<Qt::Key> keys;
    const char* button1;
    int answer;
};
const KeyCase kKeys[] = {
    {"return_presses_the_first", {Qt::Key_Return}, " No ", 0},
    {"enter_presses_the_first", {Qt::Key_Enter}, " No ", 0},
    {"space_presses_the_focused", {Qt::Key_Space}, " No ", 0},
    {"escape_presses_the_second", {Qt::Key_Escape}, " No ", 1},
    {"back_presses_the_second", {Qt::Key_Back}, " No ", 1},
    {"escape_answers_1_without_a_second", {Qt::Key_Escape}, "", 1},
    {"tab_takes_the_highlight_along", {Qt::Key_Tab, Qt::Key_Return}, " No ", 1},
    {"tab_comes_round_inside_the_box", {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, " No ", 0},
    {"back_tab_does_too", {Qt::Key_Backtab, Qt::Key_Return}, " No ", 1},
    {"arrows_move_between_buttons", {Qt::Key_Right, Qt::Key_Space}, " No ", 1},
};

class MessageBoxKeys : public CUiTest, public testing::WithParamInterface<KeyCase> {};

TEST_P(MessageBoxKeys, AnswersOnceAndCloses)
{
    std::vector<int> answers;
    ASSERT_TRUE(MessageBox3(
        {}, "Title", "Text", [&](int button) { answers.push_back(button); }, "  Yes  ", GetParam().button1));
    // Keys count from the first moment on, while the box is still growing.
    for (const Qt::Key key : GetParam().keys) Key(key);
    Key(Qt::Key_Escape);
    EXPECT_EQ(answers, std::vector<int>{GetParam().answer});
    EXPECT_TRUE(WaitNoDialog());
    EXPECT_EQ(ui->stopped, 0);
}
INSTANTIATE_TEST_SUITE_P(, MessageBoxKeys, testing::ValuesIn(kKeys),
                         [](const auto& tested) { return std::string(tested.param.name); });

class MessageBoxes : public CUiTest {
protected:
    QQuickItem* Behind() { return ui->window->findChild<QQuickItem*>(QStringLiteral("behind")); }
    int Count(const char* property) { return ui->window->property(property).toInt(); }
};

TEST_F(MessageBoxes, MouseAndTouchPressEveryButton)
{
    for (const bool finger : {false, true}) {
        for (int number = 0; number < 3; ++number) {
            int answer = -1;
            MessageBox3(
                {}, "Title", "Text", [&](int button) { answer = button; }, "One", "Two", "Three");
            ASSERT_TRUE(WaitOpened());
            QQuickItem* button = Find(qPrintable(QStringLiteral("button%1").arg(number)));
            ASSERT_NE(button, nullptr);
            if (finger) {
                Touch(button);
            } else {
                Click(button);
            }
            EXPECT_EQ(answer, number) << "finger " << finger;
            ASSERT_TRUE(WaitNoDialog());
        }
    }
}

TEST_F(MessageBoxes, TheFormsRunTheirCallbacks)
{
    int yes = 0;
    int answered = -1;
    int done = 0;
    MessageBoxYes({}, "Title", "Sure?", [&] { ++yes; });
    Key(Qt::Key_Escape);
    MessageBoxYes({}, "Title", "Sure?", [&] { ++yes; });
    Key(Qt::Key_Return);
    MessageBoxYesNo({}, "Title", "Sure?", [&](int button) { answered = button; });
    Key(Qt::Key_Escape);
    MessageBoxOK({}, "Title", "Text", [&] { ++done; });
    Key(Qt::Key_Escape);
    MessageBoxHint({}, "Without a callback");
    Key(Qt::Key_Return);
    MessageBox3(
        {}, "Title", "Plain function", [](void* user, int button) { *static_cast<int*>(user) += 10 + button; }, &done,
        "A", "B");
    Key(Qt::Key_Escape);
    EXPECT_EQ(yes, 1);
    EXPECT_EQ(answered, 1);
    EXPECT_EQ(done, 12);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(MessageBoxes, TextFromOutsideIsShownAsItStands)
{
    const QString text = QStringLiteral("<h1>Big</h1> & <img src='file:///x.png'> 100%");
    messageprintf({}, kMessageWarning, "%s", text.toUtf8().constData());
    auto* box = NewestDialog<CMessageBoxDlg>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->title, "Warning");
    QQuickItem* label = Find("message");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->property("text").toString(), text);
    EXPECT_EQ(label->property("textFormat").toInt(), static_cast<int>(Qt::PlainText));
    Key(Qt::Key_Return);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(MessageBoxes, TheNewestIsOnTopAndGivesTheKeyboardBack)
{
    std::vector<std::string> order;
    MessageBox3(
        {}, "Lower", "Text", [&](int button) { order.push_back("lower" + std::to_string(button)); }, "A", "B");
    MessageBox3(
        {}, "Upper", "Text", [&](int button) { order.push_back("upper" + std::to_string(button)); }, "A", "B");
    EXPECT_EQ(ui->stopped, 2);
    Key(Qt::Key_Escape);
    EXPECT_TRUE(WaitFor([&] { return ui->layer->childItems().size() == 1; }));
    Key(Qt::Key_Return);
    EXPECT_EQ(order, (std::vector<std::string>{"upper1", "lower0"}));
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_TRUE(Behind()->hasActiveFocus());
}

TEST_F(MessageBoxes, ABoxOpenedByTheCallbackGetsTheKeyboard)
{
    int second = -1;
    MessageBoxOK({}, "First", "Text", [&] {
        MessageBox3(
            {}, "Second", "Text", [&](int button) { second = button; }, "A", "B");
    });
    Key(Qt::Key_Return);
    ASSERT_TRUE(WaitFor([&] { return ui->layer->childItems().size() == 1; }));
    Key(Qt::Key_Return);
    EXPECT_EQ(second, 0);
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(MessageBoxes, NothingReachesTheWindowBehind)
{
    const QPoint corner(5, 470);
    const auto all = [&] {
        QTest::mouseClick(ui->window, Qt::LeftButton, {}, corner);
        QTest::mouseClick(ui->window, Qt::RightButton, {}, corner);
        QWheelEvent wheel(corner, ui->window->mapToGlobal(corner), {}, QPoint(0, 120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(ui->window, &wheel);
        QTest::touchEvent(ui->window, TouchScreen())
            .press(0, corner, ui->window)
            .press(1, corner + QPoint(40, -40), ui->window);
        QTest::touchEvent(ui->window, TouchScreen())
            .release(0, corner, ui->window)
            .release(1, corner + QPoint(40, -40), ui->window);
        Key(Qt::Key_Tab);
    };
    MessageBoxOK({}, "Title", "Text");
    ASSERT_TRUE(WaitOpened());
    all();
    EXPECT_EQ(Count("pressed") + Count("wheeled") + Count("touched"), 0);
    EXPECT_NE(NewestDialog<CMessageBoxDlg>(), nullptr) << "a press beside the box closes nothing";
    Key(Qt::Key_Escape);
    ASSERT_TRUE(WaitNoDialog());
    all();
    EXPECT_GT(Count("pressed"), 1);
    EXPECT_EQ(Count("wheeled"), 1);
    EXPECT_GT(Count("touched"), 0);
}

TEST_F(MessageBoxes, TheSinkShowsBoxesAndTheStatus)
{
    CMessageBoxSink sink;
    bool done = false;
    sink.Show({}, "Title", "Text", [&] { done = true; });
    Key(Qt::Key_Return);
    sink.Status("Fix lost");
    EXPECT_TRUE(done);
    EXPECT_EQ(ui->status, "Fix lost");
    EXPECT_TRUE(WaitNoDialog());
}

TEST_F(MessageBoxes, TheAnswerMayCloseTheBoxItself)
{
    MessageBoxOK({}, "Title", "Text", [&] { NewestDialog<CMessageBoxDlg>()->closeDialog(5); });
    Key(Qt::Key_Escape);
    EXPECT_TRUE(WaitNoDialog());
    EXPECT_EQ(ui->stopped, 0);
}

} // namespace
