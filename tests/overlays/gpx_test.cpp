#include "mark_fixture.h"

#include "core/files.h"
#include "overlays/gpx_import.h"
#include "overlays/gpx_output.h"
#include "overlays/gpx_write.h"
#include "overlays/track_manager.h"

#include <cmath>
#include <cstdio>
#include <random>

#include <QProcess>
#include <QStandardPaths>

namespace {

class Gpx : public CMarksTest {
protected:
    Gpx() { g_track_manager.ClearAll(); }
    ~Gpx() override
    {
        g_track_manager.ClearAll();
        CTrackManager::doRecordTrack = false;
    }
    /// Imports a text; the body of a gpx element, unless it begins as a document.
    bool Import(const std::string& text)
    {
        const bool whole = text.starts_with("<?xml") || text.starts_with("<gpx");
        EXPECT_TRUE(write_to_file(root.file("in.gpx"), whole ? text : "<gpx version='1.1'>" + text + "</gpx>"));
        bounds = CBounds();
        return ImportGPXFile(root.file("in.gpx"), bounds);
    }
    template <class Object>
    std::string Written(Object& object)
    {
        EXPECT_TRUE(WriteGPXFile(root.file("out.gpx"), object));
        std::string text;
        EXPECT_TRUE(read_whole_file(root.file("out.gpx"), text));
        return text;
    }
    COverlayTrack& AddTrack(const std::string& name, int points, double step_degrees)
    {
        auto* const track = new COverlayTrack;
        track->name = name;
        for (int i = 0; i < points; ++i)
            track->addPoint({50.0 + i * step_degrees, -1.0 + std::sin(i) * 0.001, kStart + 10.0 * i, 3.0F}, false);
        g_track_manager.push_back(track);
        return *track;
    }
    /// Marks, routes and tracks that are not deleted.
    std::string Counts() const
    {
        const auto alive = [](const auto& list) {
            return std::to_string(std::count_if(list.begin(), list.end(), [](const auto* o) { return !o->deleted; }));
        };
        return alive(manager.marks) + " " + alive(manager.routes) + " " +
               alive(static_cast<const std::list<COverlayTrack*>&>(g_track_manager));
    }

