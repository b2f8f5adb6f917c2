#include "ui_window.h"

#include "ui/button_adaptor.h"
#include "ui/image_item.h"
#include "ui/paint_adaptor.h"
#include "ui/painted_icon.h"
#include "ui/text_view_adaptor.h"

#include <QPainter>
#include <QPixmap>
#include <QQmlComponent>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

/// Records what an element asks of its item.
struct CRecordingOwner : IWindowOwner {
    void onDraw(QPainter* painter, double width, double height) override
    {
        painted = QSizeF(width, height);
        painter->fillRect(QRectF(0, 0, width, height), Qt::red);
    }
    void OnClick() override { ++clicks; }
    void onRightClick(int x, int y) override { menus.append(QPoint(x, y)); }
    bool ExtendsToEdges() const override { return false; }
    bool HasMenu() const override { return has_menu; }

    QSizeF painted;
    int clicks = 0;
    QList<QPoint> menus;
    bool has_menu = true;
};

class Adaptors : public CUiTest {
protected:
    template <class T>
    T* Make(const char* file)
    {
        QQmlComponent component(&ui->engine, QUrl(QStringLiteral("qrc:/") + file));
        auto* element = qobject_cast<T*>(component.create());
        EXPECT_NE(element, nullptr) << component.errorString().toStdString();
        element->setParent(ui->layer);
        element->setParentItem(ui->layer);
        element->SetOwner(&owner);
        element->Move(100, 50, 200, 100);
        element->SetLayer(3);
        return element;
    }
    QString Shown(QQuickItem* element, const char* name, const char* property = "text")
    {
        QQuickItem* item = FindIn(element, name);
        return item != nullptr ? item->property(property).toString() : QStringLiteral("(nothing)");
    }
    CRecordingOwner owner;
};

TEST_F(Adaptors, TextsChangeOnlyOnARealChange)
{
    auto* element = Make<CTextViewAdaptor>("DisplayViewTextItem.qml");
    element->show(false);
    QSignalSpy titles(element, &CTextViewAdaptor::titleChanged);
    QSignalSpy values(element, &CTextViewAdaptor::valueChanged);
    ITxtWindow& window = *element;
    for (int i = 0; i < 2; ++i) {
        window.SetTitleUnits("Depth", "m");
        window.SetValue("12 \xC2\xB0 <b>");
    }
    EXPECT_TRUE(element->isVisible()) << "a title shows the element";
    EXPECT_EQ(titles.size(), 1);
    EXPECT_EQ(values.size(), 1);
    EXPECT_EQ(Shown(element, "title"), "Depth / m");
    EXPECT_EQ(Shown(element, "value"), QString::fromUtf8("12 \xC2\xB0 <b>"));
    window.SetTitleUnits("Depth", "");
    EXPECT_EQ(Shown(element, "title"), "Depth");
    EXPECT_EQ(element->z(), 3);
    double width = 0;
    double height = 0;
    window.GetSize(width, height);
    EXPECT_EQ(QSizeF(width, height), QSizeF(200, 100));
}

TEST_F(Adaptors, ARightPressOpensTheMenuOfInteractiveItems)
{
    auto* element = Make<CTextViewAdaptor>("DisplayViewMultilineTextItem.qml");
    QTest::mousePress(ui->window, Qt::RightButton, {}, QPoint(110, 70));
    EXPECT_EQ(owner.menus, QList<QPoint>{QPoint(10, 20)});
    QTest::mouseRelease(ui->window, Qt::RightButton, {}, QPoint(110, 70));
    element->setInteractive(false);
    QTest::mouseClick(ui->window, Qt::RightButton, {}, QPoint(110, 70));
    EXPECT_EQ(owner.menus.size(), 1);
    element->setInteractive(true);
    element->DetachData();
    QTest::mouseClick(ui->window, Qt::RightButton, {}, QPoint(110, 70));
    EXPECT_EQ(owner.menus.size(), 1) << "a window out of use knows no item";
}

