#include "app/app_globals.h"
#include "app/app_ui_context.h"
#include "app/gps_setup_dialog.h"
#include "app/qml_register_types.h"
#include "core/global_settings_type.h"
#include "core/persistant_data.h"
#include "navdata/units.h"
#include "nmea/data_connection.h"
#include "overlays/gps_position.h"
#include "support/patience.h"
#include "support/temporary_root.h"

#include <algorithm>
#include <vector>

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Ship = COverlayGPSPosition;

struct CQuietConnection : CDataConnection {
    bool Open() override { return true; }
    void Close() override {}
};

/// The dialog, opened through its entry of the settings menu, over the real main.qml.
class GPSSettings : public testing::Test {
protected:
    void SetUp() override
    {
        static const bool registered = [] {
            QQuickStyle::setStyle(QStringLiteral("Material"));
            qml_register_types();
            return true;
        }();
        Q_UNUSED(registered);
        QCoreApplication::setOrganizationName(QStringLiteral("Zentara"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(root.path()));
        theAppEngine = &engine;
        PersistantData::LoadAll("zentara");
        QObject::connect(&engine, &QQmlEngine::warnings, &engine, [this](const QList<QQmlError>& list) {
            for (const QQmlError& warning : list) warnings += warning.toString().toStdString() + "\n";
        });
        engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
        ASSERT_EQ(engine.rootObjects().size(), 1);
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
        ASSERT_NE(window, nullptr);
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window, kPatience_ms));
        Ship::show_vector = true;
        Ship::velocity_vector_scale = 5.0F;
        Ship::num_range_rings = 0;
        Ship::range_ring_radius = 0.0F;
        Ship::record_in_background_mode = 1;
        Ship::gc_color = {1.0F, 0.0F, 0.0F};
        CUnits::Default->set_unit_family(CUnits::kMetric);
    }
    void TearDown() override
    {
        CDataConnection::stopDebug({});
        CUnits::Default->set_unit_family(CUnits::kNautical);
        Ship::num_range_rings = 0;
        Ship::gc_color = {1.0F, 0.0F, 0.0F};
        EXPECT_EQ(warnings, "");
        theAppEngine = nullptr;
    }
    void Open()
    {
        for (CGlobalSettingsType* entry = CGlobalSettingsType::First(); entry != nullptr; entry = entry->Next())
            if (entry->name == "GPS Settings") entry->showDialog(ZT_HWND());
        dialog = window->findChild<CDlg_gps_setup*>();
        ASSERT_NE(dialog, nullptr);
        QObject* const panel = dialog->findChild<QObject*>(QStringLiteral("panel"));
        ASSERT_NE(panel, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return panel->parent()->property("fullyOpen").toBool(); }, kPatience_ms));
    }
    QQuickItem* Find(const char* name) const { return Below(dialog, QString::fromLatin1(name)); }
    static QQuickItem* Below(QQuickItem* item, const QString& name)
    {
        if (item->objectName() == name) return item;
        for (QQuickItem* child : item->childItems())
            if (QQuickItem* found = Below(child, name)) return found;
        return nullptr;
    }
    void Click(const char* name)
    {
        QQuickItem* const item = Find(name);
        ASSERT_NE(item, nullptr) << name;
        item->forceActiveFocus(); // scrolls it into sight
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
    }
    void Type(const char* name, const char* text)
    {
        Find(name)->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_A, Qt::ControlModifier);
        for (const char* c = text; *c != 0; ++c) QTest::keyClick(window, *c);
    }
    static bool Shows(const QQuickItem* item, const char* text)
    {
        if (!item->isVisible()) return false;
        if (item->property("text").toString() == QLatin1String(text)) return true;
        const auto children = item->childItems();
        return std::any_of(children.begin(), children.end(), [=](QQuickItem* child) { return Shows(child, text); });
    }
    bool Closes()
    {
        return QTest::qWaitFor([this] { return window->findChild<CDlg_gps_setup*>() == nullptr; }, kPatience_ms);
    }
    void Collect(QQuickItem* item, std::vector<QQuickItem*>& into) const
    {
        if (!item->isVisible()) return;
        if (item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField")) into.push_back(item);
        for (QQuickItem* child : item->childItems()) Collect(child, into);
    }

    CTemporaryRoot root;
    CAppUiContext context;
    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;
    CDlg_gps_setup* dialog = nullptr;
    std::string warnings;
};