    CBounds bounds;
};

TEST_F(Gpx, ComesBackAsItWent)
{
    COverlayMark& mark = AddMark("A & <B> ]]> \"C\"", 50.123456789, -1.987654321);
    mark.comment = "Two\nlines";
    mark.link = "https://example.org/?a=1&b=2";
    mark.category = "Here/There";
    mark.SetIcon("Buoy_can", {0.2F, 0.4F, 0.6F});
    mark.SetAlarm(true, 50.0F, 0.0F);
    COverlayRoute& route = AddRoute("R", {{-1.0, 50.0}, {-1.1, 50.1}, {-1.2, 50.0}});
    route.colour = {1.0F, 0.0F, 1.0F, 0.5F};
    route.line_width = 3.5F;
    route.line_style = 3;
    COverlayTrack& track = AddTrack("T", 200, 0.001);
    track.line_style = 1;
    const std::string texts[] = {Written(mark), Written(route), Written(track)};

    manager.ClearAll();
    g_track_manager.ClearAll();
    for (const std::string& text : texts) EXPECT_TRUE(Import(text));
    ASSERT_EQ(Counts(), "1 1 1");
    COverlayMark& mark_again = *manager.marks.front();
    COverlayRoute& route_again = *manager.routes.front();
    COverlayTrack& track_again = *g_track_manager.front();
    EXPECT_EQ(mark_again.anchor_radius, 50.0F);
    EXPECT_EQ(mark_again.alarm_radius, 1100.0F);
    EXPECT_EQ(track_again.getTotalPoints(), 200);
    EXPECT_EQ(NamesOf(route_again), "abc");
    // What is written of it again is the same to the byte: all fields came through.
    EXPECT_EQ(Written(mark_again), texts[0]);
    EXPECT_EQ(Written(route_again), texts[1]);
    EXPECT_EQ(Written(track_again), texts[2]);
    // And once more changes nothing.
    for (const std::string& text : texts) EXPECT_TRUE(Import(text));
    EXPECT_EQ(Counts(), "1 1 1");
}

TEST_F(Gpx, WritesTheDialect)
{
    COverlayMark& mark = AddMark("P1", 50.5, -1.25);
    mark.created = 1.75e9;
    mark.do_not_sync = true;
    mark.SetIcon("Flag", {1.0F, 0.5F, 0.0F});
    mark.SetAlarm(true, 0.0F, 100.0F);
    EXPECT_NE(Written(mark).find("<wpt lat=\"50.5000000000\" lon=\"-1.2500000000\"><time>2025-06-15T15:06:40Z</time>"
                                 "<name>P1</name><sym>Flag</sym><extensions><xstyle:fill><xstyle:color>ff8000"
                                 "</xstyle:color></xstyle:fill><xgarmin:WaypointExtension><Proximity>100.0</Proximity>"
                                 "</xgarmin:WaypointExtension></extensions></wpt>"),
              std::string::npos)
        << Written(mark);
    COverlayTrack& track = AddTrack("T", 1, 0.0);
    static_cast<CLineAppearance&>(track) = CLineAppearance();
    track.sections.front()->points[0].altitude = 12.9F;
    track.SetObjectID(0x1A2B);
    EXPECT_NE(
        Written(track).find("<trk><name>T</name><src>ztid:1A2B</src><extensions> <xstyle:line><xstyle:color>000000"
                            "</xstyle:color><xstyle:opacity>1.00</xstyle:opacity><xstyle:width>2.00</xstyle:width>"
                            "<xstyle:pattern>Solid</xstyle:pattern></xstyle:line></extensions>\n<trkseg>\n"
                            "<trkpt lat=\"50.0000000000\" lon=\"-1.0000000000\"><ele>12</ele>"),
        std::string::npos)
        << Written(track);
}

TEST_F(Gpx, IsValidAgainstTheElementsOfTheSchema)
{
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty()) GTEST_SKIP() << "xmllint is not installed";
    COverlayMark& mark = AddMark("x\x01y &", 50.0, -1.0);
    mark.comment = "c";
    mark.link = "http://a/?\"<&";
    mark.category = "k";
    AddRoute("R", {{-1.0, 50.0}, {-1.1, 50.1}});
    AddTrack("T", 5, 0.01);
    CGPXOutput out(root.file("all.gpx"));
    out.write_header();
    WriteGPX(out, mark);
    WriteGPX(out, *manager.routes.front());
    WriteGPX(out, *g_track_manager.front());
    ASSERT_TRUE(out.Close());
    QProcess check;
    check.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--nonet"), QStringLiteral("--schema"),
                          QStringLiteral(ZT_SOURCE_DIR "/tests/overlays/gpx_1_1_elements.xsd"),
                          QString::fromStdString(root.file("all.gpx"))});
    ASSERT_TRUE(check.waitForFinished());
    EXPECT_EQ(check.exitCode(), 0) << check.readAllStandardError().toStdString();
}

