#include "core/display_metrics.h"
#include "overlays/gps_own_ship.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr int kSide = 240;
constexpr int kMiddle = kSide / 2;

/// A ship in the middle of a white window.
class OwnShipDrawing : public testing::Test {
protected:
    void SetUp() override
    {
        SetGraphicsResolution(1.0);
        ship.set_latlon(49.95, -0.95);
        ship.status = CDataGPSPosition::kFix;
    }
    void TearDown() override { SetGraphicsResolution(1.0); }

    CMapping MapOn(const CPolynomialProjection& on) const
    {
        CMapping mapping;
        ship.Map(mapping, on);
        return mapping;
    }
    QImage Draw(const CPolynomialProjection& on) const
    {
        QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        CMapping mapping = MapOn(on);
        double x = 0.0;
        double y = 0.0;
        on.latlong_to_xy(ship.latitude, ship.longitude, x, y);
        CViewParams params;
        params.offset_x = x - kMiddle;
        params.offset_y = y - kMiddle;
        params.view_rect = {x - kSide, y - kSide, x + kSide, y + kSide};
        QPainter painter(&image);
        if (mapping.map_to_screen(params)) ship.Draw(&painter, params, mapping);
        return image;
    }
    /// Knots whose vector is `pixels` long on a chart of FlatChart, to the north.
    static float KnotsFor(double pixels)
    {
        return static_cast<float>(pixels / 10000.0 * 111120.0 / 5.0 / 30.866666666666667);
    }
    static bool IsRed(const QImage& image, int dx, int dy)
    {
        const QColor c = image.pixelColor(kMiddle + dx, kMiddle + dy);
        return c.red() > 150 && c.green() < 160 && c.blue() < 160 && c.red() > c.green() + 60;
    }
    static bool IsWhite(const QImage& image, int dx, int dy)
    {
        return image.pixelColor(kMiddle + dx, kMiddle + dy) == QColor(Qt::white);
    }

    CSettingsKeeper settings;
    COverlayGPSPosition ship;
    const CPolynomialProjection chart = FlatChart(50.0, -1.0);
};

TEST_F(OwnShipDrawing, IconTellsTheFixAndBlinksWithTheData)
{
    const QImage first = Draw(chart);
    EXPECT_TRUE(IsRed(first, 6, 0));
    EXPECT_TRUE(IsRed(first, -6, 0)) << "the icon's centre lies on the position";
    EXPECT_TRUE(IsRed(first, 0, 6) && IsRed(first, 0, -6));
    ship.time = 1e9;
    ship.DispatchPositionUpdate();
    const QImage second = Draw(chart);
    EXPECT_NE(first, second);
    ship.time += 0.5;
    ship.DispatchPositionUpdate();
    EXPECT_EQ(Draw(chart), second) << "faster than 0.9 seconds there is no blinking";
    ship.time += 0.5;
    ship.DispatchPositionUpdate();
    EXPECT_EQ(Draw(chart), first);

    ship.status = CDataGPSPosition::kNoFix;
    const QColor grey = Draw(chart).pixelColor(kMiddle + 6, kMiddle);
    EXPECT_EQ(grey, QColor(0x80, 0x80, 0x80));
}

TEST_F(OwnShipDrawing, IconsFollowColourAndDisplay)
{
    COverlayMovingTarget::gc_color = {0.0F, 0.0F, 1.0F};
    ship.LookChanged();
    EXPECT_EQ(Draw(chart).pixelColor(kMiddle + 6, kMiddle), QColor(Qt::blue));
    SetGraphicsResolution(2.0);
    const QImage sharp = Draw(chart);
    for (const int dx : {-12, 12}) EXPECT_EQ(sharp.pixelColor(kMiddle + dx, kMiddle), QColor(Qt::blue)) << dx;
    EXPECT_FALSE(IsWhite(sharp, 0, 26)) << "twice as large";
}

