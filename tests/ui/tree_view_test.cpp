#include "test_dialogs.h"
#include "ui_window.h"

#include "ui/tree_model.h"
#include "ui/zt_metrics.h"

#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

class TreeView : public CUiTest {
protected:
    void SetUp() override
    {
        CUiTest::SetUp();
        auto* dialog = CZTDialog::ShowDialog<CDlg_list>({});
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(WaitOpened());
        view = Find("tree");
        model = dialog->findChild<CTreeModel*>(QStringLiteral("model"));
        ASSERT_NE(model, nullptr);
        TreeViewNode& root = model->root();
        root.clear();
        TreeViewNode* folder = root.addChild("Folder", true);
        folder->addChild("<i>First</i>", true)->subtext = "below";
        folder->addChild("Second", true)->button = {"Get"};
        root.addChild("Other")->icon = "qrc:/map.svg";
        model->setExpandedAndSelected();
        ASSERT_TRUE(WaitRows(2));
    }
    void TearDown() override
    {
        NewestDialog<CZTDialog>()->closeDialog(0);
        EXPECT_TRUE(WaitNoDialog());
        CUiTest::TearDown();
    }
    bool WaitRows(int rows)
    {
        return WaitFor([&] { return view->property("rows").toInt() == rows && Row(rows - 1) != nullptr; });
    }
    QQuickItem* Row(int row) const
    {
        for (QQuickItem* item : view->property("contentItem").value<QQuickItem*>()->childItems()) {
            if (item->isVisible() && item->property("depth").isValid() && item->property("row").toInt() == row)
                return item;
        }
        return nullptr;
    }
    std::string Text(int row) const { return Row(row)->property("text").toString().toStdString(); }
    TreeViewNode* Folder() const { return model->root().childNode(0); }

    QQuickItem* view = nullptr;
    CTreeModel* model = nullptr;
};

TEST_F(TreeView, FoldersOpenByTheirArrowAndByKeys)
{
    Click(FindIn(Row(0), "expander"));
    ASSERT_TRUE(WaitRows(4));
    EXPECT_TRUE(Folder()->expanded);
    EXPECT_EQ(Text(1), "<i>First</i>");
    EXPECT_GE(Row(0)->height(), CZTMetrics().touchTarget());
    EXPECT_EQ(Row(0)->width(), view->width());
    view->forceActiveFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Left}) Key(key);
    ASSERT_TRUE(WaitRows(2));
    EXPECT_FALSE(Folder()->expanded);
    Key(Qt::Key_Right);
    EXPECT_TRUE(WaitRows(4));
}

TEST_F(TreeView, ARebuildOpensAgain)
{
    Click(FindIn(Row(0), "expander"));
    ASSERT_TRUE(WaitRows(4));
    const auto outline = model->root().getExpandedTree();
    model->root().clear();
    for (const char* name : {"New", "Folder"}) model->root().addChild(name)->addChild("child")->addChild("leaf");
    model->root().setExpandedTree(outline.get());
    model->root().childNode(1)->childNode(0)->expanded = true;
    model->setExpandedAndSelected();
    ASSERT_TRUE(WaitFor([this] { return Row(3) != nullptr && Text(3) == "leaf"; }));
    EXPECT_TRUE(model->expandCategory("New|child"));
    EXPECT_TRUE(WaitRows(6));
}

TEST_F(TreeView, CheckBoxesFollowTheirChildren)
{
    Click(FindIn(Row(0), "expander"));
    ASSERT_TRUE(WaitRows(4));
    Click(FindIn(Row(1), "checkBox"));
    EXPECT_EQ(Row(0)->property("checkedState").toInt(), Qt::PartiallyChecked);
    EXPECT_EQ(FindIn(Row(0), "checkBox")->property("checkState").toInt(), Qt::PartiallyChecked);
    Touch(FindIn(Row(0), "checkBox"));
    EXPECT_EQ(FindIn(Row(2), "checkBox")->property("checkState").toInt(), Qt::Checked);
    EXPECT_EQ(FindIn(Row(3), "checkBox"), nullptr);
    view->forceActiveFocus();
    Key(Qt::Key_Space);
    EXPECT_EQ(Folder()->checkState(), Qt::Unchecked);
}

TEST_F(TreeView, ClicksAreTold)
{
    model->set_current_selection();
    QSignalSpy clicked(model, &CTreeModel::clickedItem);
    QSignalSpy menu(model, &CTreeModel::rightClickedItem);
    QSignalSpy opened(model, &CTreeModel::doubleClickedItem);
    QSignalSpy button(model, &CTreeModel::clickedItemButton);
    Click(FindIn(Row(0), "expander"));
    ASSERT_TRUE(WaitRows(4));
    Click(Row(3));
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(model->getNode(clicked[0][0].toModelIndex())->text, "Other");
    EXPECT_TRUE(model->root().childNode(1)->selected);
    EXPECT_TRUE(Row(3)->property("selected").toBool());
    Click(Row(3), Qt::RightButton);
    ASSERT_EQ(menu.size(), 1);
    EXPECT_EQ(menu[0][1].value<QQuickItem*>(), Row(3));
    Click(FindIn(Row(2), "button0"));
    ASSERT_EQ(button.size(), 1);
    EXPECT_EQ(button[0][1].toInt(), 0);
    EXPECT_EQ(clicked.size(), 1) << "a button is not the row";
    QTest::mouseDClick(ui->window, Qt::LeftButton, {}, Middle(Row(3)));
    EXPECT_EQ(opened.size(), 1);
    view->setProperty("multiSelect", true);
    Click(Row(1));
    EXPECT_TRUE(model->root().childNode(1)->selected) << "a further row joins";
    view->forceActiveFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) Key(key);
    EXPECT_EQ(model->getNode(clicked.last()[0].toModelIndex())->text, "Second");
    Key(Qt::Key_Menu);
    EXPECT_EQ(menu.size(), 2);
}

TEST_F(TreeView, TextsAreShownAsTheyStandAndFitASmallWindow)
{
    model->root().addChild(std::string(500, 'W'))->button = {"A button", "Another"};
    Click(FindIn(Row(0), "expander"));
    Resize(480, 800);
    ASSERT_TRUE(WaitRows(5));
    ASSERT_TRUE(WaitFor([this] { return Row(4)->width() == 480; })) << "full page";
    for (const char* name : {"button0", "button1"}) {
        EXPECT_LE(InWindow(FindIn(Row(4), name)).right(), 480) << name;
    }
    EXPECT_EQ(FindIn(Row(1), "text")->property("textFormat").toInt(), static_cast<int>(Qt::PlainText));
}

} // namespace
