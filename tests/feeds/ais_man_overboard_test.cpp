#include "feeds/ais_world.h"
#include "overlays/mark_manager.h"

class AisManOverboard : public CAisWorld {
protected:
    static constexpr std::uint32_t kPerson = 972000001;

    AisManOverboard() { g_mark_manager.ClearAll(); }
    ~AisManOverboard() override
    {
        g_mark_manager.ClearAll();
        g_mark_manager.marks_modified = false;
    }
    void HearPerson(double x, double y, std::uint32_t mmsi = kPerson) { Hear(PositionReportA(mmsi, 14, At(x, y))); }
    static std::vector<COverlayMark*> LiveMarks()
    {
        std::vector<COverlayMark*> live;
        for (COverlayMark* mark : g_mark_manager.marks)
            if (!mark->deleted) live.push_back(mark);
        return live;
    }
    static void NextDay()
    {
        now += 86400.0;
        CHeartbeat::TheHeartbeat.Pulse();
    }
};

TEST_F(AisManOverboard, IsShownMarkedAndSteeredFor)
{
    Fix(0.0F, 5.0F);
    HearPerson(3704.0, 0.0);
    EXPECT_EQ(alarms.shown[kPerson], "AIS Man Overboard: 2.00 NM away, bearing 090\u00b0T");
    ASSERT_EQ(LiveMarks().size(), 1U);
    COverlayMark& mark = *LiveMarks().front();
    EXPECT_EQ(mark.name, "AIS MOB: 972000001");
    EXPECT_EQ(mark.icon_name, "X");
    EXPECT_NEAR(grid.distance(mark.lat, mark.lon), 3704.0, 0.5);
    EXPECT_TRUE(g_mark_manager.marks_modified);
    EXPECT_FALSE(mark.isNavigatingToMark()) << "not near enough";

    mark.setVisible(false);
    now += 10.0;
    CHeartbeat::TheHeartbeat.Pulse();
    Fix(0.0F, 5.0F);
    HearPerson(0.0, 480.0);
    ASSERT_EQ(LiveMarks().size(), 1U) << "one mark follows the person";
    EXPECT_NEAR(grid.distance(mark.lat, mark.lon), 480.0, 0.5);
    EXPECT_TRUE(mark.visible);
    EXPECT_EQ(mark.modified, now);
    EXPECT_TRUE(mark.isNavigatingToMark());

    g_mark_manager.DeleteMark(&mark);
    HearPerson(0.0, 480.0);
    EXPECT_EQ(LiveMarks().size(), 1U) << "the user deleted it, and the person is still there";
}

TEST_F(AisManOverboard, NoFloodOfMarks)
{
    NextDay();
    Fix(0.0F, 0.0F);
    const int most = CAISTargetManager::kMostMarksADay;
    for (int i = 0; i < most + 50; ++i) HearPerson(2000.0, 10.0 * i, kPerson + static_cast<std::uint32_t>(i));
    EXPECT_EQ(LiveMarks().size(), static_cast<std::size_t>(most));
    EXPECT_EQ(alarms.shown.size(), static_cast<std::size_t>(most) + 50) << "each is told of all the same";
    HearPerson(1000.0, 0.0);
    EXPECT_NEAR(grid.distance(LiveMarks().front()->lat, LiveMarks().front()->lon), 1000.0, 0.5) << "known marks move";
    NextDay();
    Fix(0.0F, 0.0F);
    HearPerson(2000.0, 0.0, kPerson + static_cast<std::uint32_t>(most) + 1);
    EXPECT_EQ(LiveMarks().size(), static_cast<std::size_t>(most) + 1);
}
