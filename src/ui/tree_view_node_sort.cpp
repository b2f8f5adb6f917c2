// The order in which a view shows the children of a node.
#include "ui/tree_view_node.h"

#include "core/simple_grid.h"
#include "core/text.h"
#include "ui/tree_model.h"

#include <algorithm>

namespace {

double sort_origin_lat = 0.0;
double sort_origin_lon = 0.0;

} // namespace

void TreeViewNode::SetSortOrigin(double lat, double lon)
{
    sort_origin_lat = lat;
    sort_origin_lon = lon;
}

double TreeViewNode::DistanceFromOrigin() const
{
    if (bounds.empty()) return 1e300;
    CSimpleGrid grid;
    grid.SetOrigin(sort_origin_lat, sort_origin_lon);
    return grid.distance((bounds.lat_min + bounds.lat_max) / 2.0, (bounds.lon_min + bounds.lon_max) / 2.0);
}

bool TreeViewNode::SortsBefore(const TreeViewNode& other, TreeSort mode) const
{
    switch (mode) {
    case TreeSort::kAlphanumeric:
        return CompareAlphaNumeric(text, other.text);
    case TreeSort::kScale:
        return scale < other.scale;
    case TreeSort::kDistance:
        return DistanceFromOrigin() < other.DistanceFromOrigin();
    case TreeSort::kCreationTime:
        return creation_time < other.creation_time;
    case TreeSort::kModificationTime:
        return modification_time < other.modification_time;
    case TreeSort::kInsertion:
        break;
    }
    return false;
}

std::function<bool(const TreeViewNode*, const TreeViewNode*)> TreeViewNode::SortOrder() const
{
    return [mode = sort_mode, reverse = sort_reverse](const TreeViewNode* a, const TreeViewNode* b) {
        return reverse ? b->SortsBefore(*a, mode) : a->SortsBefore(*b, mode);
    };
}

void TreeViewNode::DropSorted()
{
    sorted.clear();
    for (const auto& child : children) child->DropSorted();
}

void TreeViewNode::setSortMode(TreeSort mode, bool reverse)
{
    const bool announced = model != nullptr && !model->IsRebuilding();
    if (announced) model->BeginSort();
    sort_mode = mode;
    sort_reverse = reverse;
    forEachNode([mode, reverse](TreeViewNode* node) {
        node->sort_mode = mode;
        node->sort_reverse = reverse;
    });
    DropSorted();
    if (announced) model->EndSort();
}

void TreeViewNode::sortChildrenIfNeeded() const
{
    if (sorted.size() == children.size()) return;
    sorted.clear();
    for (const auto& child : children) sorted.push_back(child.get());
    if (sort_mode != TreeSort::kInsertion) {
        std::stable_sort(sorted.begin(), sorted.end(), SortOrder());
    } else if (sort_reverse) {
        std::reverse(sorted.begin(), sorted.end());
    }
    int number = 0;
    for (const TreeViewNode* child : sorted) child->row = number++;
}

TreeViewNode* TreeViewNode::childNode(int row_wanted) const
{
    sortChildrenIfNeeded();
    return row_wanted >= 0 && row_wanted < count() ? sorted[static_cast<std::size_t>(row_wanted)] : nullptr;
}

int TreeViewNode::pos() const
{
    if (parent_node == nullptr) return 0;
    parent_node->sortChildrenIfNeeded();
    return row;
}