TEST_F(OwnShipDrawing, VectorPointsAlongTheCourse)
{
    ship.set_course(0.0F, KnotsFor(80.0));
    ship.evaluate_best_direction();
    const QImage north = Draw(chart);
    EXPECT_TRUE(IsRed(north, 0, -60));
    EXPECT_TRUE(IsRed(north, -4, -77) && IsRed(north, 3, -77)) << "the open arrow head";
    EXPECT_TRUE(IsWhite(north, 0, -90) && IsWhite(north, 0, 60) && IsWhite(north, 60, 0));
    EXPECT_TRUE(IsWhite(north, 2, -75) && IsWhite(north, -3, -75)) << "is not filled";

    const QImage turned = Draw(FlatChart(50.0, -1.0, 90.0));
    EXPECT_TRUE(IsRed(turned, 60, 0)) << "north lies to the right on this chart";

    COverlayMovingTarget::show_vector = false;
    EXPECT_TRUE(IsWhite(Draw(chart), 0, -60));
    COverlayMovingTarget::show_vector = true;
    ship.best_source = CDataSpeedDirection::kNoDirection;
    EXPECT_TRUE(IsWhite(Draw(chart), 0, -60));
}

TEST_F(OwnShipDrawing, CompassTriangleReplacesTheVectorAtRest)
{
    ship.set_average(0.0F, 3.0F);
    ship.set_heading(90.0F, 1.0);
    ship.evaluate_best_direction();
    const QImage east = Draw(chart);
    EXPECT_TRUE(IsRed(east, 22, 0) && IsRed(east, 18, 4) && IsRed(east, 18, -4));
    EXPECT_TRUE(IsWhite(east, 35, 0)) << "no vector besides";
    EXPECT_TRUE(IsWhite(east, -22, 0) && IsWhite(east, 0, 22));
    const QImage turned = Draw(FlatChart(50.0, -1.0, 90.0));
    EXPECT_TRUE(IsRed(turned, 0, 22)) << "east lies below on this chart";

    ship.set_course(0.0F, KnotsFor(80.0));
    ship.evaluate_best_direction();
    EXPECT_TRUE(IsWhite(Draw(chart), 22, 0)) << "under way the vector takes over";
}

TEST_F(OwnShipDrawing, RingsHaveTheirDistances)
{
    COverlayMovingTarget::num_range_rings = 2;
    COverlayMovingTarget::range_ring_radius = static_cast<float>(45.0 / 10000.0 * 60.0);
    const QImage rings = Draw(chart);
    for (const int radius : {45, 90}) {
        EXPECT_TRUE(!IsWhite(rings, radius, 0) || !IsWhite(rings, radius - 1, 0)) << radius;
        EXPECT_TRUE(!IsWhite(rings, 0, radius) || !IsWhite(rings, 0, radius - 1)) << radius;
    }
    for (const int radius : {40, 60, 100}) EXPECT_TRUE(IsWhite(rings, radius, 0)) << radius;

    const CMapping mapping = MapOn(chart);
    EXPECT_NEAR(mapping.bounds.width(), 4.0 * 45.0, 1.0) << "a ship beside the window still shows its rings";
    COverlayMovingTarget::num_range_rings = 2000000000;
    COverlayMovingTarget::range_ring_radius = 1e-6F;
    Draw(chart); // does not take for ever
}

TEST_F(OwnShipDrawing, OnlyAPositionIsMapped)
{
    constexpr struct {
        const char* name;
        double lat, lon;
        std::size_t points;
    } cases[] = {
        {"at_sea", 49.95, -0.95, 3},  {"before_the_first_fix", 999.0, 999.0, 0},
        {"null_island", 0.0, 0.0, 0}, {"not_a_number", NAN, 3.0, 0},
        {"equator", 0.0, 9.5, 3},
    };
    for (const auto& c : cases) {
        ship.set_latlon(c.lat, c.lon);
        const CMapping mapping = MapOn(chart);
        EXPECT_EQ(mapping.image_points.size(), c.points) << c.name;
        EXPECT_EQ(mapping.count, c.points > 0 ? 1 : 0) << c.name << ": only the position can be hit";
    }
}

struct CCollector : Listener<COverlayObject> {
    void OnUpdate(COverlayObject& object) override { found = found || &object == wanted; }
    const COverlayObject* wanted = nullptr;
    bool found = false;
};

TEST_F(OwnShipDrawing, AViewOpenedLaterGetsTheShip)
{
    CCollector view;
    view.wanted = &COverlayGPSPosition::theLatestPosition;
    IOverlaySource::GetUpdatesFromAllSources(COverlayObject::kChanged, view);
    EXPECT_TRUE(view.found);
}

} // namespace
