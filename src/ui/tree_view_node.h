#pragma once

#include "core/bounds.h"
#include "core/tree_outline_node.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include <Qt>

class CTreeModel;

/// How a node's children are ordered for the view. The children themselves keep the order of insertion.
enum class TreeSort {
    kInsertion,
    kAlphanumeric,
    kScale,
    kDistance, ///< of the middle of the bounds from TreeViewNode::SetSortOrigin
    kCreationTime,
    kModificationTime,
};

/// One entry of a menu or list. A node owns its children; a root is never shown. Texts are UTF-8. Main thread only.
///
/// A tree in a CTreeModel may be changed at any time: clear() of its root begins a rebuild, during which the model
/// shows nothing, and CTreeModel::setExpandedAndSelected() ends it; a child added outside a rebuild appears by itself.
class TreeViewNode {
public:
    explicit TreeViewNode(std::string node_text = {}, bool has_checkbox = false);
    TreeViewNode(const TreeViewNode&) = delete;
    TreeViewNode& operator=(const TreeViewNode&) = delete;
    virtual ~TreeViewNode();

    /// What a menu calls for the chosen entry.
    virtual void itemClicked() {}

    std::string text;
    std::string subtext;
    std::string icon;                ///< "qrc:/x.svg", empty for none
    bool checkbox = false;           ///< the row has a check box, and counts in its parent's
    std::vector<std::string> button; ///< texts of the buttons in the row
    int appearance = 0;              ///< see Appearance
    bool expanded = false;           ///< its children are shown
    bool selected = false;
    void* data = nullptr; ///< the user's, not owned

    // Structure.
    void clear();
    /// Children.
    int count() const { return static_cast<int>(children.size()); }
    /// Whether the parent is the root.
    bool isTopLevel() const { return parent_node != nullptr && parent_node->parent_node == nullptr; }
    TreeViewNode* parent() const { return parent_node; }
    /// The children in the order of insertion.
    const std::list<std::unique_ptr<TreeViewNode>>& childNodes() const { return children; }
    TreeViewNode* addChild(std::unique_ptr<TreeViewNode> child);
    TreeViewNode* addChild(const std::string& child_text, bool has_checkbox = false, void* child_data = nullptr);
    /// Takes the child out of the tree; null when it is none of this node.
    std::unique_ptr<TreeViewNode> takeChild(TreeViewNode* child);
    /// Finds or makes one node a part below this one and gives the last; this node for an empty path.
    TreeViewNode* InsertPath(const std::vector<std::string>& path, bool has_checkbox = false);
    /// Inserts the item under the submenus that its text names before each `separator`; with separator 0 as it stands.
    TreeViewNode* InsertSegmented(std::unique_ptr<TreeViewNode> item, char separator);
    /// The node under the path of texts; null when it does not exist.
    TreeViewNode* FindSegmentedCategory(const std::string& path, char separator) const;
    /// Opens the node under the path and its parents; false when it does not exist.
    bool ExpandSegmented(const std::string& path, char separator);
    /// Turns all levels into one: the leaves, each named by its path of texts.
    void flatten_tree(char separator);

    // Check states.
    Qt::CheckState checkState() const { return check_state; }
    /// Sets the state of this node and of all below it, and works out the parents' anew.
    void changedChecked(Qt::CheckState state);
    /// Works out the states of all nodes below and of this one from the leaves.
    void setCheckedFromChildren();
    /// Sets the state of this node alone.
    void setChecked(Qt::CheckState state) { check_state = state; }

    // Selection and expansion.
    void expandParents();
    void expandParentsOfSelected();
    void select();
    void toggleSelection();
    /// In this node and all below.
    void deSelectAll();
    /// The open nodes below this one, by their texts; null when none is open. The caller owns it.
    std::unique_ptr<TreeOutlineNode> getExpandedTree() const;
    /// Opens what the outline names and exists here; null opens nothing.
    void setExpandedTree(const TreeOutlineNode* outline);

    // Walks, parents before children, in the order of insertion.
    /// All nodes below with user data.
    void forEachChildWithData(const std::function<void(TreeViewNode*)>& function);
    /// All nodes below without children.
    void forEachLeafNode(const std::function<void(TreeViewNode*)>& function);
    void forEachNode(const std::function<void(TreeViewNode*)>& function);

    // What the sort orders compare.
    void set_scale(double new_scale) { scale = new_scale; }
    /// Seconds since 1970.
    void set_creation_time(double time) { creation_time = time; }
    void set_modification_time(double time) { modification_time = time; }
    void setBounds(const CBounds& new_bounds) { bounds = new_bounds; }
    /// Degrees.
    static void SetSortOrigin(double lat, double lon);

    /// Orders the children of this node and of all below; new children take over their parent's order.
    void setSortMode(TreeSort mode, bool reverse = false);
    TreeSort sortMode() const { return sort_mode; }
    /// Rebuilds the sorted children when their number has changed.
    void sortChildrenIfNeeded() const;
    /// Child number `row` in sorted order; null outside.
    TreeViewNode* childNode(int row) const;
    /// Forgets the sorted order of this node and of all below: what is asked for next is sorted anew.
    void DropSorted();
    /// This node's row among its parent's sorted children; 0 for a root.
    int pos() const;

    /// Of this node and all below.
    void setModel(CTreeModel* new_model);
    CTreeModel* getModel() const { return model; }

private:
    bool SortsBefore(const TreeViewNode& other, TreeSort mode) const;
    /// The order of this node's children.
    std::function<bool(const TreeViewNode*, const TreeViewNode*)> SortOrder() const;
    int RowOfNew(const TreeViewNode* added) const;
    void UpdateFromChildren();
    TreeViewNode* FindChild(const std::string& child_text) const;
    double DistanceFromOrigin() const;
    void CollectLeaves(const std::string& prefix, char separator, std::list<std::unique_ptr<TreeViewNode>>& out);

    CTreeModel* model = nullptr;
    TreeViewNode* parent_node = nullptr;
    Qt::CheckState check_state = Qt::Unchecked;
    std::list<std::unique_ptr<TreeViewNode>> children;
    mutable std::vector<TreeViewNode*> sorted;
    mutable int row = 0; ///< in the parent's sorted children, valid once those are built
    TreeSort sort_mode = TreeSort::kInsertion;
    bool sort_reverse = false;
    double creation_time = 0.0;
    double modification_time = 0.0;
    double scale = 0.0;
    CBounds bounds;
};

/// Appearance values of an entry.
namespace Appearance {
constexpr int kNormal = 0;
constexpr int kPositive = 1; ///< text in green
constexpr int kCaution = 2;  ///< text in deep orange
constexpr int kDisabled = 3;
constexpr int kHidden = 4;  ///< never becomes part of a menu
constexpr int kCurrent = 5; ///< highlighted and bold
constexpr int kSeparator = 6;
} // namespace Appearance
