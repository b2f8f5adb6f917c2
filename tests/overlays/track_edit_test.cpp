#include "overlays/mark_manager.h"
#include "overlays/overlay_views.h"
#include "track_world.h"
#include "ui/action_sheet.h"

#include <algorithm>
#include <set>

namespace {

/// Routes and marks do not outlive the test.
class TrackEdit : public TrackTest {
protected:
    ~TrackEdit() override { g_mark_manager.ClearAll(); }
    static CTrackSection* SectionAt(COverlayTrack& track, int number)
    {
        return *std::next(track.sections.begin(), number);
    }
    static std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (const COverlayTrack* track : g_track_manager)
            if (!track->deleted) names.push_back(track->name);
        return names;
    }
};

TEST_F(TrackEdit, ASplitTrackSharesItsPointWithTheNewOne)
{
    constexpr struct {
        const char* name;
        int section, index, at;
    } cases[] = {
        {"inside_the_first_section", 0, 10, 10}, {"at_the_end_of_a_section", 0, 63, 63},
        {"at_the_start_of_the_next", 1, 0, 63},  {"inside_the_last_section", 2, 5, 131},
        {"at_the_very_start", 0, 0, 0},          {"at_the_very_end", 2, 33, 159},
    };
    for (const auto& c : cases) {
        g_track_manager.ClearAll();
        COverlayTrack& track = *MakeTrack("track", 160);
        track.line_style = 2;
        track.category = "Trips";
        track.do_not_sync = true;
        MakeTrack("other", 5);
        const auto points = PointsOf(track);
        track.SplitTrack(SectionAt(track, c.section), c.index);
        EXPECT_EQ(Names(), (std::vector<std::string>{"track", "track-split", "other"})) << c.name;
        const COverlayTrack& part = **std::next(g_track_manager.begin());
        EXPECT_EQ(PointsOf(track), std::vector(points.begin(), points.begin() + c.at + 1)) << c.name;
        EXPECT_EQ(PointsOf(part), std::vector(points.begin() + c.at, points.end())) << c.name;
        EXPECT_TRUE(IsConnected(track) && IsConnected(part)) << c.name;
        EXPECT_EQ(part.line_style, 2);
        EXPECT_EQ(part.category, "Trips");
        EXPECT_TRUE(part.do_not_sync) << "what was private stays so";
    }
}

TEST_F(TrackEdit, ARecordingGoesOnInTheNewPart)
{
    CTrackManager::doRecordTrack = true;
    for (int i = 0; i < 10; ++i) boat.Report(0.0, 30.0 * i, kStart + 30.0 * i);
    COverlayTrack& track = *Track();
    track.SplitTrack(track.sections.front(), 4);
    boat.Report(0.0, 300.0, kStart + 300.0);
    EXPECT_EQ(track.getTotalPoints(), 5);
    EXPECT_EQ(Track()->getTotalPoints(), 7);
    EXPECT_NEAR(Track()->getTotalDistance(), 180.0, 1e-3);

    // And in the first again, when the two are joined.
    track.JoinTrack(Track());
    EXPECT_TRUE(track.isRecording());
    boat.Report(0.0, 330.0, kStart + 330.0);
    EXPECT_EQ(track.getTotalPoints(), 12);
    EXPECT_NEAR(track.getTotalDistance(), 330.0, 1e-3);
    EXPECT_EQ(Names(), std::vector<std::string>{"T1"});
}

TEST_F(TrackEdit, JoinedTracksAreOneLine)
{
    constexpr struct {
        const char* name;
        int first, second;
        double gap; // metres between the end of the first and the start of the second
        int points;
    } cases[] = {
        {"they_meet", 100, 50, 0.0, 149},
        {"a_gap", 100, 50, 40.0, 150},
        {"onto_an_empty_one", 0, 50, 0.0, 50},
        {"an_empty_one", 50, 0, 0.0, 50},
        {"a_full_last_section_and_a_gap", 64, 3, 40.0, 67},
    };
    for (const auto& c : cases) {
        g_track_manager.ClearAll();
        COverlayTrack& track = *MakeTrack("track", c.first);
        COverlayTrack& other = *MakeTrack("other", c.second, 0.0, 10.0 * (c.first - 1) + c.gap);
        other.GetObjectID();
        track.JoinTrack(&other);
        EXPECT_EQ(track.getTotalPoints(), c.points) << c.name;
        for (const CTrackSection* section : track.sections) EXPECT_EQ(section->track, &track) << c.name;
        const double length = 10.0 * (c.points - 1) + (c.gap > 0.0 ? c.gap - 10.0 : 0.0);
        EXPECT_NEAR(track.getTotalDistance(), length, 1e-2) << c.name;
        EXPECT_TRUE(other.deleted) << c.name;
        EXPECT_EQ(other.getTotalPoints(), 0) << c.name;
        track.JoinTrack(&track);
        EXPECT_EQ(track.getTotalPoints(), c.points) << "with itself";
    }
}

