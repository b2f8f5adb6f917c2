#include "mark_fixture.h"

#include "core/display_metrics.h"

namespace {

TEST_F(CMarksTest, NamesCountOnFromTheHighestThatLives)
{
    const struct {
        const char* name_template;
        std::vector<std::string> used;
        const char* next;
    } cases[] = {
        {"P#", {}, "P1"},
        {"P#", {"P7", ""}, "P8"}, // the other one is a tombstone
        {"P#", {"P7", "P12x", "Q99", "p40"}, "P13"},
        {"P#", {"P 20"}, "P21"},
        {"P#", {"Pier", "P-5"}, "P1"},
        {"Wreck", {"Wreck"}, "Wreck"},
        {"#", {"3", "x"}, "4"},
        {"A#B#c", {"A#B2c"}, "A#B3c"},
        {"P#", {"P99999999999999999999"}, "P9223372036854775807"},
        {"%RP#", {"%RP4"}, "%RP5"}, // a route's name is no date
        {"%H%R#", {}, "%H%R1"},
    };
    for (const auto& c : cases) {
        std::list<COverlayMark*> marks;
        for (const std::string& name : c.used) {
            marks.push_back(new COverlayMark);
            marks.back()->name = name;
        }
        EXPECT_EQ(GetNameFromTemplate(c.name_template, marks), c.next) << c.name_template;
        for (const COverlayMark* mark : marks) delete mark;
    }
    EXPECT_EQ(CNameCounter("%Y-#").Name(), "2025-1") << "the clock of the test";
}

TEST(WaypointNames, HoldTheRouteAndTheNumber)
{
    const struct {
        const char* name_template;
        const char* route;
        int number;
        const char* name;
    } cases[] = {
        {"%RP#", "R2", 3, "R2P3"}, {"WP", "R2", 3, "WP3"},          {"# of %R", "No #%R", 0, "0 of No #%R"},
        {"%R", "R2", 10, "R210"},  {"#-%Y-%R", "R2", 1, "1-%Y-R2"},
    };
    for (const auto& c : cases) EXPECT_EQ(WaypointName(c.name_template, c.route, c.number), c.name);
    EXPECT_LT(WaypointName(std::string(30'000, 'x').replace(0, 4, "%R%R"), std::string(50'000, 'R'), 1).size(),
              200'000U);
}

TEST(IconManager, FindsFilesForSymbols)
{
    constexpr struct {
        const char* symbol;
        const char* file;
    } cases[] = {
        {"buoy can", "Buoy_can"}, {"MOB", "MOB"}, {"mob", "Mob"}, {"FISH", "Fish"},
        {"../x.y", "Xy"},         {"2 Ä", "2_"},  {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(CIconManager::to_file_name(c.symbol), c.file);
}

TEST(IconManager, SharesImagesWithTheirHotSpots)
{
    const GraphicsColor red(1.0F, 0.0F, 0.0F);
    CIconManager icons;
    double x = 0.0;
    double y = 0.0;
    icons.GetIconOffset("Buoy_can", x, y);
    EXPECT_EQ(x, 15.0);
    const auto* const buoy = icons.GetIcon("buoy CAN", red);
    ASSERT_NE(buoy, nullptr);
    EXPECT_EQ(icons.GetIcon("Buoy_can", red), buoy);
    EXPECT_NE(icons.GetIcon("Buoy_can", GraphicsColor()), buoy);
    EXPECT_DOUBLE_EQ(buoy->hot_y, buoy->image.height() * 15.0 / 19.0);
    icons.GetIconOffset("Buoy_can", x, y);
    EXPECT_EQ(x, buoy->hot_x);
    EXPECT_EQ(icons.GetIcon("No such icon", red), nullptr);

    SetGraphicsResolution(2.0);
    EXPECT_EQ(icons.GetIcon("Buoy_can", red)->image.width(), 2 * buoy->image.width());
    SetGraphicsResolution(1.0);
    EXPECT_EQ(CIconManager::IconNames().size(), 30U);
    for (const std::string& name : CIconManager::IconNames()) {
        const auto* const icon = icons.GetIcon(name, red);
        ASSERT_NE(icon, nullptr) << name;
        EXPECT_EQ(icon->name, name);
    }
}

} // namespace
