#include "mark_fixture.h"

#include "core/text.h"
#include "overlays/mark_link.h"
#include "overlays/overlay_dialogs.h"
#include "ui/action_sheet.h"
#include "ui/message_boxes.h"
#include "ui/qml_register_ui.h"
#include "ui/ui_context.h"

#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>

namespace {

/// "A(B C) D": the texts of a menu.
std::string Outline(const TreeViewNode& node)
{
    std::string text;
    for (const auto& child : node.childNodes()) {
        if (!text.empty()) text += "; ";
        text += child->text;
        if (child->count() > 0) text += " (" + Outline(*child) + ")";
    }
    return text;
}

TreeViewNode* Entry(const TreeViewNode& node, const std::string& text)
{
    for (const auto& child : node.childNodes()) {
        if (child->text == text) return child.get();
        if (TreeViewNode* const found = Entry(*child, text)) return found;
    }
    return nullptr;
}

class MarkMenus : public CMarksTest {
protected:
    template <class T>
    static std::string MenuOf(T& object)
    {
        CMenuTree menu("Title");
        object.addMenus(menu, {});
        return Outline(menu.rootNode());
    }
    template <class T>
    static void Choose(T& object, const std::string& entry)
    {
        CMenuTree menu("Title");
        object.addMenus(menu, {});
        TreeViewNode* const node = Entry(menu.rootNode(), entry);
        ASSERT_NE(node, nullptr) << entry;
        node->itemClicked();
    }
};

TEST_F(MarkMenus, OfAMarkFollowItsState)
{
    COverlayMark& mark = AddMark("1:2", 50, 1);
    EXPECT_EQ(MenuOf(mark), "Edit Mark; Go-To; Hide Mark; Lock Mark; Save Mark As; Create Route; Delete Mark");
    mark.link = "https://example.org";
    for (const char* entry : {"Go-To", "Hide Mark", "Lock Mark"}) Choose(mark, entry);
    EXPECT_EQ(MenuOf(mark), "Edit Mark; Cancel Navigation; Show Mark; Unlock Mark; Save Mark As; Open Link; "
                            "Create Route; Delete Mark");
    EXPECT_FALSE(mark.visible);
    EXPECT_TRUE(mark.locked);
    EXPECT_EQ(manager.navigation.target, &mark);
    Choose(mark, "Cancel Navigation");
    EXPECT_EQ(manager.navigation.target, nullptr);
    Choose(mark, "Create Route");
    EXPECT_EQ(manager.routes.back()->waypoints.front()->name, "1:2");
    EXPECT_EQ(manager.route_being_edited, manager.routes.back());
}

TEST_F(MarkMenus, OfARouteAndItsWaypointsFollowTheirState)
{
    COverlayRoute& route = AddRoute("R", {{1, 50}, {2, 50}, {3, 50}});
    const std::string common = "Follow Route; Edit Route; Route Operations (Reverse route; Convert to Track); "
                               "Hide Route; Lock Route; Save Route As; Delete Route";
    EXPECT_EQ(MenuOf(route), "Waypoint Operations (Add Waypoints); " + common);
    EXPECT_EQ(MenuOf(*Waypoint(route, 0)),
              "Edit Waypoint; Waypoint Operations (Go-To; Insert Waypoint; Delete Waypoint); " + common);
    EXPECT_EQ(MenuOf(*Waypoint(route, 1)),
              "Edit Waypoint; Waypoint Operations (Go-To; Insert Waypoint; Split Route; Delete Waypoint); " + common);
    EXPECT_EQ(MenuOf(*Waypoint(route, 2)),
              "Edit Waypoint; Waypoint Operations (Go-To; Add Waypoints; Delete Waypoint); " + common);

    Choose(*Waypoint(route, 1), "Follow Route");
    EXPECT_EQ(manager.navigation.route, &route);
    EXPECT_EQ(MenuOf(*Waypoint(route, 1)).rfind("Edit Waypoint; Cancel Navigation; ", 0), 0U);
    EXPECT_EQ(MenuOf(route).rfind("Cancel Navigation; ", 0), 0U);
    Choose(*Waypoint(route, 1), "Hide Route");
    EXPECT_FALSE(Waypoint(route, 1)->isVisible());
    Choose(*Waypoint(route, 1), "Lock Route");
    EXPECT_TRUE(Waypoint(route, 1)->isLocked());
    Choose(*Waypoint(route, 1), "Insert Waypoint");
    EXPECT_EQ(manager.insert_before, Waypoint(route, 2));
}

TEST_F(MarkMenus, OfferToJoinWhatMeets)
{
    const struct {
        const char* what;
        std::vector<DblPoint> first, second;
        int waypoint; ///< of the first
        const char* joined;
    } cases[] = {
        {"the other begins here", {{0, 0}, {1, 0}}, {{1.0001, 0}, {2, 0}}, 1, "first abb"},
        {"the other ends here", {{1, 0}, {2, 0}}, {{0, 0}, {1.0001, 0}}, 0, "second abb"},
        {"both begin here", {{0, 0}, {1, 0}}, {{0, 0}, {2, 0}}, 0, ""},
        {"too far off", {{0, 0}, {1, 0}}, {{1.001, 0}, {2, 0}}, 1, ""},
        {"a round tour with itself", {{0, 0}, {1, 0}, {0, 0}}, {{5, 0}, {6, 0}}, 2, ""},
    };
    for (const auto& c : cases) {
        COverlayRoute& first = AddRoute("first", c.first);
        COverlayRoute& second = AddRoute("second", c.second);
        COverlayMark& waypoint = *Waypoint(first, c.waypoint);
        const bool offered = MenuOf(waypoint).find("Join Route") != std::string::npos;
        EXPECT_EQ(offered, *c.joined != '\0') << c.what;
        if (offered) {
            Choose(waypoint, "Join Route");
            const COverlayRoute& left = first.deleted ? second : first;
            EXPECT_EQ(left.name + " " + NamesOf(left), c.joined) << c.what;
        }
        manager.ClearAll();
    }
}

TEST_F(MarkMenus, DoNothingForWhatHasGone)
{
    COverlayMark& mark = AddMark("M", 50, 1);
    CMenuTree menu("Title");
    mark.addMenus(menu, {});
    manager.ClearAll();
    for (const auto& entry : menu.rootNode().childNodes()) entry->itemClicked();
    EXPECT_EQ(manager.navigation.target, nullptr);
    EXPECT_TRUE(manager.routes.empty());
}

TEST_F(MarkMenus, OpenTheDialogsOfTheirObject)
{
    struct Dialogs : IOverlayDialogs {
        void EditMark(ZT_HWND, COverlayMark& mark) override { opened += "mark " + mark.name + ";"; }
        void EditRoute(ZT_HWND, COverlayRoute& route) override { opened += "route " + route.name + ";"; }
        void SaveAs(ZT_HWND, CSyncable& object) override { opened += "save " + object.name + ";"; }
        std::string opened;
    } dialogs;
    SetOverlayDialogs(&dialogs);
    COverlayMark& mark = AddMark("M", 50, 1);
    COverlayRoute& route = AddRoute("R", {{1, 50}, {2, 50}});
    Choose(mark, "Edit Mark");
    Choose(mark, "Save Mark As");
    Choose(route, "Edit Route");
    Choose(route, "Save Route As");
    Choose(*Waypoint(route, 1), "Edit Waypoint");
    manager.EditDefaultMark({});
    SetOverlayDialogs(nullptr);
    EXPECT_EQ(dialogs.opened, "mark M;save M;route R;save R;mark b;mark P#;");
}

TEST_F(MarkMenus, OpenOnlyWebAndMailLinks)
{
    static std::string opened;
    SetLinkOpener([](const std::string& url) { opened = url; });
    constexpr struct {
        const char* link;
        const char* opened;
    } cases[] = {
        {"https://example.org/a?b=c d", ""},
        {"https://example.org/a?b=c%20d", "https://example.org/a?b=c%20d"},
        {"HTTP://example.org", "http://example.org"},
        {"mailto:a@example.org", "mailto:a@example.org"},
        {" example.org/x ", "https://example.org/x"},
        {"file:///etc/passwd", ""},
        {"javascript:alert(1)", ""},
        {"smb://host/share", ""},
        {"/bin/sh", ""},
        {"https:///nohost", ""},
        {"\n", ""},
    };
    for (const auto& c : cases) {
        opened.clear();
        messages.shown.clear();
        COverlayMark& mark = AddMark("M", 50, 1);
        mark.link = c.link;
        Choose(mark, "Open Link");
        EXPECT_EQ(opened, c.opened) << c.link;
        EXPECT_EQ(messages.shown.size(), opened.empty() ? 1U : 0U) << c.link;
    }
    SetLinkOpener(nullptr);
}

/// A window for questions.
struct CQuestions : IUiContext {
    CQuestions()
    {
        static const bool registered = [] {
            QQuickStyle::setStyle(QStringLiteral("Material"));
            qml_register_ui();
            return true;
        }();
        EXPECT_TRUE(registered);
        SetUiContext(this);
    }
    ~CQuestions() override { SetUiContext(nullptr); }
    QQmlEngine* Engine() override { return &engine; }
    QQuickItem* DialogParent() override { return window.contentItem(); }
    void stopInactivityTimeout() override {}
    void startInactivityTimeout() override {}
    void showHelpForTag(const QString&) override {}
    void SetStatusText(const QString&) override {}
    void SetShowDoneButton(bool) override {}
    /// The question that has not been answered; null when there is none.
    CMessageBoxDlg* Open()
    {
        for (QQuickItem* item : window.contentItem()->childItems()) {
            auto* const box = qobject_cast<CMessageBoxDlg*>(item);
            if (box != nullptr && !box->IsClosing()) return box;
        }
        return nullptr;
    }

