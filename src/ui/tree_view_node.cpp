#include "ui/tree_view_node.h"

#include "ui/tree_model.h"

#include <algorithm>
#include <utility>

TreeViewNode::TreeViewNode(std::string node_text, bool has_checkbox)
    : text(std::move(node_text)), checkbox(has_checkbox)
{}

TreeViewNode::~TreeViewNode() = default;

void TreeViewNode::clear()
{
    if (model != nullptr && parent_node == nullptr) model->BeginRebuild();
    if (model == nullptr || model->IsRebuilding()) {
        sorted.clear();
        children.clear();
        return;
    }
    while (!children.empty()) takeChild(children.back().get());
}

/// The row that a further child will have.
int TreeViewNode::RowOfNew(const TreeViewNode* added) const
{
    if (sort_mode == TreeSort::kInsertion) return sort_reverse ? 0 : count();
    return static_cast<int>(std::upper_bound(sorted.begin(), sorted.end(), added, SortOrder()) - sorted.begin());
}

TreeViewNode* TreeViewNode::addChild(std::unique_ptr<TreeViewNode> child)
{
    TreeViewNode* added = child.get();
    added->parent_node = this;
    if (sort_mode != TreeSort::kInsertion || sort_reverse) added->setSortMode(sort_mode, sort_reverse);
    const bool announced = model != nullptr && !model->IsRebuilding();
    if (announced) {
        sortChildrenIfNeeded();
        model->BeginInsert(this, RowOfNew(added));
    }
    children.push_back(std::move(child));
    sorted.clear();
    if (model != nullptr) added->setModel(model);
    if (announced) model->EndInsert();
    return added;
}

TreeViewNode* TreeViewNode::addChild(const std::string& child_text, bool has_checkbox, void* child_data)
{
    TreeViewNode* added = addChild(std::make_unique<TreeViewNode>(child_text, has_checkbox));
    added->data = child_data;
    return added;
}

std::unique_ptr<TreeViewNode> TreeViewNode::takeChild(TreeViewNode* child)
{
    const auto found =
        std::find_if(children.begin(), children.end(), [child](const auto& owned) { return owned.get() == child; });
    if (found == children.end()) return nullptr;
    const bool announced = model != nullptr && !model->IsRebuilding();
    if (announced) model->BeginRemove(this, child->pos());
    std::unique_ptr<TreeViewNode> taken = std::move(*found);
    children.erase(found);
    sorted.clear();
    if (announced) model->EndRemove();
    taken->parent_node = nullptr;
    taken->setModel(nullptr);
    return taken;
}

void TreeViewNode::setModel(CTreeModel* new_model)
{
    model = new_model;
    for (const auto& child : children) child->setModel(new_model);
}

void TreeViewNode::forEachNode(const std::function<void(TreeViewNode*)>& function)
{
    for (const auto& child : children) {
        function(child.get());
        child->forEachNode(function);
    }
}

void TreeViewNode::forEachChildWithData(const std::function<void(TreeViewNode*)>& function)
{
    forEachNode([&function](TreeViewNode* node) {
        if (node->data != nullptr) function(node);
    });
}

void TreeViewNode::forEachLeafNode(const std::function<void(TreeViewNode*)>& function)
{
    forEachNode([&function](TreeViewNode* node) {
        if (node->children.empty()) function(node);
    });
}

void TreeViewNode::changedChecked(Qt::CheckState state)
{
    if (check_state == state) return;
    check_state = state;
    forEachNode([state](TreeViewNode* node) { node->check_state = state; });
    for (TreeViewNode* above = parent_node; above != nullptr; above = above->parent_node) above->UpdateFromChildren();
}

void TreeViewNode::setCheckedFromChildren()
{
    for (const auto& child : children) child->setCheckedFromChildren();
    UpdateFromChildren();
}

/// Children without a check box do not count; without any that has one the state stays.
void TreeViewNode::UpdateFromChildren()
{
    bool any = false;
    bool mixed = false;
    Qt::CheckState common = Qt::Unchecked;
    for (const auto& child : children) {
        if (!child->checkbox) continue;
        mixed = mixed || child->check_state == Qt::PartiallyChecked || (any && child->check_state != common);
        common = child->check_state;
        any = true;
    }
    if (any) check_state = mixed ? Qt::PartiallyChecked : common;
}

void TreeViewNode::expandParents()
{
    for (TreeViewNode* above = parent_node; above != nullptr; above = above->parent_node) above->expanded = true;
}

void TreeViewNode::expandParentsOfSelected()
{
    forEachNode([](TreeViewNode* node) {
        if (node->selected) node->expandParents();
    });
}

void TreeViewNode::select()
{
    if (selected) return;
    selected = true;
    if (model != nullptr) model->NodeSelected(this, true);
}

void TreeViewNode::toggleSelection()
{
    if (!selected) {
        select();
        return;
    }
    selected = false;
    if (model != nullptr) model->NodeSelected(this, false);
}

void TreeViewNode::deSelectAll()
{
    if (selected) toggleSelection();
    for (const auto& child : children) child->deSelectAll();
}

std::unique_ptr<TreeOutlineNode> TreeViewNode::getExpandedTree() const
{
    std::unique_ptr<TreeOutlineNode> outline;
    for (const auto& child : children) {
        std::unique_ptr<TreeOutlineNode> below = child->getExpandedTree();
        if (!child->expanded && below == nullptr) continue;
        if (below == nullptr) below = std::make_unique<TreeOutlineNode>();
        below->name = child->text;
        if (outline == nullptr) outline = std::make_unique<TreeOutlineNode>();
        outline->children.push_back(below.release());
    }
    return outline;
}

void TreeViewNode::setExpandedTree(const TreeOutlineNode* outline)
{
    if (outline == nullptr) return;
    for (const TreeOutlineNode* open : outline->children) {
        TreeViewNode* child = FindChild(open->name);
        if (child == nullptr) continue;
        child->expanded = true;
        child->setExpandedTree(open);
    }
}
