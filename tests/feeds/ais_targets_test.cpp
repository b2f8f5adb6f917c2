#include "chart/polynomial_projection.h"
#include "core/display_metrics.h"
#include "core/persistant_data.h"
#include "feeds/ais_world.h"
#include "navdata/feeds/ais_settings.h"
#include "support/allocation_counter.h"
#include "support/temporary_root.h"

#include <fstream>

#include <QImage>
#include <QPainter>

namespace {

CAisShip Ship(std::uint32_t mmsi, const char* name)
{
    CAisShip ship;
    ship.mmsi = mmsi;
    ship.imo = 9074729;
    ship.callsign = "DABC";
    ship.name = name;
    ship.ship_type = 79;
    ship.to_bow = 120;
    ship.to_stern = 30;
    ship.to_port = 10;
    ship.to_starboard = 12;
    ship.destination = "ROTTERDAM";
    return ship;
}

CAisBits Head(std::uint32_t type, std::uint32_t mmsi)
{
    CAisBits bits;
    bits.Unsigned(type, 6);
    bits.Unsigned(0, 2);
    bits.Unsigned(mmsi, 30);
    return bits;
}

void PutPlace(CAisBits& bits, double lat, double lon)
{
    bits.Unsigned(0, 1);
    bits.Signed(static_cast<std::int32_t>(std::lround(lon * 600000)), 28);
    bits.Signed(static_cast<std::int32_t>(std::lround(lat * 600000)), 27);
}

CAisBits Aircraft(std::uint32_t mmsi, double lat, double lon, std::uint32_t knots)
{
    CAisBits bits = Head(9, mmsi);
    bits.Unsigned(600, 12);
    bits.Unsigned(knots, 10);
    PutPlace(bits, lat, lon);
    bits.Unsigned(2705, 12);
    bits.Unsigned(7, 6);
    return bits;
}

CAisBits ClassBExtended(std::uint32_t mmsi, double lat, double lon, const char* name)
{
    CAisBits bits = Head(19, mmsi);
    bits.Unsigned(0, 8);
    bits.Unsigned(55, 10);
    PutPlace(bits, lat, lon);
    bits.Unsigned(900, 12);
    bits.Unsigned(511, 9);
    bits.Unsigned(1, 6);
    bits.Unsigned(0, 4);
    bits.Text(name, 20);
    bits.Unsigned(36, 8);
    bits.Unsigned(8, 9);
    bits.Unsigned(4, 9);
    bits.Unsigned(2, 6);
    bits.Unsigned(2, 6);
    return bits;
}

CAisBits Buoy(std::uint32_t mmsi, double lat, double lon)
{
    CAisBits bits = Head(21, mmsi);
    bits.Unsigned(14, 5);
    bits.Text("NEEDLES FAIRWAY", 20);
    PutPlace(bits, lat, lon);
    bits.Unsigned(0, 18);
    return bits;
}

/// Unlike write_to_file without waiting for the disk.
void WriteText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

/// The kinds of what was published of targets.
class CTargetHearing : public Listener<CAISTarget> {
public:
    CTargetHearing() { Connect(); }
    void OnUpdate(CAISTarget& target) override
    {
        ++count;
        removed += target.last_message == CAISTarget::kRemoved && target.status == 0 ? 1 : 0;
        shown += target.isVisible() ? 1 : 0;
    }
    int count = 0;
    int removed = 0;
    int shown = 0;
};

/// One image pixel a millionth of a degree, with its origin at 50 N, 1 W; north is turned to the right by
/// `clockwise` degrees.
CPolynomialProjection Chart(double clockwise)
{
    constexpr double kPixels = 1e6;
    const double c = std::cos(clockwise * M_PI / 180.0);
    const double s = std::sin(clockwise * M_PI / 180.0);
    const double lat = 50.0;
    const double lon = -1.0;
    double forward[2][10] = {{-kPixels * (c * lon + s * lat), kPixels * s, kPixels * c},
                             {-kPixels * (s * lon - c * lat), -kPixels * c, kPixels * s}};
    double inverse[2][10] = {{lat, s / kPixels, -c / kPixels}, {lon, c / kPixels, s / kPixels}};
    CPolynomialProjection projection;
    projection.init(forward, inverse, 1000, 1000, 0.0, 0.0);
    return projection;
}

/// The target in the middle of an image of 101 x 101 pixels.
QImage Drawn(const CAISTarget& target, double clockwise = 0.0)
{
    QImage image(101, 101, QImage::Format_RGB32);
    image.fill(Qt::white);
    CMapping mapping;
    const CPolynomialProjection chart = Chart(clockwise);
    target.Map(mapping, chart);
    CViewParams params;
    params.offset_x = mapping.image_points.at(0).x - 50.0;
    params.offset_y = mapping.image_points.at(0).y - 50.0;
    params.view_rect = {params.offset_x, params.offset_y, params.offset_x + 101.0, params.offset_y + 101.0};
    EXPECT_TRUE(mapping.map_to_screen(params));
    QPainter painter(&image);
    target.Draw(&painter, params, mapping);
    return image;
}

int InkedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) != 0xFFFFFFFF ? 1 : 0;
    return count;
}

} // namespace