TEST_F(TrackEdit, ATrackBecomesARouteAndBack)
{
    COverlayTrack& track = *MakeTrack("trip", 0);
    for (int i = 0; i < 200; ++i) // north, then east, with a little wobble
        track.addPoint(boat.PointAt(i < 120 ? i % 2 : 50.0 * (i - 120), 50.0 * std::min(i, 120), kStart + i), false);
    track.ConvertToRoute();
    EXPECT_FALSE(track.visible);
    ASSERT_EQ(g_mark_manager.routes.size(), 1U);
    COverlayRoute& route = *g_mark_manager.routes.front();
    EXPECT_EQ(route.name, "trip-converted");
    EXPECT_LE(route.waypoints.size(), 9U);
    EXPECT_GE(route.waypoints.size(), 3U);
    EXPECT_NEAR(route.getTotalLengthMeters(), 200.0 * 50.0, 100.0);
    for (const COverlayMark* waypoint : route.waypoints) {
        EXPECT_EQ(waypoint->route, &route);
        EXPECT_EQ(waypoint->type, COverlayObject::kWaypoint);
    }
    EXPECT_FALSE(COverlayMark::creating_route);

    route.ConvertToTrack();
    EXPECT_EQ(Names(), (std::vector<std::string>{"trip", "trip-converted-converted"}));
    EXPECT_EQ(Track()->getTotalPoints(), static_cast<int>(route.waypoints.size()));
    EXPECT_EQ(Track()->getTimeOfStart(), 0.0);
    EXPECT_EQ(Track()->getMovingTime(), 0.0);
    // Where a recording goes on in it, its missing times do not begin another track.
    g_track_manager.ResumeOrPauseRecording();
    boat.Report(4000.0, 6100.0, kStart);
    EXPECT_EQ(g_track_manager.size(), 2U);
}

TEST_F(TrackEdit, AnEqualTrackIsKnown)
{
    MakeTrack("trip", 100);
    constexpr struct {
        const char* name;
        const char* track_name;
        int points;
        double aside; // metres
        bool known;
    } cases[] = {
        {"the_same", "trip", 100, 0.0, true},      {"its_name_in_capitals", "TRIP", 100, 0.0, true},
        {"a_metre_aside", "trip", 100, 1.0, true}, {"ten_metres_aside", "trip", 100, 10.0, false},
        {"another_name", "tour", 100, 0.0, false}, {"one_point_less", "trip", 99, 0.0, false},
    };
    for (const auto& c : cases) {
        COverlayTrack track;
        track.name = c.track_name;
        for (int i = 0; i < c.points; ++i) track.addPoint(boat.PointAt(c.aside, 10.0 * i, 0.0), false);
        EXPECT_EQ(g_track_manager.alreadyHave(track), c.known) << c.name;
    }
    // Cut into other pieces it is still the same.
    COverlayTrack& own = *g_track_manager.front();
    COverlayTrack copy;
    copy.name = "trip";
    for (const CTrackPoint& point : PointsOf(own)) copy.addPoint(point, false);
    own.SplitTrack(own.sections.front(), 20);
    own.JoinTrack(*std::next(g_track_manager.begin()));
    EXPECT_EQ(own.sections.front()->count, 21);
    EXPECT_TRUE(g_track_manager.alreadyHave(copy));
}

TEST_F(TrackEdit, TracksAreDeletedByChoice)
{
    MakeTrack("A1", 5);
    MakeTrack("B1", 5)->locked = true;
    MakeTrack("A2", 5);
    g_track_manager.DeleteTracksMatching(
        [](const COverlayTrack& track, void* letter) { return track.name[0] == *static_cast<char*>(letter); },
        const_cast<char*>("A"));
    EXPECT_EQ(Names(), std::vector<std::string>{"B1"});
}

struct CTool : IOverlayViews {
    CTool() { SetOverlayViews(this); }
    ~CTool() override { SetOverlayViews(nullptr); }
    double DisplayedScale() const override { return 10.0 / 1852.0; } // 10 m in a pixel
    int SelectedPoint(const CTrackSection&) const override { return selected; }
    int selected = -1;
};

/// The labels of the track's menu, and what an entry does.
struct CTrackMenu {
    explicit CTrackMenu(COverlayTrack& track) : menu(track.name)
    {
        track.addMenus(menu, {}, track.sections.empty() ? nullptr : track.sections.front());
    }
    std::vector<std::string> Labels()
    {
        std::vector<std::string> labels;
        for (int i = 0; i < menu.rootNode().count(); ++i) labels.push_back(Text(i));
        return labels;
    }
    void Click(const std::string& label)
    {
        for (int i = 0; i < menu.rootNode().count(); ++i)
            if (Text(i) == label) return menu.rootNode().childNode(i)->itemClicked();
        ADD_FAILURE() << label;
    }
    std::string Text(int i) { return menu.rootNode().childNode(i)->text; }
    CMenuTree menu;
};

