#pragma once

#include "ui/tree_view_node.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QQuickItem>

/// Serves a tree of TreeViewNode to menus and lists without copying it: an index holds the node's pointer. The model
/// owns the root. Main thread only.
class CTreeModel : public QAbstractItemModel {
    Q_OBJECT
    Q_PROPERTY(QItemSelectionModel* selectionModel READ selectionModel CONSTANT)

public:
    enum Role {
        kTextRole = Qt::UserRole, ///< string
        kSubtextRole,             ///< string
        kIconRole,                ///< string, a URL
        kCheckboxRole,            ///< bool
        kCheckedStateRole,        ///< Qt::CheckState as a number
        kButtonRole,              ///< list of strings
        kAppearanceRole,          ///< see Appearance
    };

    explicit CTreeModel(QObject* parent = nullptr);
    ~CTreeModel() override;

    TreeViewNode& root() { return *root_node; }
    /// Replaces the whole tree; never null.
    void setRoot(std::unique_ptr<TreeViewNode> root);

    /// The root for an invalid index.
    TreeViewNode* getNode(const QModelIndex& index) const;
    /// Invalid for the root, for null and for nodes of another tree.
    QModelIndex getIndex(const TreeViewNode* node) const;

    Q_INVOKABLE QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    Q_INVOKABLE QModelIndex parent(const QModelIndex& index) const override;
    Q_INVOKABLE int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Q_INVOKABLE QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override;
    using QObject::parent;

    /// The view has opened or closed a node.
    Q_INVOKABLE void onExpanded(const QModelIndex& index, bool expanded);
    /// The user has set a check box.
    Q_INVOKABLE void onCheckedItem(const QModelIndex& index, int state);
    /// The same, the other way than it stands; partly checked becomes checked.
    Q_INVOKABLE void onToggleCheckstate(const QModelIndex& index);
    /// Selects the rows between two siblings, both included, and nothing else.
    Q_INVOKABLE void selectRange(const QModelIndex& a, const QModelIndex& b);
    /// Opens the node under a path of texts with "|" between them.
    Q_INVOKABLE bool expandCategory(const QString& path);

    /// Hands the nodes' expanded state to the view.
    void set_expanded_items();
    /// Hands the nodes' selected state to the view.
    void set_current_selection();
    /// Ends a rebuild: both of the above.
    void setExpandedAndSelected();
    /// Works out all check states from the leaves and tells the view.
    void setCheckedStates();
    void expandParentsOfSelectedNodes();
    void emitDataChanged(const TreeViewNode* node, int role);
    /// After a change of the sort order: sorts what is open now, and the rest when it is opened.
    void sort_children_of_expanded_items();

    QItemSelectionModel* selectionModel() { return &selection; }

    // For TreeViewNode.
    void BeginRebuild();
    bool IsRebuilding() const { return rebuilding; }
    void BeginInsert(const TreeViewNode* parent_node, int row);
    void EndInsert() { endInsertRows(); }
    void BeginRemove(const TreeViewNode* parent_node, int row);
    void EndRemove() { endRemoveRows(); }
    void BeginSort();
    void EndSort();
    void NodeSelected(const TreeViewNode* node, bool selected);

signals:
    void clickedItem(const QModelIndex& index, QQuickItem* item);
    void rightClickedItem(const QModelIndex& index, QQuickItem* item);
    void doubleClickedItem(const QModelIndex& index, QQuickItem* item);
    void clickedItemButton(const QModelIndex& index, int button, QQuickItem* item);
    /// A check box was changed by the user.
    void checkedItem(const QModelIndex& index);
    /// For the view.
    void expandNode(const QModelIndex& index);

private:
    void StoreSelection(const QItemSelection& now, const QItemSelection& before);

    std::unique_ptr<TreeViewNode> root_node;
    QItemSelectionModel selection;
    std::vector<std::pair<QModelIndex, TreeViewNode*>> moving; ///< persistent indexes during a sort
    bool rebuilding = false;
    bool applying = false; ///< the selection is being set from the nodes
};