    QQmlEngine engine;
    QQuickWindow window;
};

TEST_F(MarkMenus, DeletingAsksUnlessJustMadeAndUnlocked)
{
    CQuestions questions;
    constexpr struct {
        const char* what;
        double age; ///< seconds
        bool locked;
        int answer; ///< -1: nothing is asked
        bool deleted;
    } cases[] = {
        {"just made", 59, false, -1, true}, {"just made, locked", 1, true, 0, true},
        {"older, yes", 61, false, 0, true}, {"older, no", 61, false, 1, false},
        {"locked, no", 61, true, 1, false}, {"made in the future", -10, false, 1, false},
    };
    enum Kind { kFree, kOfRoute, kWholeRoute };
    for (const Kind kind : {kFree, kOfRoute, kWholeRoute}) {
        for (const auto& c : cases) {
            SetNow(kStart);
            COverlayMark& mark = AddMark("50%s", 50, 1);
            COverlayRoute& route = AddRoute("50%s", {{1, 50}, {2, 50}, {3, 50}});
            Waypoint(route, 1)->name = "50%s";
            mark.locked = route.locked = c.locked;
            SetNow(kStart + c.age);
            constexpr const char* kTitles[] = {"Delete Mark", "Delete Waypoint", "Delete route"};
            if (kind == kFree)
                mark.onDelete({});
            else if (kind == kOfRoute)
                Waypoint(route, 1)->onDelete({});
            else
                route.onDelete({});
            CMessageBoxDlg* const box = questions.Open();
            ASSERT_EQ(box != nullptr, c.answer >= 0) << c.what;
            if (box != nullptr) {
                EXPECT_EQ(box->title.toStdString(), kTitles[kind]);
                EXPECT_EQ(box->message.toStdString(),
                          stringprintf("Delete \"50%%s\"%s.\nAre you sure?", c.locked ? " (locked)" : ""));
                box->onButtonClicked(c.answer);
            }
            const bool deleted = kind == kFree      ? mark.deleted
                                 : kind == kOfRoute ? route.waypoints.size() == 2
                                                    : route.deleted;
            EXPECT_EQ(deleted, c.deleted) << c.what << kind;
            manager.ClearAll();
        }
    }
    SetNow(kStart);
    COverlayMark& mark = AddMark("M", 50, 1);
    SetNow(kStart + 100.0);
    mark.onDelete({});
    manager.ClearAll();
    questions.Open()->onButtonClicked(0); // the mark is no longer there
}

} // namespace
