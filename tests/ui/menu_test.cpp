#include "ui_window.h"

#include "ui/action_sheet.h"
#include "ui/zt_metrics.h"
#include "ui/zt_popup_menu.h"

#include <vector>

#include <QtTest/QTest>

namespace {

/// "A(B C(D)) E": the tree's texts.
std::string Outline(const TreeViewNode& node)
{
    std::string text;
    for (const auto& child : node.childNodes()) {
        if (!text.empty()) text += ' ';
        text += child->text;
        if (child->count() > 0) text += '(' + Outline(*child) + ')';
    }
    return text;
}

struct BuildCase {
    const char* name;
    bool tree; ///< colons make submenus
    std::vector<std::pair<const char*, int>> entries;
    const char* outline;
};
const BuildCase kBuilds[] = {
    {"submenus_merge_in_order", true, {{"A:B", 0}, {"X", 0}, {"A:C", 0}}, "A(B C) X"},
    {"submenus_nest",
     true,
     {{"Route:Optimize:Walking", 0}, {"Route:Optimize:Sailing", 0}},
     "Route(Optimize(Walking Sailing))"},
    {"a_trailing_colon_makes_an_empty_leaf", true, {{"A:", 0}}, "A()"},
    {"a_colon_without_a_separator_is_a_character", false, {{"A:B", 0}}, "A:B"},
    {"hidden_entries_leave_nothing", true, {{"A", 0}, {"B:C", Appearance::kHidden}, {"D", 0}}, "A D"},
    {"an_entry_is_never_taken_for_a_submenu", true, {{"A", 0}, {"A:B", 0}}, "A A(B)"},
};

TEST(MenuTree, IsBuiltFromLabels)
{
    for (const BuildCase& tested : kBuilds) {
        CMenuTree tree("Title");
        CActionSheetMenu flat("Title");
        CActionSheetMenu& menu = tested.tree ? tree : flat;
        for (const auto& [label, appearance] : tested.entries) {
            EXPECT_EQ(menu.Add(label, {}, {}, appearance) == nullptr, appearance == Appearance::kHidden);
        }
        EXPECT_EQ(Outline(menu.rootNode()), tested.outline) << tested.name;
    }
}

TEST(MenuTree, TakesTheUsersTextsWhole)
{
    CMenuTree menu("Title");
    menu.Add("Load:First", {});
    menu.AddPlain("Load", "12:30 & later", {});
    menu.AddPlain("", "C:\\chart", {});
    menu.AddPlain("New:Deep", "x", {});
    menu.AddSeparator("Load");
    menu.setIconForSubmenu("Load", "qrc:/import.svg");
    menu.setIconForSubmenu("Nobody", "qrc:/import.svg");
    EXPECT_EQ(Outline(menu.rootNode()), "Load(First 12:30 & later ) C:\\chart New(Deep(x))");
    EXPECT_EQ(menu.rootNode().childNodes().front()->icon, "qrc:/import.svg");
}

class Menus : public CUiTest {
protected:
    std::function<void()> Call(const char* name)
    {
        return [this, name] { calls.push_back(name); };
    }
    void Show(double x = 100, double y = 100)
    {
        CMenuTree menu("A title");
        menu.Add("First", Call("First"), "qrc:/settings.svg");
        menu.AddSeparator();
        menu.Add("Off", Call("Off"), {}, Appearance::kDisabled);
        menu.Add("Sub:One", Call("One"), {}, Appearance::kCurrent);
        menu.Add("Sub:Two", Call("Two"), {}, Appearance::kCaution);
        menu.Add("<b>Last</b> & least", Call("Last"), {}, Appearance::kPositive);
        menu.setIconForSubmenu("Sub", "qrc:/Help.svg");
        menu.ShowMenuTree(ZT_HWND(ui->layer, x, y));
    }
    CZTPopupMenu* Popup() const
    {
        const auto items = ui->layer->childItems();
        return items.isEmpty() ? nullptr : qobject_cast<CZTPopupMenu*>(items.last());
    }
    QObject* Menu() const { return Popup() == nullptr ? nullptr : Popup()->findChild<QObject*>("menu"); }
    bool WaitMenu()
    {
        return WaitFor([this] { return Menu() != nullptr && Menu()->property("opened").toBool(); });
    }
    /// The visible entry of that text; null when there is none.
    QQuickItem* Entry(const char* text) const { return EntryIn(ui->window->contentItem(), QString::fromUtf8(text)); }
    static QQuickItem* EntryIn(QQuickItem* root, const QString& text)
    {
        if (!root->isVisible()) return nullptr;
        if (root->property("isMenuEntry").isValid() && root->property("text").toString() == text) return root;
        for (QQuickItem* child : root->childItems()) {
            if (QQuickItem* found = EntryIn(child, text)) return found;
        }
        return nullptr;
    }
    void Move(QPoint place)
    {
        QMouseEvent move(QEvent::MouseMove, place, ui->window->mapToGlobal(place), Qt::NoButton, Qt::RightButton, {});
        QCoreApplication::sendEvent(ui->window, &move);
    }

