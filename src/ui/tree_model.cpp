#include "ui/tree_model.h"

#include <algorithm>

namespace {

QVariant ButtonTexts(const TreeViewNode& node)
{
    QVariantList texts;
    for (const std::string& text : node.button) texts.append(QString::fromStdString(text));
    return texts;
}

} // namespace

CTreeModel::CTreeModel(QObject* parent)
    : QAbstractItemModel(parent), root_node(std::make_unique<TreeViewNode>()), selection(this)
{
    root_node->setModel(this);
    connect(&selection, &QItemSelectionModel::selectionChanged, this, &CTreeModel::StoreSelection);
}

CTreeModel::~CTreeModel()
{
    disconnect(&selection, nullptr, this, nullptr);
}

void CTreeModel::setRoot(std::unique_ptr<TreeViewNode> root)
{
    BeginRebuild();
    root_node = std::move(root);
    root_node->setModel(this);
    setExpandedAndSelected();
}

TreeViewNode* CTreeModel::getNode(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<TreeViewNode*>(index.internalPointer()) : root_node.get();
}

QModelIndex CTreeModel::getIndex(const TreeViewNode* node) const
{
    if (node == nullptr || node->parent() == nullptr || node->getModel() != this) return {};
    return createIndex(node->pos(), 0, node);
}

QModelIndex CTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || rebuilding) return {};
    TreeViewNode* node = getNode(parent)->childNode(row);
    return node != nullptr ? createIndex(row, 0, node) : QModelIndex();
}

QModelIndex CTreeModel::parent(const QModelIndex& index) const
{
    return index.isValid() && !rebuilding ? getIndex(getNode(index)->parent()) : QModelIndex();
}

int CTreeModel::rowCount(const QModelIndex& parent) const
{
    return rebuilding || parent.column() > 0 ? 0 : getNode(parent)->count();
}

int CTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant CTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || rebuilding) return {};
    const TreeViewNode& node = *getNode(index);
    switch (role) {
    case kTextRole:
        return QString::fromStdString(node.text);
    case kSubtextRole:
        return QString::fromStdString(node.subtext);
    case kIconRole:
        return QString::fromStdString(node.icon);
    case kCheckboxRole:
        return node.checkbox;
    case kCheckedStateRole:
        return static_cast<int>(node.checkState());
    case kButtonRole:
        return ButtonTexts(node);
    case kAppearanceRole:
        return node.appearance;
    default:
        return {};
    }
}

Qt::ItemFlags CTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    switch (getNode(index)->appearance) {
    case Appearance::kDisabled:
    case Appearance::kSeparator:
        return Qt::NoItemFlags;
    default:
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    }
}

QHash<int, QByteArray> CTreeModel::roleNames() const
{
    return {{kTextRole, "text"},
            {kSubtextRole, "subtext"},
            {kIconRole, "icon"},
            {kCheckboxRole, "checkbox"},
            {kButtonRole, "button"},
            {kCheckedStateRole, "checkedState"},
            {kAppearanceRole, "appearance"}};
}

void CTreeModel::onExpanded(const QModelIndex& index, bool expanded)
{
    if (!index.isValid()) return;
    TreeViewNode* node = getNode(index);
    node->expanded = expanded;
    if (!expanded) return;
    for (const auto& child : node->childNodes()) {
        if (child->expanded) emit expandNode(getIndex(child.get()));
    }
}

void CTreeModel::onCheckedItem(const QModelIndex& index, int state)
{
    if (!index.isValid()) return;
    TreeViewNode* node = getNode(index);
    node->changedChecked(static_cast<Qt::CheckState>(std::clamp(state, 0, 2)));
    node->forEachNode([this](TreeViewNode* below) { emitDataChanged(below, kCheckedStateRole); });
    for (; node != nullptr; node = node->parent()) emitDataChanged(node, kCheckedStateRole);
    emit checkedItem(index);
}

void CTreeModel::onToggleCheckstate(const QModelIndex& index)
{
    if (!index.isValid()) return;
    onCheckedItem(index, getNode(index)->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

void CTreeModel::selectRange(const QModelIndex& a, const QModelIndex& b)
{
    if (!a.isValid() || !b.isValid() || a.parent() != b.parent()) return;
    const bool in_order = a.row() <= b.row();
    selection.select(QItemSelection(in_order ? a : b, in_order ? b : a), QItemSelectionModel::ClearAndSelect);
}

bool CTreeModel::expandCategory(const QString& path)
{
    if (!root_node->ExpandSegmented(path.toStdString(), '|')) return false;
    set_expanded_items();
    return true;
}

void CTreeModel::set_expanded_items()
{
    root_node->forEachNode([this](TreeViewNode* node) {
        if (node->expanded && node->count() > 0) emit expandNode(getIndex(node));
    });
}

void CTreeModel::set_current_selection()
{
    QItemSelection wanted;
    root_node->forEachNode([this, &wanted](TreeViewNode* node) {
        if (node->selected) wanted.select(getIndex(node), getIndex(node));
    });
    applying = true;
    selection.select(wanted, QItemSelectionModel::ClearAndSelect);
    applying = false;
}

void CTreeModel::setExpandedAndSelected()
{
    if (rebuilding) {
        rebuilding = false;
        endResetModel();
    }
    set_expanded_items();
    set_current_selection();
}

void CTreeModel::setCheckedStates()
{
    root_node->setCheckedFromChildren();
    root_node->forEachNode([this](TreeViewNode* node) { emitDataChanged(node, kCheckedStateRole); });
}

void CTreeModel::expandParentsOfSelectedNodes()
{
    root_node->expandParentsOfSelected();
    set_expanded_items();
}

void CTreeModel::emitDataChanged(const TreeViewNode* node, int role)
{
    const QModelIndex index = rebuilding ? QModelIndex() : getIndex(node);
    if (index.isValid()) emit dataChanged(index, index, {role});
}

void CTreeModel::sort_children_of_expanded_items()
{
    if (rebuilding) return;
    BeginSort();
    root_node->DropSorted();
    EndSort();
}

void CTreeModel::BeginRebuild()
{
    if (rebuilding) return;
    beginResetModel();
    rebuilding = true;
}

void CTreeModel::BeginInsert(const TreeViewNode* parent_node, int row)
{
    beginInsertRows(getIndex(parent_node), row, row);
}

void CTreeModel::BeginRemove(const TreeViewNode* parent_node, int row)
{
    beginRemoveRows(getIndex(parent_node), row, row);
}

void CTreeModel::BeginSort()
{
    emit layoutAboutToBeChanged();
    moving.clear();
    for (const QModelIndex& index : persistentIndexList()) moving.emplace_back(index, getNode(index));
}

void CTreeModel::EndSort()
{
    for (const auto& [index, node] : moving) changePersistentIndex(index, getIndex(node));
    moving.clear();
    emit layoutChanged();
}

void CTreeModel::NodeSelected(const TreeViewNode* node, bool selected)
{
    const QModelIndex index = rebuilding || applying ? QModelIndex() : getIndex(node);
    if (!index.isValid()) return;
    applying = true;
    selection.select(index, selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
    applying = false;
}

void CTreeModel::StoreSelection(const QItemSelection& now, const QItemSelection& before)
{
    if (applying) return;
    for (const QModelIndex& index : before.indexes()) getNode(index)->selected = false;
    for (const QModelIndex& index : now.indexes()) getNode(index)->selected = true;
}