class AisTargets : public CAisWorld {};

TEST_F(AisTargets, PositionReportsOfClassA)
{
    struct CCase {
        int status;
        QRgb colour;
        const char* text;
    };
    const CCase cases[] = {
        {0, 0xFF00DC00, "Under way using engine"},
        {1, 0xFF808080, "At anchor"},
        {2, 0xFFC832C8, "NOT UNDER COMMAND"},
        {5, 0xFF808080, "Moored"},
        {7, 0xFFC832C8, "FISHING"},
        {8, 0xFF0094EA, "Under way sailing"},
        {9, 0xFF00DC00, "Under way using engine"},
        {15, 0xFF00DC00, "Under way using engine"},
    };
    for (const CCase& c : cases) {
        Hear(PositionReportA(kShip, c.status, At(5000, 3000, 45.0, 12.5)));
        const CAISTarget& ship = Target();
        EXPECT_STREQ(ship.class_text, "Class A");
        EXPECT_EQ(ship.colour.rgba(), c.colour) << c.status;
        EXPECT_STREQ(ship.status_text, c.text);
    }
    const CAISTarget& ship = Target();
    EXPECT_NEAR(grid.distance(ship.latitude, ship.longitude), std::hypot(5000, 3000), 0.5);
    EXPECT_EQ(ship.speed, 12.5F);
    EXPECT_EQ(ship.course, 45.0F);
    EXPECT_EQ(ship.get_heading(), 45.0F);
    EXPECT_NEAR(ship.best_sin, std::sqrt(0.5), 1e-6);
    EXPECT_EQ(ship.mmsi_text, "211234560");
    EXPECT_EQ(manager().Count(), 1U);
}

TEST_F(AisTargets, DistressTransmitters)
{
    const std::pair<std::uint32_t, const char*> cases[] = {{972111222, "Man Overboard"},
                                                           {974111222, "EPIRB"},
                                                           {970111222, "Search and Rescue Transponder"},
                                                           {971111222, "Class A"}};
    for (const auto& [mmsi, text] : cases) {
        Hear(PositionReportA(mmsi, 14, At(20000, 0)));
        EXPECT_STREQ(Target(mmsi).class_text, text);
        EXPECT_EQ(Target(mmsi).colour.rgba(), 0xFFFF0000U);
    }
}

