#include "app/app_data.h"
#include "app/app_globals.h"
#include "app/app_ui_context.h"
#include "app/qml_register_types.h"
#include "app/zentara_app_model.h"
#include "chart/chart_list.h"
#include "core/persistant_data.h"
#include "support/patience.h"
#include "support/temporary_root.h"
#include "ui/done_button.h"

#include <fstream>
#include <set>

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

void RegisterOnce()
{
    static const bool registered = [] {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        qml_register_types();
        return true;
    }();
    Q_UNUSED(registered);
}

/// The real main.qml over an empty catalogue.
class MainWindow : public testing::Test {
protected:
    void SetUp() override
    {
        RegisterOnce();
        QCoreApplication::setOrganizationName(QStringLiteral("Zentara"));
        QCoreApplication::setOrganizationDomain(QStringLiteral("zentara.example"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(root.path()));
        theAppEngine = &engine;
        PersistantData::LoadAll("zentara");
        load_app_data();
        p_chart_list->init();
        QObject::connect(&engine, &QQmlEngine::warnings, &engine, [this](const QList<QQmlError>& list) {
            for (const QQmlError& warning : list) warnings += warning.toString().toStdString() + "\n";
        });
        engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
        ASSERT_EQ(engine.rootObjects().size(), 1);
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
        ASSERT_NE(window, nullptr);
        ASSERT_NE(theApp, nullptr);
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window, kPatience_ms));
    }
    void TearDown() override
    {
        EXPECT_EQ(warnings, "");
        theAppEngine = nullptr;
    }

    QQuickItem* Find(const char* name) const { return window->findChild<QQuickItem*>(QString::fromLatin1(name)); }
    QPoint CentreOf(QQuickItem* item) const
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void Click(QQuickItem* item) { QTest::mouseClick(window, Qt::LeftButton, {}, CentreOf(item)); }
    /// Texts of all visible labels and entries below `item`.
    void Texts(QQuickItem* item, std::set<std::string>& texts) const
    {
        if (!item->isVisible()) return;
        const QVariant text = item->property("text");
        if (text.isValid()) texts.insert(text.toString().toStdString());
        for (QQuickItem* child : item->childItems()) Texts(child, texts);
    }
    bool Shows(const std::string& text) const
    {
        std::set<std::string> texts;
        Texts(window->contentItem(), texts);
        return texts.count(text) > 0;
    }
    bool WaitUntilShown(const std::string& text) const
    {
        return QTest::qWaitFor([&] { return Shows(text); }, kPatience_ms);
    }

    CTemporaryRoot root;
    CAppUiContext context;
    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;
    std::string warnings;
};

TEST_F(MainWindow, ButtonsCanBeTouchedNamedAndReached)
{
    for (const char* name : {"menuButton", "overlaysButton"}) {
        QQuickItem* button = Find(name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_TRUE(button->isVisible()) << name;
        EXPECT_GE(std::min(button->width(), button->height()), 36.0) << name << ": 9 mm at 96 dots an inch, and more";
        EXPECT_TRUE(button->activeFocusOnTab()) << name;
    }
    EXPECT_FALSE(Find("nextPageButton")->isVisible()) << "there is one page";
}

TEST_F(MainWindow, MenuOpensByMouseAndByKey)
{
    Click(Find("menuButton"));
    EXPECT_TRUE(WaitUntilShown("Quit App"));
    EXPECT_TRUE(theApp->isUserInterfaceBusy());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Shows("Quit App") && !theApp->isUserInterfaceBusy(); }, kPatience_ms));
    Find("menuButton")->forceActiveFocus();
    QTest::keyClick(window, Qt::Key_Space);
    EXPECT_TRUE(WaitUntilShown("Quit App"));
}

TEST_F(MainWindow, UnreadableFilesAreNamedAndNothingElseHappens)
{
    const struct {
        const char* file;
        const char* text;
    } cases[] = {
        {"a.noise", "Don't know what this file is: "},
        {"b.gpx", "Failed to import file: "},
        {"c.pstf", "Failed to load pages file: "},
        {"d.dvpage", "Reading the .dvpage file failed: "},
    };
    for (const auto& row : cases) {
        std::ofstream(root.file(row.file)) << "noise";
        theApp->processCommandLine({"zentara", root.file("missing.rlt"), root.file(row.file)});
        EXPECT_TRUE(WaitUntilShown(row.text + root.file(row.file))) << row.file;
        QTest::keyClick(window, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !theApp->isUserInterfaceBusy(); }, kPatience_ms)) << row.file;
    }
}

