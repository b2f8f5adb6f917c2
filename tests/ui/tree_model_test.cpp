#include "ui/tree_model.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace {

/// The rows below `parent` in the order of the view: "b c(d)".
std::string Rows(const CTreeModel& model, const QModelIndex& parent = {})
{
    std::string text;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (row > 0) text += ' ';
        text += model.data(index, CTreeModel::kTextRole).toString().toStdString();
        if (model.rowCount(index) > 0) text += '(' + Rows(model, index) + ')';
    }
    return text;
}

class Tree : public testing::Test {
protected:
    CTreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    TreeViewNode& root = model.root();
};

TEST_F(Tree, GivesEveryFieldByItsRole)
{
    TreeViewNode* node = root.addChild("text", true);
    node->subtext = "sub";
    node->icon = "qrc:/map.svg";
    node->button = {"Get", "Drop"};
    node->appearance = Appearance::kCurrent;
    node->setChecked(Qt::PartiallyChecked);
    const QModelIndex index = model.getIndex(node);
    const QVariant expected[] = {"text", "sub", "qrc:/map.svg", true, 1, QVariantList{"Get", "Drop"}, 5};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(model.data(index, Qt::UserRole + i), expected[i]) << "role " << Qt::UserRole + i;
    }
    EXPECT_EQ(model.roleNames().value(256 + 4), "checkedState");
    EXPECT_FALSE(model.data(index, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.data(index, Qt::UserRole + 7).isValid());
    EXPECT_FALSE(model.data({}, CTreeModel::kTextRole).isValid());
    EXPECT_FALSE(model.getIndex(&root).isValid());
    const TreeViewNode stranger("elsewhere");
    EXPECT_FALSE(model.getIndex(&stranger).isValid());
}