TEST_F(TrackEdit, TheMenuOffersWhatCanBeDone)
{
    CTool tool;
    COverlayTrack& track = *MakeTrack("track: one", 20);
    EXPECT_EQ(CTrackMenu(track).Labels(),
              (std::vector<std::string>{"Edit Track", "Convert to Route", "Resume Recording", "Hide Track",
                                        "Lock Track", "Save Track As", "Delete Track"}));
    tool.selected = 5;
    COverlayTrack& next = *MakeTrack("next", 5, 150.0, 190.0); // begins 150 m from the end, the radius is 200 m
    MakeTrack("too far", 5, -250.0, 190.0);
    MakeTrack("hidden", 5, 0.0, 190.0)->visible = false;
    CTrackMenu(track).Click("Hide Track");
    CTrackMenu(track).Click("Lock Track");
    EXPECT_EQ(
        CTrackMenu(track).Labels(),
        (std::vector<std::string>{"Edit Track", "Split Track", "Join Track", "Convert to Route", "Resume Recording",
                                  "Show Track", "Unlock Track", "Save Track As", "Delete Track"}));
    CTrackMenu(track).Click("Show Track");
    CTrackMenu(track).Click("Resume Recording");
    EXPECT_TRUE(track.isRecording());
    EXPECT_EQ(std::ranges::count(CTrackMenu(track).Labels(), "Resume Recording"), 0);
    g_track_manager.stopTrackRecording();
    CTrackMenu(next).Click("Join Track"); // from the track that ends near this start
    EXPECT_EQ(track.getTotalPoints(), 25);
    CTrackMenu(track).Click("Split Track");
    EXPECT_EQ(track.getTotalPoints(), 6);
    tool.selected = 0;
    for (const std::string& label : CTrackMenu(track).Labels()) EXPECT_NE(label, "Split Track") << "at its start";
}

TEST_F(TrackEdit, AMenuOutlivesItsTrack)
{
    CTool tool;
    tool.selected = 5;
    COverlayTrack* const track = MakeTrack("track", 20);
    MakeTrack("next", 5, 0.0, 190.0);
    CTrackMenu menu(*track);
    g_track_manager.ClearAll();
    for (const std::string& label : menu.Labels()) menu.Click(label);
    EXPECT_TRUE(g_track_manager.empty());
    EXPECT_TRUE(g_mark_manager.routes.empty());
}

TEST_F(TrackEdit, AYoungUnlockedTrackIsDeletedWithoutAQuestion)
{
    constexpr struct {
        const char* name;
        double age; // seconds
        bool locked, gone;
    } cases[] = {{"young", 59.0, false, true}, {"old", 60.0, false, false}, {"young_but_locked", 1.0, true, false}};
    for (const auto& c : cases) {
        COverlayTrack* const track = MakeTrack(c.name, 5);
        track->created = kStart - c.age;
        track->locked = c.locked;
        CTrackMenu(*track).Click("Delete Track"); // nobody is there to answer the question
        EXPECT_EQ(track->deleted, c.gone) << c.name;
    }
}

TEST_F(TrackEdit, EveryChangeReachesTheViews)
{
    struct View : Listener<COverlayObject> {
        View() { Connect(); }
        void OnUpdate(COverlayObject& object) override
        {
            if (object.action == COverlayObject::kDeleted) {
                shown.erase(&object);
            } else if (object.action == COverlayObject::kChanged) {
                shown.insert(&object);
            }
        }
        std::set<COverlayObject*> shown;
    } view;
    const auto sections = [] {
        std::set<COverlayObject*> all;
        for (const COverlayTrack* track : g_track_manager) all.insert(track->sections.begin(), track->sections.end());
        return all;
    };
    MakeTrack("a", 200);
    MakeTrack("b", 10, 0.0, 1990.0);
    g_track_manager.SaveIfNeeded();
    ASSERT_TRUE(Restart());
    COverlayTrack& track = *g_track_manager.front();
    EXPECT_EQ(view.shown, sections()) << "read";
    track.JoinTrack(g_track_manager.back());
    EXPECT_EQ(view.shown, sections()) << "joined";
    track.SplitTrack(SectionAt(track, 1), 0);
    EXPECT_EQ(view.shown, sections()) << "split";
    CTrackManager::doRecordTrack = true;
    for (int i = 0; i < 70; ++i) boat.Report(0.0, 30.0 * i, kStart + 1e6 + 30.0 * i);
    EXPECT_EQ(view.shown, sections()) << "recorded";
    g_track_manager.DeleteTrack(&track);
    EXPECT_EQ(view.shown, sections()) << "deleted";
    view.shown.clear();
    g_track_manager.GetUpdatesForAll(COverlayObject::kChanged, view);
    EXPECT_EQ(view.shown, sections()) << "asked for";
}

} // namespace
