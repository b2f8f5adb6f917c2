#include "app/chart_menu.h"
#include "chartview/view_fixture.h"
#include "ui/action_sheet.h"

namespace {

/// "*harbour, coast": the menu's texts, the highlighted one with a star.
std::string Entries(CActionSheetMenu& menu)
{
    std::string text;
    for (const auto& entry : menu.rootNode().childNodes()) {
        if (!text.empty()) text += ", ";
        text += (entry->appearance == Appearance::kCurrent ? "*" : "") + entry->text;
    }
    return text;
}

TEST_F(ViewTest, ChartsInTheMiddleAreOfferedAndOpened)
{
    Chart("coast.rlt", 0.05);
    const std::string harbour = Chart("harbour: plan.rlt", 0.002);
    Chart("elsewhere.rlt", 0.01, 4, 30.0, 30.0);
    MakeView();
    ASSERT_TRUE(Open(harbour));

    CActionSheetMenu menu("Charts here");
    AddChartsHere(menu, *view);
    EXPECT_EQ(Entries(menu), "*harbour: plan.rlt, coast.rlt");
    menu.rootNode().childNodes().back()->itemClicked();
    EXPECT_EQ(Shown(), "coast.rlt");
}

TEST_F(ViewTest, AViewWithoutAChartOffersNone)
{
    MakeView();
    CActionSheetMenu menu("Charts here");
    AddChartsHere(menu, *view);
    EXPECT_EQ(Entries(menu), "No charts here");
}

} // namespace
