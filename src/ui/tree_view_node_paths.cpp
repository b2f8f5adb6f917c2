// Paths of texts through a tree: "Settings:Units" names the node Units below the node Settings.
#include "ui/tree_view_node.h"

#include "ui/tree_model.h"

#include <algorithm>
#include <utility>

namespace {

/// The part of `path` up to the separator; `path` becomes what follows it. False when there is no separator.
bool TakeFirstPart(std::string& path, char separator, std::string& first)
{
    const std::size_t end = separator != 0 ? path.find(separator) : std::string::npos;
    if (end == std::string::npos) return false;
    first = path.substr(0, end);
    path.erase(0, end + 1);
    return true;
}

} // namespace

TreeViewNode* TreeViewNode::FindChild(const std::string& child_text) const
{
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&child_text](const auto& child) { return child->text == child_text; });
    return found == children.end() ? nullptr : found->get();
}

TreeViewNode* TreeViewNode::InsertPath(const std::vector<std::string>& path, bool has_checkbox)
{
    TreeViewNode* node = this;
    for (const std::string& part : path) {
        TreeViewNode* child = node->FindChild(part);
        node = child != nullptr ? child : node->addChild(part, has_checkbox);
    }
    return node;
}

TreeViewNode* TreeViewNode::InsertSegmented(std::unique_ptr<TreeViewNode> item, char separator)
{
    std::string first;
    TreeViewNode* level = this;
    while (TakeFirstPart(item->text, separator, first)) {
        // A leaf of that name is an entry of its own, never a submenu.
        const auto submenu = std::find_if(level->children.begin(), level->children.end(), [&first](const auto& child) {
            return child->text == first && child->count() > 0;
        });
        level = submenu != level->children.end() ? submenu->get() : level->addChild(first);
    }
    return level->addChild(std::move(item));
}

TreeViewNode* TreeViewNode::FindSegmentedCategory(const std::string& path, char separator) const
{
    std::string rest = path;
    std::string first;
    const TreeViewNode* level = this;
    while (TakeFirstPart(rest, separator, first)) {
        level = level->FindChild(first);
        if (level == nullptr) return nullptr;
    }
    return level->FindChild(rest);
}

bool TreeViewNode::ExpandSegmented(const std::string& path, char separator)
{
    TreeViewNode* node = FindSegmentedCategory(path, separator);
    if (node == nullptr) return false;
    node->expanded = true;
    node->expandParents();
    return true;
}

void TreeViewNode::CollectLeaves(const std::string& prefix, char separator,
                                 std::list<std::unique_ptr<TreeViewNode>>& out)
{
    for (auto& child : children) {
        child->text = prefix + child->text;
        if (child->children.empty()) {
            out.push_back(std::move(child));
        } else {
            child->CollectLeaves(child->text + separator, separator, out);
        }
    }
}

void TreeViewNode::flatten_tree(char separator)
{
    const bool announced = model != nullptr && !model->IsRebuilding();
    if (announced) model->BeginRebuild();
    std::list<std::unique_ptr<TreeViewNode>> leaves;
    CollectLeaves({}, separator, leaves);
    children = std::move(leaves);
    sorted.clear();
    for (const auto& leaf : children) leaf->parent_node = this;
    if (announced) model->setExpandedAndSelected();
}