struct ForeignCase {
    const char* name;
    const char* text;
    bool taken;
    const char* counts;
    const char* first_name; ///< of the first mark, route or track
};
const ForeignCase kForeign[] = {
    {"prefixed_namespaces",
     "<g:gpx xmlns:g='http://www.topografix.com/GPX/1/1'><g:wpt lat='1' lon='2'><g:name>n</g:name></g:wpt></g:gpx>",
     true, "1 0 0", "n"},
    {"version_1_0", "<gpx version='1.0'><wpt lat='1' lon='2'><name>n</name><url>http://x</url></wpt></gpx>", true,
     "1 0 0", "n"},
    {"no_name", "<wpt lat='1' lon='2'/>", true, "1 0 0", "Unknown name"},
    {"cdata_and_entities", "<wpt lat='1' lon='2'><name><![CDATA[a<]]>&amp;b</name></wpt>", true, "1 0 0", "a<&b"},
    {"latin_1_that_does_not_say_so", "<wpt lat='1' lon='2'><name>H\xE4gg</name></wpt>", true, "1 0 0", "H\xC3\xA4gg"},
    {"utf_8_that_says_it_were_wide",
     "<?xml version='1.0' encoding='utf-16'?><gpx><wpt lat='1' lon='2'><name>H\xC3\xA4gg</name></wpt></gpx>", true,
     "1 0 0", "H\xC3\xA4gg"},
    {"points_out_of_range_are_left_out",
     "<wpt lat='91' lon='2'/><wpt lat='1' lon='181'/><wpt lat='nan' lon='2'/><wpt lat='1e999' lon='2'/><wpt lat='x' "
     "lon='2'/><wpt/><wpt lat='-90' lon='-180'><name>n</name></wpt>",
     true, "1 0 0", "n"},
    {"a_route", "<rte><name>r</name><rtept lat='1' lon='2'/><rtept lat='100' lon='2'/><rtept lat='1' lon='3'/></rte>",
     true, "0 1 0", "r"},
    {"segments_become_one_track",
     "<trk><name>t</name><trkseg><trkpt lat='1' lon='2'/><trkpt lat='1.1' lon='2'/></trkseg><trkseg><trkpt lat='1.2' "
     "lon='2'/><trkpt lat='1.3' lon='2'/></trkseg></trk>",
     true, "0 0 1", "t"},
    {"nothing_in_it", "<gpx/>", false, "0 0 0", ""},
    {"not_gpx", "<kml><wpt lat='1' lon='2'/></kml>", false, "0 0 0", ""},
    {"cut_off", "<gpx><wpt lat='1' lon='2'/><wpt lat=", false, "0 0 0", ""},
};

TEST_F(Gpx, TakesForeignFiles)
{
    for (const ForeignCase& tested : kForeign) {
        SCOPED_TRACE(tested.name);
        manager.ClearAll();
        g_track_manager.ClearAll();
        const std::string text = tested.text;
        const bool whole = text.starts_with("<g") || text.starts_with("<k") || text.starts_with("<?");
        ASSERT_TRUE(write_to_file(root.file("in.gpx"), whole ? text : "<gpx>" + text + "</gpx>"));
        bounds = CBounds();
        EXPECT_EQ(ImportGPXFile(root.file("in.gpx"), bounds), tested.taken);
        EXPECT_EQ(Counts(), tested.counts);
        EXPECT_EQ(bounds.empty(), !tested.taken);
        std::string name;
        if (!manager.marks.empty()) name = manager.marks.front()->name;
        if (!manager.routes.empty()) name = manager.routes.front()->name;
        if (!g_track_manager.empty()) name = g_track_manager.front()->name;
        EXPECT_EQ(name, tested.first_name);
    }
}

TEST_F(Gpx, KnowsObjectsByTheirIds)
{
    COverlayMark& mark = AddMark("old", 50.0, -1.0);
    mark.SetObjectID(0x77);
    manager.DeleteMark(&mark);
    ASSERT_EQ(Counts(), "0 0 0");
    EXPECT_TRUE(Import("<wpt lat='51' lon='2'><name>n</name><desc>Text. Source: ztid:77</desc></wpt>"));
    EXPECT_EQ(Counts(), "1 0 0");
    EXPECT_EQ(mark.name, "n");
    EXPECT_EQ(mark.comment, "Text.");
    EXPECT_EQ(mark.lat, 51.0);
    EXPECT_TRUE(mark.visible);
    EXPECT_EQ(bounds.lat_max, 51.0);
}