TEST_F(AisTargets, WhatOtherMessagesTell)
{
    Hear(StaticDataA(Ship(kShip, "ANNA")));
    EXPECT_EQ(Target().details, "\"ANNA\" Type:Cargo ship LOA:150m\nCallsign:DABC, MMSI:211234560\n"
                                "Dest:ROTTERDAM, ETA:00:00 0/0");
    EXPECT_FALSE(Target().isVisible()) << "no position yet";
    Hear(PositionReportA(kShip, 0, At(1000, 0)));
    EXPECT_TRUE(Target().isVisible());
    Hear(StaticDataA(Ship(kShip, "")));
    EXPECT_EQ(Target().name, "ANNA") << "a blank name is not available";

    Hear(Aircraft(111232506, 50.1, -1.1, 140));
    EXPECT_STREQ(Target(111232506).class_text, "Aircraft");
    EXPECT_EQ(Target(111232506).altitude, 600.0F);
    EXPECT_EQ(Target(111232506).compass.heading, 270.5F);
    EXPECT_EQ(Target(111232506).colour.rgba(), 0xFF6464C8U);
    Hear(Aircraft(111232506, 50.1, -1.1, 1023));
    EXPECT_EQ(Target(111232506).speed, 0.0F) << "not available";

    constexpr std::uint32_t kBoat = 235012345;
    Hear(StaticDataB(Ship(kBoat, "PUFFIN"), false));
    EXPECT_STREQ(Target(kBoat).class_text, "") << "of no class yet";
    Hear(PositionReportB(kBoat, At(0, 2000, 90.0, 5.0)));
    EXPECT_STREQ(Target(kBoat).class_text, "Class B");
    EXPECT_EQ(Target(kBoat).colour.rgba(), 0xFF64C864U);
    Hear(StaticDataB(Ship(kBoat, "PUFFIN"), true));
    EXPECT_EQ(Target(kBoat).details, "\"PUFFIN\" Type:Cargo ship, LOA:150m\nClass B MMSI:235012345");

    Hear(ClassBExtended(235000001, 50.1, -1.1, "GULL"));
    EXPECT_EQ(Target(235000001).details, "\"GULL\" Type:Sailing, LOA:12m\nClass B MMSI:235000001");
    EXPECT_EQ(Target(235000001).compass.heading, 90.0F) << "the course stands in for a heading";

    Hear(Buoy(992351000, 50.1, -1.1));
    EXPECT_EQ(Target(992351000).details, "\"NEEDLES FAIRWAY\" Aid to Navigation, Type:14, MMSI:992351000");
    EXPECT_GE(Target(992351000).compass.heading, 511.0F);
    EXPECT_EQ(Target(992351000).get_speed(), 0.0F);

    Hear(StaticDataB(Ship(982351000, ""), true));
    EXPECT_EQ(Target(982351000).Length(), 0) << "an auxiliary craft sends her mother ship's MMSI there";
}

TEST_F(AisTargets, PositionsThatAreNone)
{
    const std::pair<double, double> places[] = {{91.0, 181.0}, {-91.0, 10.0}, {50.0, 181.0}, {50.0, -181.0},
                                                {90.0, 10.0},  {0.0, 0.0},    {-111.0, 10.0}};
    CTargetHearing hearing;
    for (const auto& [lat, lon] : places) {
        Hear(Aircraft(kShip, lat, lon, 100));
        Hear(Buoy(kShip + 1, lat, lon));
        Hear(ClassBExtended(kShip + 2, lat, lon, "X"));
        Hear(PositionReportA(kShip + 3, 0, {lat, lon, 5.0, 0.0, 0.0, 0}));
    }
    EXPECT_EQ(hearing.shown, 0);
    Hear(PositionReportA(kShip, 0, At(1000, 0, 10.0, 5.0)));
    for (const auto& [lat, lon] : places) Hear(PositionReportA(kShip, 1, {lat, lon, 9.0, 99.0, 99.0, 0}));
    EXPECT_NEAR(grid.distance(Target().latitude, Target().longitude), 1000.0, 0.5);
    EXPECT_EQ(Target().speed, 5.0F);
    EXPECT_EQ(Target().colour.rgba(), 0xFF00DC00U);
}

TEST_F(AisTargets, AgeingAndRemoval)
{
    Fix(0.0F, 0.0F);
    Hear(PositionReportA(kShip, 0, At(0, 2000, 180.0, 10.0)));
    ASSERT_TRUE(alarms.shown.count(kShip));
    Wait(6);
    EXPECT_EQ(Target().last_message, 1) << "silent for less than 366 s";
    Wait(3);
    EXPECT_STREQ(Target().status_text, "Lost contact");
    EXPECT_EQ(Target().colour.rgba(), 0xFFFFFFFFU);
    EXPECT_EQ(Target().get_speed(), 0.0F);
    EXPECT_TRUE(alarms.shown.empty());
    CTargetHearing hearing;
    CHearing<COverlayObject> views;
    Wait(1);
    EXPECT_EQ(hearing.count, 0) << "lost but once";
    Hear(PositionReportA(kShip + 1, 0, At(0, 2000)));
    CAISTarget::selected_target = &Target();
    Wait(3);
    EXPECT_EQ(manager().Find(kShip), nullptr);
    EXPECT_EQ(CAISTarget::selected_target, nullptr);
    EXPECT_EQ(hearing.removed, 1);
    EXPECT_NE(manager().Find(kShip + 1), nullptr);
}

