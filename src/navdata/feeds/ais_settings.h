#pragma once

#include "core/global_settings_type.h"
#include "navdata/feeds/ais_target_manager.h"

/// The entry of the settings menu, there for users who receive AIS.
class CAISTargetManager::SettingsType : public CGlobalSettingsType {
public:
    SettingsType();
    void addMenu(CMenuTree* menu, const std::string& path) override;
    void showDialog(ZT_HWND parent) override;
};