    std::vector<std::string> calls;
};

using Calls = std::vector<std::string>;

TEST_F(Menus, AnEmptyMenuIsNotShown)
{
    CMenuTree menu("Empty");
    menu.Add("Hidden:Entry", {}, {}, Appearance::kHidden);
    menu.ShowMenuTree({});
    EXPECT_EQ(Popup(), nullptr);
}

TEST_F(Menus, EitherButtonAndAFingerChoose)
{
    for (const int way : {0, 1, 2}) {
        Show();
        ASSERT_TRUE(WaitMenu());
        EXPECT_EQ(ui->stopped, 1);
        QQuickItem* entry = Entry("<b>Last</b> & least");
        ASSERT_NE(entry, nullptr);
        const QPointer<CZTPopupMenu> popup = Popup();
        if (way == 2) {
            Touch(entry);
        } else {
            Click(entry, way == 0 ? Qt::LeftButton : Qt::RightButton);
        }
        ASSERT_TRUE(WaitFor([&] { return popup.isNull(); })) << "the tree is released, way " << way;
        EXPECT_EQ(ui->stopped, 0);
    }
    EXPECT_EQ(calls, (Calls{"Last", "Last", "Last"}));
}

TEST_F(Menus, TheKeyboardReachesEverything)
{
    Show();
    ASSERT_TRUE(WaitMenu());
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) Key(key);
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, Calls{"First"});

    Show();
    ASSERT_TRUE(WaitMenu());
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down}) Key(key);
    Key(Qt::Key_Right);
    ASSERT_TRUE(WaitFor([this] { return Entry("Two") != nullptr && Entry("Two")->window() != nullptr; }));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) Key(key);
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, (Calls{"First", "Two"})) << "past the separator and the disabled entry, into the submenu";

    Show();
    ASSERT_TRUE(WaitMenu());
    Key(Qt::Key_Escape);
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls.size(), 2U);
    EXPECT_TRUE(ui->window->findChild<QQuickItem*>(QStringLiteral("behind"))->hasActiveFocus());
}

TEST_F(Menus, SubmenusOpenInSmallWindowsToo)
{
    Resize(480, 800);
    ui->touch = true;
    Show(470, 790);
    ASSERT_TRUE(WaitMenu());
    QQuickItem* sub = Entry("Sub");
    for (QQuickItem* item : {sub, Entry("First")}) {
        ASSERT_NE(item, nullptr);
        EXPECT_TRUE(QRectF(0, 0, 480, 800).contains(InWindow(item)));
        EXPECT_GE(item->height(), CZTMetrics().touchRow());
    }
    Touch(sub);
    ASSERT_TRUE(WaitFor([this] { return Entry("One") != nullptr; }));
    EXPECT_TRUE(WaitFor([this] { return QRectF(0, 0, 480, 800).contains(InWindow(Entry("One"))); }));
    Touch(Entry("One"));
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, Calls{"One"});
}