TEST_F(AisTargets, MemoryIsBounded)
{
    Fix(0.0F, 0.0F);
    constexpr std::uint32_t kAlarmed = 300000000;
    Hear(PositionReportA(kAlarmed, 0, At(0, 2000, 180.0, 10.0)));
    ASSERT_TRUE(Target(kAlarmed).alarmed);
    LoseFix();
    const auto most = static_cast<std::uint32_t>(CAISTargetManager::kMostTargets);
    for (std::uint32_t i = 1; i < most; ++i) Hear(PositionReportB(kAlarmed + i, At(9000, 9000)));
    EXPECT_EQ(manager().Count(), most);
    Hear(PositionReportB(kAlarmed + 1, At(9000, 9000))); // heard again, so that the second is silent for longest
    Hear(PositionReportB(kAlarmed + most, At(9000, 9000)));
    EXPECT_EQ(manager().Count(), most);
    EXPECT_NE(manager().Find(kAlarmed), nullptr);
    EXPECT_NE(manager().Find(kAlarmed + 1), nullptr);
    EXPECT_EQ(manager().Find(kAlarmed + 2), nullptr);
    EXPECT_NE(manager().Find(kAlarmed + most), nullptr);
}

TEST_F(AisTargets, TheOwnShipsTransponderAsASource)
{
    CAisMotion motion = At(0, 0, 123.0, 6.5);
    Hear(PositionReportA(kShip, 0, motion), "VDO");
    EXPECT_EQ(own_ship().status, CDataGPSPosition::kFix);
    EXPECT_NEAR(own_ship().latitude, kLat, 1e-6);
    EXPECT_EQ(own_ship().course, 123.0F);
    EXPECT_EQ(own_ship().compass.heading, 123.0F);
    EXPECT_EQ(own_ship().time, now);
    EXPECT_EQ(manager().Count(), 0U) << "is no target";
    motion.lat += 0.5;
    Hear(PositionReportB(kShip, motion), "VDO");
    EXPECT_NEAR(own_ship().latitude, kLat + 0.5, 1e-6) << "its own position goes on";

    for (const auto& [lat, lon] : {std::pair{91.0, 0.1}, {-91.0, 0.1}, {10.0, -181.0}, {0.0, 0.0}})
        Hear(PositionReportB(kShip, {lat, lon, 1.0, 1.0, 1.0, 0}), "VDO");
    EXPECT_NEAR(own_ship().latitude, kLat + 0.5, 1e-6);

    CAisBits blind = Head(18, kShip);
    blind.Unsigned(0, 8);
    blind.Unsigned(50, 10);
    PutPlace(blind, kLat, kLon);
    blind.Unsigned(3600, 12);
    blind.Unsigned(511, 9);
    blind.Unsigned(0, 6);
    Hear(blind, "VDO");
    EXPECT_GE(own_ship().compass.heading, 900.0F) << "511 is no heading";
    EXPECT_EQ(own_ship().course_sin * own_ship().speed, 0.0F) << "360 is no course";
    EXPECT_EQ(own_ship().course_cos * own_ship().speed, 0.0F);

    Fix(1.0F, 2.0F);
    Hear(PositionReportA(kShip, 0, motion), "VDO");
    EXPECT_EQ(own_ship().latitude, kLat) << "a receiver goes first";
}

TEST_F(AisTargets, SettingsAppearWithTheFirstTarget)
{
    const CTemporaryRoot root;
    PersistantData::LoadAll("zt");
    CAISTargetManager::enable_settings = false;
    Hear(StaticDataB(Ship(kShip, "X"), false));
    EXPECT_FALSE(CAISTargetManager::enable_settings) << "no position yet";
    Hear(PositionReportB(kShip, At(1000, 0)));
    std::string value;
    EXPECT_TRUE(PersistantData::GetValue("CAISTargetManager:enable_settings", value));
    EXPECT_EQ(value, "1");
    PersistantData::appname.clear();
}

