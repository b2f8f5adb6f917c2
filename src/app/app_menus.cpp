#include "app/app_menus.h"

#include "app/zentara_app_model.h"
#include "core/global_settings_type.h"
#include "ui/action_sheet.h"

#include <QPointer>

namespace {

constexpr const char* kSettingsPath = "Settings:";

/// One entry per settings type, in their order.
void AddSettings(CMenuTree& menu)
{
    for (CGlobalSettingsType* type = CGlobalSettingsType::First(); type != nullptr; type = type->Next()) {
        type->addMenu(&menu, kSettingsPath);
    }
    menu.setIconForSubmenu("Settings", "qrc:/settings.svg");
}

} // namespace

void ShowMainMenu(CZentaraAppModel& app, ZT_HWND hwnd)
{
    const QPointer<CZentaraAppModel> model(&app);
    CMenuTree menu("Main Menu");
    AddSettings(menu);
    menu.Add(
        "Lock Screen",
        [model] {
            if (model) model->LockScreen();
        },
        "qrc:/locked.svg");
    menu.Add(
        "Help",
        [model] {
            if (model) model->showHelpForTag({});
        },
        "qrc:/Help.svg");
    menu.Add(
        "Quit App",
        [model, hwnd] {
            if (model) model->AskToQuit(hwnd);
        },
        "qrc:/red_x.svg");
    menu.ShowMenuTree(hwnd);
}
