#include "view_fixture.h"

namespace {

constexpr int kTilesAcross = 32;
constexpr int kWorldWidth = kTilesAcross * kTileSide;
constexpr double kDegreesPerPixel = 360.0 / kWorldWidth;

/// A colour that tells the column it stands in.
unsigned char ColourOf(int x)
{
    return static_cast<unsigned char>(x / 8 % 100 + 2);
}

class WorldView : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        std::filesystem::create_directories(getAppDirectory());
        std::vector<std::uint32_t> palette(128);
        for (std::uint32_t i = 0; i < 128; ++i) palette[i] = i << 16;
        CChartWriter writer;
        writer.Size(kTilesAcross, 8).Type("Topo").Palette(palette);
        writer.Georeferencing(AffineGeo(45.0, -180.0, kDegreesPerPixel));
        ASSERT_TRUE(writer.Write(getAppDirectory() + "/world.rlt", [](int, unsigned char* band) {
            for (int i = 0; i < kWorldWidth * kTileSide; ++i) band[i] = ColourOf(i % kWorldWidth);
            return true;
        }));
        MakeView();
        view->setScreenRect(0, 0, 700, 200);
        view->GotoBestMap(ZT_HWND(), 0.0, 170.0, 0.0, {});
        ASSERT_TRUE(view->IsOpen());
    }
    /// Screen columns of the picture that do not show the chart column that belongs there (level 0 and finer).
    int WrongColumns(const QImage& picture) const
    {
        int wrong = 0;
        const CViewParams& params = view->Params();
        for (int sx = 0; sx < picture.width(); ++sx) {
            double x = sx / params.scale + params.offset_x;
            x -= std::floor(x / kWorldWidth) * kWorldWidth;
            if (qRed(picture.pixel(sx, 100)) != ColourOf(static_cast<int>(x))) ++wrong;
        }
        return wrong;
    }
};

TEST_F(WorldView, NeverABlankStripNorAJumpAllTheWayRound)
{
    EXPECT_EQ(WrongColumns(PaintLoaded()), 0) << "the antimeridian is 20 degrees from the middle";
    double passed = 0.0;
    int from_squares_at_hand = 0;
    for (int i = 0; passed < 2.5 * kWorldWidth; ++i) {
        const double lon_x = At(10.0, 175.0).x;
        double dx = -40.0;
        double dy = 0.0;
        view->DoScroll(dx, dy);
        passed -= dx;
        EXPECT_EQ(dx, -40.0);
        const double moved = std::remainder(At(10.0, 175.0).x - lon_x + 40.0, kWorldWidth);
        EXPECT_EQ(moved, 0.0) << "no jump";
        if (WrongColumns(Paint()) <= 256) ++from_squares_at_hand;
        ASSERT_EQ(WrongColumns(PaintLoaded()), 0) << "step " << i;
        double lat = 0.0;
        double lon = 0.0;
        view->GetCenterLatLon(lat, lon);
        EXPECT_LE(std::abs(lon), 180.0);
    }
    EXPECT_EQ(from_squares_at_hand, static_cast<int>(2.5 * kWorldWidth / 40.0))
        << "at most the column of squares that comes in is missing, at the edge of the chart too";
}

TEST_F(WorldView, FilledWhenTheWorldIsNarrowerThanTheWindow)
{
    for (int i = 0; i < 2; ++i) view->SmoothZoom(1);
    for (int i = 0; i < 20; ++i) view->onTimer();
    ASSERT_EQ(view->Params().level, 2);
    ASSERT_LT(kWorldWidth * view->Params().scale, 700.0);
    PaintLoaded();
    for (int step = 0; step < 40; ++step) {
        double dx = 37.0;
        double dy = 0.0;
        view->DoScroll(dx, dy);
        const QImage picture = Paint(); // no waiting: all repetitions come from the same squares
        for (int sx = 0; sx < 700; ++sx) {
            ASSERT_NE(picture.pixel(sx, 100), QColor(Qt::magenta).rgb()) << step << " " << sx;
            ASSERT_EQ(picture.pixel(sx, 100), picture.pixel((sx + 512) % 700 > sx ? sx + 512 : sx, 100))
                << "repeats every 512 pixels";
        }
    }
}

TEST_F(WorldView, OffsetsStayOnWholeScreenPixelsAtEveryLevel)
{
    for (int level = 3; level >= -2; --level) {
        view->GotoBestMap(ZT_HWND(), 0.0, 179.9, std::ldexp(kDegreesPerPixel * 60.0, level), {});
        ASSERT_EQ(view->Params().level, level);
        for (int i = 0; i < 30; ++i) {
            double dx = -25.0;
            double dy = 0.0;
            view->DoScroll(dx, dy);
            const double on_screen = view->Params().offset_x * std::min(1.0, view->Params().scale);
            ASSERT_EQ(on_screen, std::round(on_screen)) << level;
        }
    }
}

/// A line from 170 east to 170 west.
struct Line : COverlayObject {
    Line() : COverlayObject(kLines, kRoute) {}
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override
    {
        mapping.kind = CMapping::kPolyline;
        mapping.AddPosition(projection, 5.0, 170.0);
        mapping.AddPosition(projection, 5.0, -170.0);
        mapping.set_bounds();
    }
    void Draw(QPainter*, const CViewParams&, CMapping& mapping) const override
    {
        left.push_back(mapping.screen_points[0].x);
    }
    int onTap(CRastelleView*, const FPoint&, const DblPoint&) override
    {
        ++taps;
        return 1;
    }
    mutable std::vector<double> left;
    int taps = 0;
};

TEST_F(WorldView, OverlaysLieOnTheirCopyOfTheChart)
{
    Line line;
    line.Dispatch(COverlayObject::kChanged);
    for (const double centre : {165.0, 179.0, -179.0, -165.0}) {
        view->GotoBestMap(ZT_HWND(), 0.0, centre, 0.0, {});
        line.left.clear();
        Paint();
        ASSERT_EQ(line.left.size(), 1U) << centre;
        EXPECT_NEAR(line.left[0], At(5.0, 170.0).x, 1e-6) << centre;
        const int before = line.taps;
        view->onTap(At(5.0, 180.0).x, At(5.0, 180.0).y + 3.0, 81.0);
        EXPECT_EQ(line.taps, before + 1) << centre;
        view->onTap(At(5.0, 160.0).x, At(5.0, 160.0).y, 81.0);
        EXPECT_EQ(line.taps, before + 1) << centre;
    }
    for (int i = 0; i < 3; ++i) view->SmoothZoom(1);
    line.left.clear();
    Paint();
    EXPECT_GE(line.left.size(), 3U) << "once for every repetition in the window";
}

TEST_F(ViewTest, RegionalChartDoesNotRepeat)
{
    Chart("one.rlt", 1.0);
    MakeView();
    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    double dx = -5000.0;
    double dy = 0.0;
    view->DoScroll(dx, dy);
    EXPECT_EQ(At(0, 0).x, 400.0 - 5000.0);
}

} // namespace