TEST_F(Adaptors, AButtonShowsItsLabelAndIcon)
{
    owner.has_menu = false;
    auto* element = Make<CButtonAdaptor_q>("DisplayViewButtonItem.qml");
    IButtonWindow& window = *element;
    window.SetLabel("Start & <u>go</u>");
    EXPECT_EQ(Shown(element, "label"), "Start & <u>go</u>");
    window.SetLabelColor(0xFFE10F14);
    EXPECT_EQ(FindIn(element, "label")->property("color").value<QColor>(), QColor(0xE1, 0x0F, 0x14));
    window.SetIcon("record.svg");
    EXPECT_EQ(Shown(element, "picture", "source"), "qrc:/record.svg");
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::green);
    window.SetIcon(&pixmap);
    const QString first = Shown(element, "picture", "source");
    EXPECT_TRUE(WaitFor([&] { return FindIn(element, "picture")->property("status").toInt() == 1; }))
        << "the provider has the image";
    window.SetIcon(&pixmap);
    EXPECT_NE(Shown(element, "picture", "source"), first) << "a new image is loaded anew";
    EXPECT_EQ(element->iconWidth(), 32);
    window.SetIcon(static_cast<QPixmap*>(nullptr));
    EXPECT_EQ(FindIn(element, "picture"), nullptr);
    Click(element);
    Touch(element);
    EXPECT_EQ(owner.clicks, 2);
    window.SetEnabled(false);
    Click(element);
    EXPECT_EQ(owner.clicks, 2);
}

TEST_F(Adaptors, ADrawnItemPaintsItsWholeSize)
{
    auto* element = new CPaintAdaptor_q(ui->layer);
    element->SetOwner(&owner);
    element->Move(10, 20, 120, 60);
    EXPECT_TRUE(WaitFor([&] { return owner.painted == QSizeF(120, 60); }));
    EXPECT_EQ(ui->window->grabWindow().pixelColor(70, 50), QColor(Qt::red));
    QTest::mouseClick(ui->window, Qt::RightButton, {}, QPoint(15, 30));
    EXPECT_EQ(owner.menus, QList<QPoint>{QPoint(5, 10)});
    QTest::mouseClick(ui->window, Qt::LeftButton, {}, QPoint(15, 30));
    EXPECT_EQ(owner.menus.size(), 1);
    EXPECT_EQ(ui->window->property("pressed").toInt(), 1) << "a left press of a mouse goes to what lies below";
    const QPointer<QQuickItem> alive(element);
    element->Destroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

TEST_F(Adaptors, AFingerThatRestsOpensTheMenu)
{
    auto* element = new CPaintAdaptor_q(ui->layer);
    element->SetOwner(&owner);
    element->Move(0, 0, 100, 100);
    QTest::touchEvent(ui->window, TouchScreen()).press(0, QPoint(30, 40), ui->window);
    EXPECT_TRUE(WaitFor([&] { return !owner.menus.isEmpty(); }));
    QTest::touchEvent(ui->window, TouchScreen()).release(0, QPoint(30, 40), ui->window);
    EXPECT_EQ(owner.menus, QList<QPoint>{QPoint(30, 40)});
}

TEST_F(Adaptors, AnImageIsWholeOrFills)
{
    auto* element = Make<CImageItem>("DVImageItem.qml");
    element->setImageSource(QUrl("qrc:/appicon.png"));
    EXPECT_TRUE(WaitFor([&] { return FindIn(element, "picture")->property("status").toInt() == 1; }));
    const int whole = FindIn(element, "picture")->property("fillMode").toInt();
    element->setFill(true);
    EXPECT_NE(FindIn(element, "picture")->property("fillMode").toInt(), whole);
}

TEST_F(Adaptors, AMarkIconIsPaintedInItsColour)
{
    QQmlComponent component(&ui->engine);
    component.setData(
        "import com.zentara.zt\nCPaintedIcon { iconName: 'Square'; color: '#00ff00'; width: 48; height: 48 }", {});
    auto* icon = qobject_cast<CPaintedIcon*>(component.create());
    ASSERT_NE(icon, nullptr) << component.errorString().toStdString();
    icon->setParent(ui->layer);
    icon->setParentItem(ui->layer);
    EXPECT_TRUE(WaitFor([&] { return ui->window->grabWindow().pixelColor(24, 24) == QColor(0, 255, 0); }));
    icon->setColor(Qt::blue);
    EXPECT_TRUE(WaitFor([&] { return ui->window->grabWindow().pixelColor(24, 24) == QColor(Qt::blue); }));
}

} // namespace