TEST_F(Gpx, LeavesTheRecordingAlone)
{
    COverlayTrack& recording = AddTrack("now", 5, 0.001);
    recording.SetObjectID(0x99);
    CTrackManager::doRecordTrack = true;
    EXPECT_TRUE(Import("<trk><name>x</name><src>ztid:99</src><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>"
                       "<trk><name>y</name><trkseg><trkpt lat='1' lon='2'/><trkpt lat='1' lon='3'/></trkseg></trk>"));
    EXPECT_EQ(recording.name, "now");
    EXPECT_EQ(recording.getTotalPoints(), 5);
    EXPECT_EQ(g_track_manager.back(), &recording);
    EXPECT_EQ(g_track_manager.front()->name, "y");
}

TEST_F(Gpx, ThinsDenseTracks)
{
    std::string dense = "<trk><trkseg>";
    for (int i = 0; i < 500; ++i) dense += "<trkpt lat='" + std::to_string(50.0 + i * 1e-5) + "' lon='1'/>";
    EXPECT_TRUE(Import(dense + "</trkseg></trk>"));
    EXPECT_LT(g_track_manager.front()->getTotalPoints(), 50);
    EXPECT_NEAR(g_track_manager.front()->getTotalDistance(), 499e-5 * 60 * 1852, 5.0);
}

TEST_F(Gpx, AnImportOfManyStaysLinear)
{
    // Comparing each with all others of the file would take minutes.
    constexpr int kObjects = 100'000;
    for (const double step : {0.0, 0.0008}) { // all at one place, or each at its own
        manager.ClearAll();
        std::string text = "<gpx>";
        for (int i = 0; i < kObjects; ++i)
            text += "<wpt lat='" + std::to_string(i * step) + "' lon='1'><name>m" + std::to_string(i) + "</name></wpt>";
        text += "</gpx>";
        EXPECT_TRUE(Import(text));
        EXPECT_TRUE(Import(text)); // none is new
        EXPECT_EQ(Counts(), std::to_string(kObjects) + " 0 0");
    }
}

struct TimeCase {
    const char* text;
    double seconds;
};
const TimeCase kTimes[] = {
    {"2025-06-15T15:06:40Z", 1.75e9},
    {"2025-06-15T15:06:40", 1.75e9},
    {" 2025-06-15T15:06:40.250Z", 1.75e9 + 0.25},
    {"2025-06-15T17:06:40+02:00", 1.75e9},
    {"2025-06-15T09:36:40-0530", 1.75e9},
    {"1970-01-01T00:00:01Z", 1.0},
    {"2025-06-15", 0.0},
    {"yesterday", 0.0},
    {"", 0.0},
    {"99999-01-01T00:00:00Z", 0.0},
    {"2025-13-99T99:99:99Z", 1767225600.0 + 98 * 86400 + 99 * 3600 + 99 * 60 + 99},
};

TEST(GpxValues, Times)
{
    for (const TimeCase& tested : kTimes) EXPECT_EQ(parse_time(tested.text), tested.seconds) << tested.text;
    std::string text;
    format_time(951827696.0, text);
    format_time(-5.0, text);
    EXPECT_EQ(text, "2000-02-29T12:34:56Z1970-01-01T00:00:00Z");
}

TEST(GpxValues, TenDecimalsAreThoseOfPrintf)
{
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> degrees(-180.0, 180.0);
    std::vector<double> numbers = {0.0,   -0.0,          0.5,           90.0,           -180.0,  1e-11,
                                   5e-11, 0.99999999995, 9.99999999995, 99.99999999999, 999999.9};
    for (int i = 0; i < 200000; ++i) numbers.push_back(degrees(random));
    for (int i = 0; i < 1000; ++i) numbers.push_back(std::ldexp(static_cast<double>(random() % 4096), -30));
    for (const double number : numbers) {
        char text[kTenDecimalsRoom + 1];
        *put_ten_decimals(text, number) = 0;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.10f", number);
        ASSERT_STREQ(text, expected);
    }
}

} // namespace