TEST_F(GPSSettings, ByMouseIntoTheSettingsFile)
{
    Open();
    EXPECT_FALSE(Find("ringRadius")->isVisible());
    EXPECT_FALSE(Find("showHeading")->isVisible()) << "there is no compass";
    Type("vectorScale", "7,5");
    Click("showRings");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Find("ringRadius")->isVisible(); }, kPatience_ms));
    Type("ringRadius", "1.852");
    Find("ringCount")->forceActiveFocus();
    QTest::keyClick(window, Qt::Key_Up);
    QTest::keyClick(window, Qt::Key_Up);
    Click("recordInBackground");
    Click("changeColour");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Find("colours")->isVisible(); }, kPatience_ms));
    QTest::qWait(0);
    Click("colour Blue");
    EXPECT_EQ(Ship::num_range_rings, 0) << "nothing is taken over before the dialog is accepted";
    Find("vectorScale")->forceActiveFocus();
    QTest::keyClick(window, Qt::Key_Return);
    ASSERT_TRUE(Closes());
    EXPECT_EQ(Ship::velocity_vector_scale, 7.5F);
    EXPECT_EQ(Ship::num_range_rings, 3);
    EXPECT_NEAR(Ship::range_ring_radius, 1.0F, 1e-6F) << "kilometres";
    EXPECT_EQ(Ship::record_in_background_mode, 0);
    EXPECT_EQ(Ship::theLatestPosition.colour, QColor(0, 0x40, 0xff));
    std::string saved;
    EXPECT_TRUE(PersistantData::GetValue("COverlayGPSPosition:num_range_rings", saved));
    EXPECT_EQ(saved, "0x3");

    Open();
    EXPECT_EQ(Find("ringRadius")->property("text").toString(), QStringLiteral("1.852"));
    Click("showRings");
    Click("showVector");
    dialog->accept();
    ASSERT_TRUE(Closes());
    EXPECT_EQ(Ship::num_range_rings, 0);
    EXPECT_FALSE(Ship::show_vector);
    EXPECT_EQ(Ship::velocity_vector_scale, 7.5F) << "what was not touched stays to the last bit";
}

TEST_F(GPSSettings, ANumberThatCannotBeUsedIsNamed)
{
    Open();
    for (const char* text : {"", "abc", "0", "-3", "1e9", "nan"}) {
        Type("vectorScale", text);
        if (*text == 0) QTest::keyClick(window, Qt::Key_Backspace);
        dialog->accept();
        EXPECT_TRUE(Find("problem")->isVisible()) << text;
        EXPECT_FALSE(dialog->IsClosing()) << text;
    }
    QTest::keyClick(window, Qt::Key_Escape);
    ASSERT_TRUE(Closes());
    EXPECT_EQ(Ship::velocity_vector_scale, 5.0F);
}

TEST_F(GPSSettings, EverythingCanBeTouchedNamedAndReached)
{
    CQuietConnection connection;
    connection.debuggable = true;
    CDataConnection::theConnection = &connection;
    Ship::num_range_rings = 2;
    Open();
    Click("changeColour");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Find("colours")->isVisible(); }, kPatience_ms));
    std::vector<QQuickItem*> controls;
    Collect(dialog, controls);
    EXPECT_GE(controls.size(), 20U);
    for (QQuickItem* control : controls) {
        const std::string name =
            control->objectName().toStdString() + control->property("text").toString().toStdString();
        EXPECT_GE(std::min(control->width(), control->height()), 34.0) << name << ": 9 mm at 96 dots an inch";
        EXPECT_TRUE(control->activeFocusOnTab() || name.find("spin") != std::string::npos) << name;
    }

    EXPECT_EQ(Find("debug")->property("text").toString(), QStringLiteral("NMEA Debug"));
    Click("debug");
    EXPECT_TRUE(CDataConnection::isDebugging());
    EXPECT_EQ(Find("debug")->property("text").toString(), QStringLiteral("End Debug"));
    CDataConnection::stopDebug({});
    Click("dataConnection");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Shows(window->contentItem(), "Simulation File"); }, kPatience_ms));
    QTest::keyClick(window, Qt::Key_Escape);
    CDataConnection::theConnection = nullptr;
}

} // namespace
