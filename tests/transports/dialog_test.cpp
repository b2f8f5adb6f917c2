#include "dialog_test.h"

#include "nmea/transports/qml_register_transports.h"
#include "ui/qml_register_ui.h"
#include "ui/zt_metrics.h"

#include <QQuickStyle>

namespace {

constexpr const char* kWindow = R"(
import QtQuick
import QtQuick.Controls
ApplicationWindow {
    property alias layer: dialogLayer
    visible: true
    width: 800
    height: 600
    FocusScope {
        id: dialogLayer
        anchors.fill: parent
    }
}
)";

void RegisterOnce()
{
    static const bool done = [] {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        qml_register_ui();
        qml_register_transports();
        return true;
    }();
    (void)done;
}

} // namespace

CDialogWindow::CDialogWindow()
{
    RegisterOnce();
    QObject::connect(&engine, &QQmlEngine::warnings, [this](const QList<QQmlError>& errors) {
        for (const QQmlError& error : errors) warnings.append(error.toString());
    });
    engine.loadData(kWindow);
    if (engine.rootObjects().isEmpty()) return;
    window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    layer = window->property("layer").value<QQuickItem*>();
    SetUiContext(this);
}

CDialogWindow::~CDialogWindow()
{
    SetUiContext(nullptr);
}

void CDialogTest::SetUp()
{
    CTransportTest::SetUp();
    ui = std::make_unique<CDialogWindow>();
    ASSERT_NE(ui->window, nullptr) << ui->warnings.join('\n').toStdString();
    ui->window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ui->window));
}

void CDialogTest::TearDown()
{
    EXPECT_EQ(ui->warnings.join('\n').toStdString(), "");
    ui.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    CTransportTest::TearDown();
}

QQuickItem* CDialogTest::FindIn(QQuickItem* top, const std::function<bool(const QQuickItem*)>& matches) const
{
    if (!top->isVisible()) return nullptr;
    const auto items = top->childItems();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (QQuickItem* found = FindIn(*item, matches)) return found;
    }
    return matches(top) ? top : nullptr;
}

QQuickItem* CDialogTest::Find(const char* object_name) const
{
    return FindIn(ui->window->contentItem(),
                  [&](const QQuickItem* item) { return item->objectName() == QLatin1String(object_name); });
}

bool CDialogTest::WaitOpened()
{
    return WaitFor([this] {
        const auto dialogs = ui->layer->childItems();
        if (dialogs.isEmpty()) return false;
        for (QQuickItem* frame : dialogs.constLast()->childItems()) {
            if (frame->property("fullyOpen").toBool()) return true;
        }
        return false;
    });
}

bool CDialogTest::WaitClosed()
{
    return WaitFor([this] { return ui->layer->childItems().isEmpty(); });
}

void CDialogTest::Click(const QQuickItem* item)
{
    ASSERT_NE(item, nullptr);
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2.0, item->height() / 2.0));
    QTest::mouseClick(ui->window, Qt::LeftButton, {}, middle.toPoint());
}

void CDialogTest::Click(const char* object_name)
{
    SCOPED_TRACE(object_name);
    Click(Find(object_name));
}

void CDialogTest::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(ui->window, key, modifiers);
}

void CDialogTest::Type(const char* object_name, const char* text)
{
    Click(object_name);
    Key(Qt::Key_A, Qt::ControlModifier);
    Key(Qt::Key_Delete);
    for (; *text != '\0'; ++text) QTest::keyClick(ui->window, *text);
}

void CDialogTest::ExpectUsable(const std::vector<const char*>& object_names)
{
    const QRectF whole(0, 0, ui->window->width(), ui->window->height());
    for (const char* name : object_names) {
        const QQuickItem* item = Find(name);
        ASSERT_NE(item, nullptr) << name;
        EXPECT_TRUE(whole.contains(item->mapRectToScene(item->boundingRect()))) << name;
        EXPECT_GE(item->height(), CZTMetrics().touchTarget()) << name;
        EXPECT_GE(item->width(), CZTMetrics().touchTarget()) << name;
        QObject* accessible = nullptr;
        for (QObject* child : item->children()) {
            if (child->inherits("QQuickAccessibleAttached")) accessible = child;
        }
        ASSERT_NE(accessible, nullptr) << name;
        EXPECT_FALSE(accessible->property("name").toString().isEmpty()) << name;
    }
}