TEST_F(Menus, DisabledEntriesAndTheTitleDoNothing)
{
    Show();
    ASSERT_TRUE(WaitMenu());
    Click(Entry("Off"));
    QTest::qWait(0);
    EXPECT_TRUE(Menu()->property("opened").toBool());
    QTest::mouseClick(ui->window, Qt::LeftButton, {}, QPoint(790, 470));
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, Calls{});
    EXPECT_EQ(ui->window->property("pressed").toInt(), 0) << "the press that closes a menu is for the menu alone";
}

TEST_F(Menus, PressMoveReleaseChooses)
{
    struct Case {
        const char* entry; ///< where the button goes up
        Calls expected;
    };
    for (const Case& tested : {Case{"First", {"First"}}, Case{"Off", {}}, Case{nullptr, {}}}) {
        calls.clear();
        QTest::mousePress(ui->window, Qt::RightButton, {}, QPoint(100, 100));
        Show();
        ASSERT_TRUE(WaitMenu());
        if (tested.entry != nullptr) {
            const QPoint place = Middle(Entry(tested.entry));
            QTest::mouseMove(ui->window, place);
            EXPECT_EQ(Entry(tested.entry)->property("highlighted").toBool(), !tested.expected.empty());
            QTest::mouseRelease(ui->window, Qt::RightButton, {}, place);
        } else {
            QTest::mouseRelease(ui->window, Qt::RightButton, {}, QPoint(100, 100));
        }
        QCoreApplication::processEvents();
        if (tested.expected.empty()) {
            EXPECT_TRUE(Menu() != nullptr && Menu()->property("opened").toBool()) << "a mere click leaves it open";
            Key(Qt::Key_Escape);
        }
        ASSERT_TRUE(WaitNoDialog());
        EXPECT_EQ(calls, tested.expected);
    }
}

TEST_F(Menus, ALongMenuScrollsInsideTheWindow)
{
    CActionSheetMenu menu("Many");
    for (int i = 0; i < 60; ++i) menu.Add(std::string(20 * (i % 10), 'W') + std::to_string(i), Call("any"));
    menu.Add("The end", Call("end"));
    menu.ShowMenu(ZT_HWND(ui->layer, 700, 400));
    ASSERT_TRUE(WaitMenu());
    const double height = Menu()->property("height").toDouble();
    EXPECT_LE(height, 480);
    EXPECT_GE(Menu()->property("y").toDouble(), 0);
    EXPECT_LE(Menu()->property("x").toDouble() + Menu()->property("width").toDouble(), 800);
    Key(Qt::Key_Up);
    for (int i = 0; i < 70; ++i) Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, Calls{"end"});
}

TEST_F(Menus, AMenuIsAsWideAsItsTexts)
{
    const char* const text = "A chart with a title of some length, 1:700000";
    CActionSheetMenu menu("Charts");
    menu.Add(text, Call("any"), "qrc:/map.svg");
    menu.ShowMenu(ZT_HWND(ui->layer, 10, 10));
    ASSERT_TRUE(WaitMenu());
    ASSERT_TRUE(WaitFor([&] { return Entry(text) != nullptr && Entry(text)->width() > 300; }));
    const auto* const label = Entry(text)->findChild<QQuickItem*>(QStringLiteral("label"));
    ASSERT_NE(label, nullptr);
    EXPECT_FALSE(label->property("truncated").toBool());
    Key(Qt::Key_Escape);
    ASSERT_TRUE(WaitNoDialog());
}

TEST_F(Menus, AMenuOpenedByAnEntryStays)
{
    CActionSheetMenu menu("Outer");
    menu.Add("Next", [this] { Show(); });
    menu.ShowMenu(ZT_HWND(ui->layer, 10, 10));
    ASSERT_TRUE(WaitMenu());
    Click(Entry("Next"));
    ASSERT_TRUE(WaitFor([this] { return ui->layer->childItems().size() == 1 && Entry("First") != nullptr; }));
    ASSERT_TRUE(WaitMenu());
    Click(Entry("First"));
    ASSERT_TRUE(WaitNoDialog());
    EXPECT_EQ(calls, Calls{"First"});
}

} // namespace