TEST_F(MainWindow, LockedScreenTakesNothingUntilTheButtonWasHeld)
{
    QQuickItem* unlock = Find("unlockButton");
    ASSERT_NE(unlock, nullptr);
    EXPECT_EQ(unlock->property("delay").toInt(), 500);
    theApp->LockScreen();
    ASSERT_TRUE(unlock->isVisible());
    QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(24, 24)); // where the menu button is
    QTest::keyClick(window, Qt::Key_Plus);
    EXPECT_FALSE(theApp->isUserInterfaceBusy());
    Click(unlock);
    EXPECT_TRUE(unlock->isVisible()) << "a short press does not unlock";
    unlock->setProperty("delay", 1);
    QTest::mousePress(window, Qt::LeftButton, {}, CentreOf(unlock));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !unlock->isVisible(); }, kPatience_ms));
    QTest::mouseRelease(window, Qt::LeftButton, {}, CentreOf(unlock));
}

TEST_F(MainWindow, ControlsFadeUnlessADialogIsOpen)
{
    QObject* controls = window->findChild<QObject*>(QStringLiteral("controls"));
    ASSERT_NE(controls, nullptr);
    EXPECT_EQ(controls->property("idleTime").toInt(), 5000);
    EXPECT_EQ(controls->property("fadeOutTime").toInt(), 3000);
    controls->setProperty("idleTime", 1);
    controls->setProperty("fadeOutTime", 1);
    const auto opacity = [&] { return controls->property("interactive_control_opacity").toDouble(); };

    theApp->stopInactivityTimeout();
    theApp->stopInactivityTimeout();
    QSignalSpy shown(theApp, &CZentaraAppModel::setInteractive);
    theApp->ShowControls();
    EXPECT_EQ(shown.count(), 0) << "not while a dialog is open";
    theApp->startInactivityTimeout();
    EXPECT_TRUE(theApp->isUserInterfaceBusy()) << "the pair nests";
    EXPECT_EQ(opacity(), 1.0);
    theApp->startInactivityTimeout();
    EXPECT_TRUE(QTest::qWaitFor([&] { return opacity() < 0.1; }, kPatience_ms));
    EXPECT_FALSE(Find("menuButton")->isVisible());
    controls->setProperty("idleTime", 5000);
    theApp->ShowControls();
    EXPECT_TRUE(QTest::qWaitFor([&] { return opacity() == 1.0; }, kPatience_ms));
}

TEST_F(MainWindow, PagesSlideAndTheOldOneIsDetached)
{
    auto* old_page = Find("dv_page1");
    auto* new_page = Find("dv_page2");
    ASSERT_FALSE(old_page->childItems().isEmpty()) << "the map";
    QMetaObject::invokeMethod(theApp, "transition",
                              Q_ARG(CDisplayViewPage*, reinterpret_cast<CDisplayViewPage*>(old_page)),
                              Q_ARG(CDisplayViewPage*, reinterpret_cast<CDisplayViewPage*>(new_page)), Q_ARG(int, -1));
    EXPECT_EQ(new_page->x(), -window->width());
    EXPECT_TRUE(QTest::qWaitFor([&] { return new_page->x() == 0 && !old_page->isVisible(); }, kPatience_ms));
    EXPECT_EQ(old_page->x(), window->width());
    EXPECT_TRUE(QTest::qWaitFor([&] { return old_page->childItems().isEmpty(); }, kPatience_ms));
    EXPECT_EQ(theApp->LargestMap(), nullptr);
}

TEST_F(MainWindow, StatusDimmerThemeAndDoneButton)
{
    EXPECT_FALSE(Find("statusBox")->isVisible());
    theApp->SetStatusText("<b>No data</b>");
    EXPECT_TRUE(Shows("<b>No data</b>"));
    theApp->SetStatusText("Opened /dev/ttyUSB0 read-only\n");
    EXPECT_TRUE(Shows("Opened /dev/ttyUSB0 read-only"));
    theApp->SetStatusText("");
    EXPECT_FALSE(Find("statusBox")->isVisible());

    theApp->setScreenDimmer(2.0);
    EXPECT_EQ(Find("screen_dimmer_overlay")->opacity(), CZentaraAppModel::kDarkestDimmer);
    theApp->setTheme(1);
    EXPECT_TRUE(theApp->darkTheme());
    theApp->setTheme(7);
    EXPECT_EQ(theApp->theme(), 1);

    int done = 0;
    SetDoneButtonCallback([&] { ++done; });
    EXPECT_TRUE(theApp->showDoneButton());
    Click(Find("menuButton"));
    EXPECT_EQ(done, 1);
    EXPECT_FALSE(theApp->showDoneButton());
}

} // namespace