TEST_F(Tree, CheckStatesRunBothWays)
{
    TreeViewNode* folder = root.addChild("folder", true);
    TreeViewNode* a = folder->addChild("a", true);
    TreeViewNode* inner = folder->addChild("inner", true);
    TreeViewNode* b = inner->addChild("b", true);
    TreeViewNode* c = inner->addChild("c", true);
    folder->addChild("without a box");
    a->changedChecked(Qt::Checked);
    EXPECT_EQ(folder->checkState(), Qt::PartiallyChecked) << "one of two";
    b->changedChecked(Qt::Checked);
    EXPECT_EQ(inner->checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(folder->checkState(), Qt::PartiallyChecked) << "a partly checked child is neither";
    c->changedChecked(Qt::Checked);
    EXPECT_EQ(folder->checkState(), Qt::Checked) << "nodes without a box do not count";
    folder->changedChecked(Qt::Unchecked);
    EXPECT_EQ(a->checkState(), Qt::Unchecked);
    EXPECT_EQ(c->checkState(), Qt::Unchecked);
    // From the leaves, as after a rebuild.
    b->setChecked(Qt::Checked);
    root.setCheckedFromChildren();
    EXPECT_EQ(inner->checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(folder->checkState(), Qt::PartiallyChecked);
}

TEST_F(Tree, ACheckByTheUserRepaintsChildrenAndParents)
{
    TreeViewNode* folder = root.addChild("folder", true);
    TreeViewNode* middle = folder->addChild("middle", true);
    middle->addChild("leaf", true);
    QStringList repainted;
    QObject::connect(&model, &CTreeModel::dataChanged, [&](const QModelIndex& index) {
        repainted += model.data(index, CTreeModel::kTextRole).toString();
    });
    int told = 0;
    QObject::connect(&model, &CTreeModel::checkedItem, [&] { ++told; });
    model.onToggleCheckstate(model.getIndex(middle));
    repainted.sort();
    EXPECT_EQ(repainted.join(' '), "folder leaf middle");
    EXPECT_EQ(folder->checkState(), Qt::Checked);
    EXPECT_EQ(told, 1);
    model.onCheckedItem({}, Qt::Checked);
    EXPECT_EQ(told, 1);
}

TEST_F(Tree, ChangesShowAtOnceInTheSortedPlace)
{
    TreeViewNode* folder = root.addChild("folder");
    folder->addChild("m10");
    folder->addChild("m9");
    EXPECT_EQ(Rows(model), "folder(m10 m9)") << "in the order of insertion";
    const QPersistentModelIndex ten = model.getIndex(folder->childNode(0));
    root.setSortMode(TreeSort::kAlphanumeric);
    EXPECT_EQ(ten.row(), 1) << "what the view holds moves along";
    folder->addChild("m2");
    TreeViewNode* ninety = folder->addChild("m9b");
    EXPECT_EQ(Rows(model), "folder(m2 m9 m9b m10)");
    EXPECT_EQ(ninety->pos(), 2);
    root.setSortMode(TreeSort::kAlphanumeric, true);
    EXPECT_EQ(Rows(model), "folder(m10 m9b m9 m2)");
    EXPECT_EQ(folder->takeChild(ninety)->text, "m9b");
    EXPECT_EQ(folder->takeChild(ninety), nullptr);
    root.setSortMode(TreeSort::kInsertion);
    EXPECT_EQ(Rows(model), "folder(m10 m9 m2)");
    folder->clear();
    EXPECT_EQ(Rows(model), "folder");
}

struct SortCase {
    TreeSort mode;
    bool reverse;
    const char* rows;
};
TEST_F(Tree, SortsByEveryKey)
{
    const char* names[] = {"near", "far", "nowhere"};
    const double keys[][4] = {{3, 20, 100, 10}, {1, 30, 200, 40}, {2, 10, 300, 0}};
    for (int i = 0; i < 3; ++i) {
        TreeViewNode* node = root.addChild(names[i]);
        node->set_scale(keys[i][0]);
        node->set_creation_time(keys[i][1]);
        node->set_modification_time(keys[i][2]);
        if (i < 2) node->setBounds({0, 0, keys[i][3], keys[i][3]});
    }
    TreeViewNode::SetSortOrigin(11, 0);
    constexpr SortCase cases[] = {
        {TreeSort::kScale, false, "far nowhere near"},        {TreeSort::kDistance, false, "near far nowhere"},
        {TreeSort::kCreationTime, false, "nowhere near far"}, {TreeSort::kModificationTime, true, "nowhere far near"},
        {TreeSort::kAlphanumeric, false, "far near nowhere"}, {TreeSort::kInsertion, true, "nowhere far near"},
    };
    for (const SortCase& tested : cases) {
        root.setSortMode(tested.mode, tested.reverse);
        EXPECT_EQ(Rows(model), tested.rows);
    }
    // The keys of a shown list change: it is sorted when asked to.
    root.setSortMode(TreeSort::kScale);
    root.childNode(0)->set_scale(9);
    model.sort_children_of_expanded_items();
    EXPECT_EQ(Rows(model), "nowhere near far");
}

TEST_F(Tree, ARebuildKeepsWhatWasOpenAndStillExists)
{
    const auto build = [this](bool with_old) {
        root.InsertPath({"Marks", "Harbours"})->addChild("leaf");
        root.InsertPath({"Routes"})->addChild("leaf");
        if (with_old) root.InsertPath({"Old"})->addChild("leaf");
    };
    build(true);
    EXPECT_EQ(root.count(), 3);
    EXPECT_TRUE(root.ExpandSegmented("Marks|Harbours", '|'));
    EXPECT_TRUE(root.ExpandSegmented("Old", '|'));
    EXPECT_FALSE(root.ExpandSegmented("Marks|Nothing", '|'));
    const auto outline = root.getExpandedTree();
    root.clear();
    EXPECT_EQ(model.rowCount(), 0);
    build(false);
    EXPECT_EQ(model.rowCount(), 0) << "nothing is shown before the end of a rebuild";
    root.setExpandedTree(outline.get());
    QStringList opened;
    QObject::connect(&model, &CTreeModel::expandNode,
                     [&](const QModelIndex& index) { opened += model.data(index, CTreeModel::kTextRole).toString(); });
    model.setExpandedAndSelected();
    EXPECT_EQ(Rows(model), "Marks(Harbours(leaf)) Routes(leaf)");
    EXPECT_EQ(opened.join(' '), "Marks Harbours");
    EXPECT_EQ(TreeViewNode("empty").getExpandedTree(), nullptr);
}

TEST_F(Tree, SelectionIsTheSameInNodesAndView)
{
    TreeViewNode* folder = root.addChild("folder");
    TreeViewNode* nodes[4];
    for (TreeViewNode*& node : nodes) node = folder->addChild("n" + std::to_string(&node - nodes));
    const auto selected = [&] {
        std::string text;
        for (const TreeViewNode* node : nodes) {
            const bool in_view = model.selectionModel()->isSelected(model.getIndex(node));
            text += node->selected != in_view ? '?' : in_view ? 'x' : '-';
        }
        return text;
    };
    model.selectRange(model.getIndex(nodes[2]), model.getIndex(nodes[1]));
    EXPECT_EQ(selected(), "-xx-");
    nodes[3]->select();
    nodes[1]->toggleSelection();
    EXPECT_EQ(selected(), "--xx");
    model.selectRange(model.getIndex(nodes[0]), model.getIndex(folder));
    EXPECT_EQ(selected(), "--xx") << "a range lies in one folder";
    folder->takeChild(nodes[2]);
    nodes[2] = folder->addChild("new");
    EXPECT_EQ(selected(), "---x");
    root.deSelectAll();
    EXPECT_EQ(selected(), "----");
    nodes[0]->select();
    model.expandParentsOfSelectedNodes();
    EXPECT_TRUE(folder->expanded);
    model.setRoot(std::make_unique<TreeViewNode>());
    EXPECT_FALSE(model.selectionModel()->hasSelection());
}

TEST_F(Tree, ShortListsAreFlattened)
{
    root.InsertPath({"Goto"})->addChild("Distance");
    root.InsertPath({"Instruments", "Timer"})->addChild("Start");
    root.addChild("Plain");
    root.flatten_tree(':');
    EXPECT_EQ(Rows(model), "Goto:Distance Instruments:Timer:Start Plain");
    EXPECT_TRUE(root.childNode(1)->isTopLevel());
}

TEST_F(Tree, WalksFindDataAndLeaves)
{
    int value = 0;
    TreeViewNode* folder = root.addChild("folder", false, &value);
    folder->addChild("a", false, &value);
    folder->addChild("b");
    std::string data;
    std::string leaves;
    root.forEachChildWithData([&](TreeViewNode* node) { data += node->text + ' '; });
    root.forEachLeafNode([&](TreeViewNode* node) { leaves += node->text + ' '; });
    EXPECT_EQ(data, "folder a ");
    EXPECT_EQ(leaves, "a b ");
}

} // namespace
