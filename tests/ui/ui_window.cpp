#include "ui_window.h"

#include "test_dialogs.h"

#include "ui/qml_register_ui.h"

#include <QQuickStyle>
#include <QtTest/QTest>

namespace {

void RegisterOnce()
{
    static const bool done = [] {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        qml_register_ui();
        qmlRegisterType<CDlg_form>("com.zentara.zt", 1, 0, "CDlg_form");
        qmlRegisterType<CDlg_list>("com.zentara.zt", 1, 0, "CDlg_list");
        return true;
    }();
    (void)done;
}

} // namespace

QPointingDevice* TouchScreen()
{
    static QPointingDevice* screen = QTest::createTouchDevice();
    return screen;
}

CTestUi::CTestUi()
{
    RegisterOnce();
    QObject::connect(&engine, &QQmlEngine::warnings, [this](const QList<QQmlError>& errors) {
        for (const QQmlError& error : errors) warnings.append(error.toString());
    });
    engine.load(QUrl::fromLocalFile(QStringLiteral(ZT_SOURCE_DIR "/tests/ui/ui_window.qml")));
    if (engine.rootObjects().isEmpty()) return;
    window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    layer = window->property("layer").value<QQuickItem*>();
    SetUiContext(this);
}

CTestUi::~CTestUi()
{
    SetUiContext(nullptr);
}

void CUiTest::SetUp()
{
    ui = std::make_unique<CTestUi>();
    ASSERT_NE(ui->window, nullptr) << ui->warnings.join('\n').toStdString();
    ui->window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ui->window));
}

void CUiTest::TearDown()
{
    EXPECT_EQ(ui->warnings.join('\n').toStdString(), "");
    ui.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void CUiTest::Resize(int width, int height)
{
    ui->window->resize(width, height);
    ASSERT_TRUE(WaitFor([&] { return ui->layer->width() == width && ui->layer->height() == height; }));
}

bool CUiTest::WaitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, 5000);
}

QQuickItem* CUiTest::FindIn(QQuickItem* root, const char* object_name)
{
    if (!root->isVisible()) return nullptr;
    const auto items = root->childItems();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (QQuickItem* found = FindIn(*item, object_name)) return found;
    }
    return root->objectName() == QLatin1String(object_name) ? root : nullptr;
}

QQuickItem* CUiTest::Find(const char* object_name) const
{
    return FindIn(ui->window->contentItem(), object_name);
}

bool CUiTest::WaitOpened()
{
    return WaitFor([this] {
        auto* dialog = NewestDialog<CZTDialog>();
        if (dialog == nullptr) return false;
        for (QQuickItem* frame : dialog->childItems()) {
            if (frame->property("fullyOpen").toBool()) return true;
        }
        return false;
    });
}

bool CUiTest::WaitNoDialog()
{
    return WaitFor([this] { return ui->layer->childItems().isEmpty(); });
}

QRectF CUiTest::InWindow(const QQuickItem* item) const
{
    return item->mapRectToScene(QRectF(QPointF(0, 0), item->size()));
}

void CUiTest::Click(const QQuickItem* item, Qt::MouseButton button)
{
    QTest::mouseClick(ui->window, button, {}, Middle(item));
}

void CUiTest::Touch(const QQuickItem* item)
{
    const QPoint place = Middle(item);
    QTest::touchEvent(ui->window, TouchScreen()).press(0, place, ui->window);
    QTest::touchEvent(ui->window, TouchScreen()).release(0, place, ui->window);
}

void CUiTest::Key(Qt::Key key)
{
    QTest::keyClick(ui->window, key);
}