TEST_F(AisTargets, TappingShowsTheDetails)
{
    CStatusLine line;
    Hear(PositionReportB(kShip, At(1000, 0, 90.0, 5.5)));
    EXPECT_EQ(Target().onTap(nullptr, {}, {}), 1);
    EXPECT_EQ(line.shown, "MMSI:211234560, Class B\nSpeed:5.5 kts, n/a");
    EXPECT_EQ(CAISTarget::selected_target, &Target());
    Hear(StaticDataB(Ship(kShip, "PUFFIN"), false));
    Target().onTap(nullptr, {}, {});
    EXPECT_EQ(line.shown, "\"PUFFIN\" Type:, LOA:0m\nClass B MMSI:211234560");
}

TEST_F(AisTargets, AMessageOfAKnownShipAllocatesNothing)
{
    Fix(0.0F, 5.0F);
    std::vector<std::string> lines;
    CSentenceWriter writer;
    WriteAis(writer, PositionReportA(kShip, 0, At(3000, 3000, 45.0, 12.5)), 1, 'A');
    WriteAis(writer, StaticDataA(Ship(kShip, "A RATHER LONG NAME")), 1, 'A');
    WriteAis(writer, PositionReportB(kShip + 1, At(3000, 300, 45.0, 12.5)), 1, 'A');
    WriteAis(writer, StaticDataB(Ship(kShip + 1, "ANOTHER LONG NAME"), false), 1, 'A');
    WriteAis(writer, StaticDataB(Ship(kShip + 1, ""), true), 1, 'A');
    std::istringstream text(writer.Text());
    for (std::string line; std::getline(text, line);) lines.push_back(line.substr(0, line.find('\r')));
    char buffer[200];
    const auto hear_all = [&] {
        for (const std::string& line : lines) {
            std::memcpy(buffer, line.c_str(), line.size() + 1);
            ASSERT_NE(CNMEASentence::DispatchSentence(buffer, nullptr), 0);
        }
    };
    hear_all();
    const CTargetHearing hearing;
    const CHearing<COverlayObject> views;
    const CAllocationCounter counter;
    hear_all();
    EXPECT_EQ(counter.Count(), 0U);
    EXPECT_EQ(hearing.count, 5);
    EXPECT_GE(views.count, 5);
}

TEST_F(AisTargets, TheShapeShowsTheHeading)
{
    struct CCase {
        double heading;
        double chart_turned;
        QPoint apex; ///< a place inside, near the apex
        QPoint outside;
    };
    const CCase cases[] = {{0.0, 0.0, {50, 41}, {50, 61}},
                           {90.0, 0.0, {59, 50}, {39, 50}},
                           {0.0, 90.0, {59, 50}, {39, 50}},
                           {180.0, 90.0, {41, 50}, {61, 50}},
                           {180.0, 0.0, {50, 59}, {50, 39}}};
    Hear(PositionReportA(kShip, 0, At(0, 0, 0.0, 0.0)));
    for (const CCase& c : cases) {
        Hear(PositionReportA(kShip, 0, At(0, 0, c.heading, 0.0)));
        const QImage image = Drawn(Target(), c.chart_turned);
        EXPECT_EQ(image.pixel(50, 50), Target().colour.rgb()) << c.heading << " on " << c.chart_turned;
        EXPECT_NE(image.pixel(c.apex), 0xFFFFFFFF) << c.heading << " on " << c.chart_turned;
        EXPECT_EQ(image.pixel(c.outside), 0xFFFFFFFF) << c.heading << " on " << c.chart_turned;
    }
    const int whole = InkedPixels(Drawn(Target()));
    CAISTarget::selected_target = &Target();
    EXPECT_GT(InkedPixels(Drawn(Target())), whole + 20) << "the selected one has a wide outline";
    Hear(PositionReportB(kShip + 1, At(0, 0, 180.0, 0.0)));
    EXPECT_LT(InkedPixels(Drawn(Target(kShip + 1))), 0.8 * whole) << "class B is small";
    const double resolution = graphicsResolution;
    graphicsResolution = 2.0;
    CAISTarget::selected_target = nullptr;
    EXPECT_NEAR(InkedPixels(Drawn(Target())), 4 * whole, whole);
    graphicsResolution = resolution;
    Hear(Buoy(992351000, kLat, kLon));
    const QImage upright = Drawn(Target(992351000), 45.0);
    EXPECT_NE(upright.pixel(50, 43), 0xFFFFFFFF);
    EXPECT_EQ(upright.pixel(50, 57), 0xFFFFFFFF) << "without a heading it stands upright";
}

