#pragma once

#include "core/global_settings_type.h"
#include "navdata/units.h"

/// "Units" in the settings menu: every choice stands in the menu itself, the present ones are marked. A choice is saved
/// and published at once.
class CUnits::CUnitSettingsType : public CGlobalSettingsType {
public:
    CUnitSettingsType();
    void addMenu(CMenuTree* menu, const std::string& path) override;
    /// Shows the choices as a menu of their own.
    void showDialog(ZT_HWND parent) override;
};
