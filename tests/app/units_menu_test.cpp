#include "app/units_settings.h"
#include "core/listener.h"
#include "core/persistant_data.h"
#include "navdata/position_format.h"
#include "ui/action_sheet.h"

#include <gtest/gtest.h>

namespace {

/// "Units(Statute *Nautical ...)": the menu's texts, the marked ones with a star.
std::string Outline(const TreeViewNode& node)
{
    std::string text;
    for (const auto& child : node.childNodes()) {
        if (!text.empty()) text += ", ";
        text += (child->appearance == Appearance::kCurrent ? "*" : "") + child->text;
        if (child->count() > 0) text += " (" + Outline(*child) + ")";
    }
    return text;
}

class UnitsMenu : public testing::Test, Listener<CUnits> {
protected:
    UnitsMenu()
    {
        *static_cast<CUnits*>(&CDefaultUnits::u) = Fresh();
        Connect();
    }
    ~UnitsMenu() override { *static_cast<CUnits*>(&CDefaultUnits::u) = before; }
    void OnUpdate(CUnits&) override { ++heard; }

    static CUnits Fresh()
    {
        CUnits units;
        units.set_unit_family(CUnits::kNautical);
        units.position_format = &pf_dm;
        units.bearings = CUnits::kTrueNorth;
        return units;
    }
    static CGlobalSettingsType* Entry()
    {
        auto* entry = CGlobalSettingsType::First();
        while (entry != nullptr && entry->name != "Units") entry = entry->Next();
        return entry;
    }
    std::string Menu() const
    {
        CMenuTree menu("Main Menu");
        Entry()->addMenu(&menu, "Settings:");
        return Outline(menu.rootNode());
    }
    /// Presses the entry of a menu that was just built.
    void Press(const char* path) const
    {
        CMenuTree menu("Main Menu");
        Entry()->addMenu(&menu, "Settings:");
        TreeViewNode* entry = menu.rootNode().FindSegmentedCategory(std::string("Settings:Units:") + path, ':');
        ASSERT_NE(entry, nullptr) << path;
        entry->itemClicked();
    }

    const CUnits before;
    int heard = 0;
};

TEST_F(UnitsMenu, MarksThePresentChoices)
{
    ASSERT_NE(Entry(), nullptr);
    EXPECT_EQ(Entry()->order, 6);
    EXPECT_EQ(Menu(),
              "Settings (Units (Statute, *Nautical, Metric, Position format (Degrees, *Deg,Min, Deg,Min,Sec, MGRS, "
              "NZTM, British National Grid, UTM on WGS84, UTM/WGS84 bands), Bearings (*True North, Magnetic)))");
}

TEST_F(UnitsMenu, AChoiceIsTakenSavedAndPublished)
{
    Press("Metric");
    Press("Position format:MGRS");
    Press("Bearings:Magnetic");
    EXPECT_EQ(heard, 3);
    const CUnits& units = *CUnits::Default;
    EXPECT_EQ(units.dist, CUnits::kMetric);
    EXPECT_STREQ(units.position_format->name, "MGRS");
    EXPECT_EQ(units.bearings, CUnits::kMagneticNorth);
    EXPECT_NE(Menu().find("*Metric"), std::string::npos);
    EXPECT_NE(Menu().find("*Magnetic"), std::string::npos);
    EXPECT_EQ(Menu().find("*Nautical"), std::string::npos);

    const PersistantData* group = PersistantData::global_list;
    while (group != nullptr && group->group != "CDefaultUnits") group = group->next;
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->modified) << "only such groups are written";
}

} // namespace
