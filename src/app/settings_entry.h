#pragma once

#include "core/global_settings_type.h"
#include "ui/action_sheet.h"
#include "ui/zt_dialog.h"

#include <string>

/// An entry of the settings menu that opens the dialog T.
template <class T>
class CSettingsEntry : public CGlobalSettingsType {
public:
    CSettingsEntry(const char* entry_name, int entry_order, const char* entry_icon)
        : CGlobalSettingsType(entry_name, entry_order), icon(entry_icon)
    {}

    void addMenu(CMenuTree* menu, const std::string& path) override
    {
        // The menu's own handle is where the button was; the entry opens its dialog over the whole window.
        menu->Add(
            path + name, [this] { showDialog(ZT_HWND()); }, icon);
    }
    void showDialog(ZT_HWND parent) override { T::template ShowDialog<T>(parent); }

private:
    std::string icon;
};
