#include "ui/colorized_image.h"

#include "core/display_metrics.h"
#include "support/temporary_root.h"
#include "ui/painted_icon.h"

#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <gtest/gtest.h>

namespace {

const GraphicsColor kRed(1.0F, 0.0F, 0.0F);

QImage Filled(int side, QColor color)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// Share of the pixels that are drawn, 0 to 1.
double Coverage(const QImage& image)
{
    double drawn = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) drawn += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return drawn / (image.width() * image.height());
}

class Images : public testing::Test {
protected:
    void TearDown() override { SetGraphicsResolution(1.0); }
    std::string Save(const char* name, const QImage& image)
    {
        EXPECT_TRUE(image.save(QString::fromStdString(root.path() + "/" + name)));
        return root.path() + "/icon";
    }
    CTemporaryRoot root;
};

TEST_F(Images, ChooseTheResolutionOfTheDisplay)
{
    const std::string icon = Save("icon.png", Filled(10, Qt::blue));
    struct Case {
        double resolution;
        int side;
    };
    SetGraphicsResolution(2.0);
    EXPECT_EQ(LoadColorizedImage(icon, kRed).width(), 10) << "only scale 1 is there";
    Save("icon@2x.png", Filled(20, Qt::blue));
    for (const Case& tested : {Case{1.0, 10}, Case{1.1, 10}, Case{1.2, 20}, Case{2.1, 20}, Case{3.0, 20}}) {
        SetGraphicsResolution(tested.resolution);
        EXPECT_EQ(LoadColorizedImage(icon, kRed).width(), tested.side) << tested.resolution;
    }
    Save("icon@3x.png", Filled(30, Qt::blue));
    EXPECT_EQ(LoadColorizedImage(icon, kRed).width(), 30);
    EXPECT_EQ(LoadColorizedImage(icon, kRed).devicePixelRatio(), 1.0);
}

TEST_F(Images, TintTheBodyAndKeepTheOutline)
{
    bool takes_colour = true;
    const std::string icon = Save("icon.png", Filled(10, Qt::blue));
    EXPECT_EQ(LoadColorizedImage(icon, kRed, &takes_colour).pixelColor(5, 5), QColor(Qt::blue));
    EXPECT_FALSE(takes_colour);
    Save("icon_c.png", Filled(10, Qt::white));
    QImage outline = Filled(10, Qt::transparent);
    outline.setPixelColor(0, 0, Qt::black);
    Save("icon.png", outline);
    const QImage both = LoadColorizedImage(icon, kRed, &takes_colour);
    EXPECT_TRUE(takes_colour);
    EXPECT_EQ(both.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(both.pixelColor(5, 5), QColor(Qt::red));
    QFile::remove(QString::fromStdString(icon + ".png"));
    EXPECT_EQ(LoadColorizedImage(icon, kRed).pixelColor(0, 0), QColor(Qt::red)) << "a body alone is wholly tinted";
    EXPECT_TRUE(LoadColorizedImage("nobody", kRed, &takes_colour).isNull());
    EXPECT_FALSE(takes_colour);
    EXPECT_TRUE(LoadColorizedImage_fitted("Flag", kRed, nullptr, QSize(0, 10)).isNull());
}

TEST_F(Images, TintingMultiplies)
{
    const QImage tinted = ColorizeImage(Filled(1, QColor(128, 128, 128, 128)), GraphicsColor(1.0F, 0.5F, 0.0F, 0.5F));
    const QColor pixel = tinted.pixelColor(0, 0);
    EXPECT_NEAR(pixel.red(), 128, 3);
    EXPECT_NEAR(pixel.green(), 64, 3);
    EXPECT_EQ(pixel.blue(), 0);
    EXPECT_NEAR(pixel.alpha(), 64, 1);
}

TEST_F(Images, EveryDrawingIsLegible)
{
    const QStringList names = QDir(QStringLiteral(":/")).entryList({"*.svg"});
    EXPECT_GT(names.size(), 80);
    for (const QString& name : names) {
        ASSERT_TRUE(QSvgRenderer(":/" + name).isValid()) << name.toStdString();
        const QImage image = LoadColorizedImage_fitted(name.toStdString(), kRed, nullptr, QSize(24, 24));
        ASSERT_EQ(image.size(), QSize(24, 24)) << name.toStdString();
        EXPECT_GT(Coverage(image), 0.03) << name.toStdString();
        EXPECT_LT(Coverage(image), 0.95) << name.toStdString();
    }
    for (const char* name : {":/OpenMap.png", ":/Overlays.png", ":/movearrows.png", ":/appicon.png"}) {
        EXPECT_GT(Coverage(QImage(name)), 0.05) << name;
    }
}

TEST_F(Images, TheStandardMarkSymbolsTakeAColour)
{
    for (const char* name :
         {"Flag",          "Dot",          "Pin",        "Person",   "X",       "Anchor",    "Boat",  "Buoy_can",
          "Buoy_cardinal", "Buoy_conical", "Circle",     "Deer",     "Exit",    "First_aid", "Fish",  "Fuel",
          "G_pin",         "Geocache",     "Buoy_round", "Car",      "House",   "MOB",       "Skull", "Square",
          "Tent",          "Tinydot",      "Trackback",  "Triangle", "Warning", "Wreck"}) {
        bool takes_colour = false;
        const QImage red = LoadColorizedImage(name, kRed, &takes_colour);
        const QImage green = LoadColorizedImage(name, GraphicsColor(0.0F, 1.0F, 0.0F));
        EXPECT_TRUE(takes_colour) << name;
        EXPECT_NE(red, green) << name;
    }
}

TEST_F(Images, ADrawingIsRenderedAtItsScale)
{
    EXPECT_EQ(LoadColorizedImage_atsize("Flag", kRed, nullptr, 1).width(), 24);
    EXPECT_EQ(LoadColorizedImage_atsize("qrc:/Flag.svg", kRed, nullptr, 3).width(), 72);
}

} // namespace
