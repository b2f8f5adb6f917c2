#include "app/units_settings.h"

#include "navdata/position_format.h"
#include "ui/action_sheet.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kUnitsOrder = 6;
constexpr const char* kIcon = "qrc:/units.svg";

CUnits::CUnitSettingsType unit_settings;

/// Adds an entry that makes a choice in the program's units.
void AddChoice(CMenuTree& menu, const std::string& path, bool chosen, std::function<void(CUnits&)> choose)
{
    const auto clicked = [choose = std::move(choose)] {
        choose(*CUnits::Default);
        CUnits::Default->Changed();
    };
    menu.Add(path, clicked, {}, chosen ? Appearance::kCurrent : Appearance::kNormal);
}

void AddFamilies(CMenuTree& menu, const std::string& path)
{
    constexpr struct {
        const char* label;
        CUnits::e_dist_units family;
    } families[] = {{"Statute", CUnits::kStatute}, {"Nautical", CUnits::kNautical}, {"Metric", CUnits::kMetric}};
    for (const auto& [label, family] : families) {
        AddChoice(menu, path + label, CUnits::Default->get_unit_family() == family,
                  [family = family](CUnits& units) { units.set_unit_family(family); });
    }
}

void AddPositionFormats(CMenuTree& menu, const std::string& path)
{
    std::vector<const CUnits::PositionFormatType*> formats;
    for (auto* format = CUnits::PositionFormatType::head; format != nullptr; format = format->next) {
        formats.push_back(format);
    }
    std::reverse(formats.begin(), formats.end()); // the list has the newest first
    for (const auto* format : formats) {
        AddChoice(menu, path + format->name, CUnits::Default->position_format == format,
                  [format](CUnits& units) { units.position_format = format; });
    }
}

void AddBearings(CMenuTree& menu, const std::string& path)
{
    constexpr struct {
        const char* label;
        CUnits::e_bearings bearings;
    } norths[] = {{"True North", CUnits::kTrueNorth}, {"Magnetic", CUnits::kMagneticNorth}};
    for (const auto& [label, bearings] : norths) {
        AddChoice(menu, path + label, CUnits::Default->bearings == bearings, [bearings = bearings](CUnits& units) {
            units.bearings = bearings;
            units.ChangedBearingUnits();
        });
    }
}

void AddChoices(CMenuTree& menu, const std::string& path)
{
    AddFamilies(menu, path);
    AddPositionFormats(menu, path + "Position format:");
    AddBearings(menu, path + "Bearings:");
}

} // namespace

CUnits::CUnitSettingsType::CUnitSettingsType() : CGlobalSettingsType("Units", kUnitsOrder) {}

void CUnits::CUnitSettingsType::addMenu(CMenuTree* menu, const std::string& path)
{
    AddChoices(*menu, path + name + ":");
    menu->setIconForSubmenu(path + name, kIcon);
}

void CUnits::CUnitSettingsType::showDialog(ZT_HWND parent)
{
    CMenuTree menu(name);
    AddChoices(menu, {});
    menu.ShowMenuTree(parent);
}
