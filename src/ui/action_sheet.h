#pragma once

#include "core/zt_hwnd.h"
#include "ui/tree_view_node.h"

#include <functional>
#include <memory>
#include <string>

/// One entry of a menu.
class CActionSheetItem : public TreeViewNode {
public:
    explicit CActionSheetItem(std::string label) : TreeViewNode(std::move(label)) {}
};

/// An entry that calls a function, if it has one.
class CActionSheetFunc : public CActionSheetItem {
public:
    CActionSheetFunc(std::string label, std::function<void()> function)
        : CActionSheetItem(std::move(label)), m_function(std::move(function))
    {}
    void itemClicked() override
    {
        if (m_function) m_function();
    }

private:
    std::function<void()> m_function;
};

/// An entry that calls a plain function with a pointer.
class CActionSheetItemVoid : public CActionSheetItem {
public:
    CActionSheetItemVoid(std::string label, void (*function)(void*), void* user)
        : CActionSheetItem(std::move(label)), m_function(function), m_user(user)
    {}
    void itemClicked() override
    {
        if (m_function != nullptr) m_function(m_user);
    }

private:
    void (*m_function)(void*);
    void* m_user;
};

/// A menu, built afresh each time it is shown. Callbacks capture by value what they need: the entries live until the
/// menu is closed, and the object itself need not. Main thread only.
class CActionSheetMenu {
public:
    explicit CActionSheetMenu(std::string title, void* user = nullptr);
    virtual ~CActionSheetMenu();

    /// Adds an entry; the label may name submenus when the menu has a separator. Null for a hidden entry, which leaves
    /// nothing behind.
    CActionSheetItem* Add(const std::string& label, std::function<void()> function, const std::string& icon = {},
                          int appearance = Appearance::kNormal);
    CActionSheetItem* Add(const std::string& label, void (*function)(void*), void* user_data);
    CActionSheetItem* Add(std::unique_ptr<CActionSheetItem> item);
    /// Adds an entry whose label is a text of the user: no character of it is special. `submenu` is a path, may be
    /// empty.
    CActionSheetItem* AddPlain(const std::string& submenu, const std::string& label, std::function<void()> function,
                               const std::string& icon = {}, int appearance = Appearance::kNormal);
    /// `submenu` as in AddPlain.
    void AddSeparator(const std::string& submenu = {});
    /// Does nothing when no entry has made that submenu.
    void setIconForSubmenu(const std::string& path, const std::string& icon);

    /// Shows the menu at the handle's point. An empty menu is not shown. The entries go with the menu on the screen.
    void ShowMenu(ZT_HWND parent);

    bool empty() const { return root->count() == 0; }
    TreeViewNode& rootNode() { return *root; }
    const std::string& title() const { return m_title; }
    char separator() const { return m_separator; }
    void* user() const { return m_user; }

protected:
    CActionSheetMenu(std::string title, char separator, void* user);

private:
    TreeViewNode* Submenu(const std::string& path);

    std::string m_title;
    char m_separator = 0; ///< 0: labels are taken whole
    std::unique_ptr<TreeViewNode> root;
    void* m_user;
};

/// A menu whose labels are paths: "Route Operations:Optimize route:For Walking" makes two submenus and an entry.
class CMenuTree : public CActionSheetMenu {
public:
    /// Base of the entries that a menu tree makes of its own classes.
    class CItem : public CActionSheetItem {
    public:
        using CActionSheetItem::CActionSheetItem;
    };

    explicit CMenuTree(std::string title, void* user = nullptr) : CActionSheetMenu(std::move(title), ':', user) {}
    void ShowMenuTree(ZT_HWND parent) { ShowMenu(parent); }
};
