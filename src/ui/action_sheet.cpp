#include "ui/action_sheet.h"

#include "ui/zt_popup_menu.h"

#include <utility>

CActionSheetMenu::CActionSheetMenu(std::string title, void* user) : CActionSheetMenu(std::move(title), 0, user) {}

CActionSheetMenu::CActionSheetMenu(std::string title, char separator, void* user)
    : m_title(std::move(title)), m_separator(separator), root(std::make_unique<TreeViewNode>()), m_user(user)
{}

CActionSheetMenu::~CActionSheetMenu() = default;

CActionSheetItem* CActionSheetMenu::Add(const std::string& label, std::function<void()> function,
                                        const std::string& icon, int appearance)
{
    auto item = std::make_unique<CActionSheetFunc>(label, std::move(function));
    item->icon = icon;
    item->appearance = appearance;
    return Add(std::move(item));
}

CActionSheetItem* CActionSheetMenu::Add(const std::string& label, void (*function)(void*), void* user_data)
{
    return Add(std::make_unique<CActionSheetItemVoid>(label, function, user_data));
}

CActionSheetItem* CActionSheetMenu::Add(std::unique_ptr<CActionSheetItem> item)
{
    if (item->appearance == Appearance::kHidden) return nullptr;
    return static_cast<CActionSheetItem*>(root->InsertSegmented(std::move(item), m_separator));
}

CActionSheetItem* CActionSheetMenu::AddPlain(const std::string& submenu, const std::string& label,
                                             std::function<void()> function, const std::string& icon, int appearance)
{
    if (appearance == Appearance::kHidden) return nullptr;
    auto item = std::make_unique<CActionSheetFunc>(label, std::move(function));
    item->icon = icon;
    item->appearance = appearance;
    return static_cast<CActionSheetItem*>(Submenu(submenu)->addChild(std::move(item)));
}

void CActionSheetMenu::AddSeparator(const std::string& submenu)
{
    Submenu(submenu)->addChild(std::string())->appearance = Appearance::kSeparator;
}

void CActionSheetMenu::setIconForSubmenu(const std::string& path, const std::string& icon)
{
    if (TreeViewNode* node = root->FindSegmentedCategory(path, m_separator)) node->icon = icon;
}

TreeViewNode* CActionSheetMenu::Submenu(const std::string& path)
{
    if (path.empty()) return root.get();
    TreeViewNode* found = root->FindSegmentedCategory(path, m_separator);
    return found != nullptr ? found : root->InsertSegmented(std::make_unique<TreeViewNode>(path), m_separator);
}

void CActionSheetMenu::ShowMenu(ZT_HWND parent)
{
    if (empty()) return;
    CZTPopupMenu::Show(parent, m_title, std::exchange(root, std::make_unique<TreeViewNode>()));
}