TEST_F(AisTargets, PaintingKnownLooksAllocatesNothing)
{
    std::vector<CMapping> mappings(20);
    CViewParams params;
    params.view_rect = {-1e9, -1e9, 1e9, 1e9};
    const CPolynomialProjection chart = Chart(0.0);
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const auto paint_all = [&] {
        for (std::uint32_t i = 0; i < mappings.size(); ++i) {
            mappings[i].move_screen();
            ASSERT_TRUE(mappings[i].map_to_screen(params));
            Target(kShip + i).Draw(&painter, params, mappings[i]);
        }
    };
    for (std::uint32_t i = 0; i < mappings.size(); ++i) {
        const CAisMotion motion = At(i, 1.0, 17.0 * i, 0.0);
        Hear(i % 2 == 0 ? PositionReportA(kShip + i, static_cast<int>(i % 9), motion)
                        : PositionReportB(kShip + i, motion));
        Target(kShip + i).Map(mappings[i], chart);
    }
    paint_all();
    const CAllocationCounter counter;
    paint_all();
    EXPECT_EQ(counter.Count(), 0U);
}

TEST_F(AisTargets, AnInstantList)
{
    const CTemporaryRoot root;
    const std::string path = root.file("targets.txt");
    const std::string list = "<?xml version=\"1.0\"?>\n<Watchmate version='1.0'>"
                             "<Target><MMSI>235012345</MMSI><Name>PUFFIN &amp; CO</Name><Extra><Name>NO</Name></Extra>"
                             "<VesselTypeString>Sailing</VesselTypeString><CallSign>MABC</CallSign></Target>"
                             "<TARGET><mmsi>972000001</mmsi></TARGET><Target><MMSI>0</MMSI><Name>NOBODY</Name></Target>"
                             "<Target><MMSI>002191000</MMSI></Target></Watchmate>";
    ASSERT_FALSE(manager().ReadInstantTargets(path)) << "missing";
    for (std::size_t length = 0; length < list.size(); ++length) {
        WriteText(path, list.substr(0, length));
        ASSERT_FALSE(manager().ReadInstantTargets(path)) << length;
    }
    for (const char* other : {"<gpx><Target><MMSI>5</MMSI></Target></gpx>", "", "nonsense"}) {
        WriteText(path, other);
        EXPECT_FALSE(manager().ReadInstantTargets(path)) << other;
    }
    WriteText(path, list + std::string((16 << 20) - list.size() + 1, ' '));
    EXPECT_FALSE(manager().ReadInstantTargets(path)) << "too large";
    EXPECT_EQ(manager().Count(), 0U) << "a list is taken whole or not at all";

    WriteText(path, list);
    ASSERT_TRUE(manager().ReadInstantTargets(path));
    EXPECT_EQ(manager().Count(), 3U);
    CAISTarget& boat = Target(235012345);
    EXPECT_EQ(boat.details, "\"PUFFIN & CO\" Type:Sailing Callsign:MABC, MMSI:235012345");
    EXPECT_STREQ(boat.class_text, "Instant");
    EXPECT_FALSE(boat.isVisible());
    EXPECT_STREQ(Target(972000001).class_text, "Man Overboard");
    EXPECT_EQ(Target(2191000).mmsi_text, "2191000");
    Hear(PositionReportB(235012345, At(1000, 0)));
    EXPECT_TRUE(boat.isVisible());
    Hear(StaticDataB(Ship(235012345, "HEARD"), false));
    ASSERT_TRUE(manager().ReadInstantTargets(path));
    EXPECT_EQ(boat.name, "HEARD") << "only what is not known is filled in";
    EXPECT_STREQ(boat.class_text, "Class B");
}
