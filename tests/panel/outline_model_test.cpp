#include "outline_rows.h"

#include <panel/gestures/tree_navigator.h>

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

using test::TreeModel;

namespace {

using kyr::panel::OutlineModel;
using kyr::panel::TreeNavigator;

constexpr const char* street = "House\n  Wall\n    Window 1\n    Window 2\n  Roof\n    Tile\n"
                               "Tree\n  Window 10\nLamp\n";

TEST(OutlineModelTest, rowsStartAsTheSceneWishesUntilTheUserSaysOtherwise)
{
    const char* const text = "+a\n  +b\n    c\n  d\n    +e\n      f\n";
    Outline outline(text);
    EXPECT_EQ(outline.text(), "-a .-b ..c .d");
    outline.expand("d");
    EXPECT_EQ(outline.text(), "-a .-b ..c .-d ..-e ...f");
    outline.model.collapseAll();
    outline.expand("a");
    EXPECT_EQ(outline.text(), "-a .b .d");
    auto fresh = TreeModel::parsed("+x\n  y\n");
    outline.expand("a", false);
    outline.scene->insert(outline.find("a"), 1, std::move(fresh));
    outline.expand("a");
    EXPECT_EQ(outline.text(), "-a .b .-x ..y .d") << "what comes after all was closed";
    outline.scene->resetTo(text);
    EXPECT_EQ(outline.text(), "-a .-b ..c .d");
}

TEST(OutlineModelTest, theSceneIsToldWhatIsOpenForTheNextPanel)
{
    Outline outline("a\n  b\n    c\n  d\n    +e\n      f\n");
    outline.expand("a");
    outline.model.setBranchExpanded(outline.find("b"), true);
    outline.filter("e");
    outline.expand("d", false);
    outline.model.finish();
    OutlineModel anew;
    anew.setSourceModel(outline.scene.get());
    EXPECT_EQ(Outline::text(anew), "-a .-b ..c .d") << "what a filter opens is not told";
    outline.filter("");
    outline.model.collapseAll();
    outline.expand("a");
    outline.expand("d");
    outline.model.finish();
    anew.setSourceModel(nullptr);
    anew.setSourceModel(outline.scene.get());
    EXPECT_EQ(Outline::text(anew), "-a .b .-d ..e");

    Outline wide(TreeModel::wide(200, 1));
    wide.model.setSliceBudget(0);
    wide.model.expandAll();
    wide.model.workSlice();
    wide.model.collapseAll();
    wide.model.finish();
    anew.setSourceModel(wide.scene.get());
    EXPECT_EQ(anew.count(), 200) << "nor what was to be told of before";
}

TEST(OutlineModelTest, aLargeBranchComesWithOneSignalAndKeepsItsMarks)
{
    Outline outline("all\nother\n");
    const QModelIndex all = outline.find("all");
    outline.scene->insert(all, 0, TreeModel::wide(100, 2));
    for (int group = 0; group < 100; ++group)
        outline.selection->select(outline.scene->index(1, 0, outline.scene->index(group, 0, all)),
                                  QItemSelectionModel::Select);
    EXPECT_EQ(outline.text(), "all#100 other") << "selected rows that were never shown";
    QSignalSpy insertions(&outline.model, &OutlineModel::rowsInserted);
    outline.model.setBranchExpanded(all, true);
    EXPECT_EQ(insertions.size(), 1);
    ASSERT_EQ(outline.model.count(), 302);
    for (int group = 0; group < 100; ++group) {
        EXPECT_TRUE(outline.model.isRowExpanded(1 + 3 * group));
        EXPECT_FALSE(outline.model.isRowSelected(2 + 3 * group));
        EXPECT_TRUE(outline.model.isRowSelected(3 + 3 * group));
    }
    outline.model.collapseAll();
    insertions.clear();
    EXPECT_EQ(outline.model.reveal(outline.scene->index(1, 0, outline.scene->index(99, 0, all))),
              102);
    EXPECT_EQ(insertions.size(), 1);
    outline.selection->clear();
    EXPECT_EQ(outline.model.selectedCount(), 0);
}

/// Has one child below every row, once it was asked for.
class LazyScene : public TreeModel
{
public:
    bool canFetchMore(const QModelIndex& parent) const override
    {
        return parent.isValid() && item(parent)->children.empty();
    }
    bool hasChildren(const QModelIndex&) const override { return true; }
    void fetchMore(const QModelIndex& parent) override
    {
        insert(parent, 0, named({item(parent)->name + '+'}));
    }
};

TEST(OutlineModelTest, openingARowFetchesWhatIsBelowIt)
{
    auto scene = std::make_unique<LazyScene>();
    scene->insert({}, 0, TreeModel::parsed("a\n"));
    Outline outline(std::move(scene));
    outline.expand("a");
    EXPECT_EQ(outline.text(), "-a .a+");
    outline.model.setBranchExpanded(outline.model.sourceIndex(1), true);
    EXPECT_EQ(outline.text(), "-a .-a+ ..a++") << "fetches once, an endless scene must not hang";
}

struct Arranged
{
    const char* filter;
    const char* arrangement;
    int sortRole;
    bool descending;
    const char* rows;
};

TEST(OutlineModelTest, rowsAreFilteredSortedAndGrouped)
{
    const Arranged cases[] = {
        {"window", "", -1, false, "-House~ .-Wall~ ..-Window 1 ..-Window 2 -Tree~ .-Window 10"},
        {"house", "", -1, false, "-House"},
        {"type:light", "", -1, false, "-Lamp"},
        {"nothing", "", -1, false, ""},
        {"", "", Qt::DisplayRole, true, "Tree Lamp House"},
        {"window", "flat", Qt::DisplayRole, false, "Window 1 Window 2 Window 10"},
        {"", "flat", -1, false, "House Wall Window 1 Window 2 Roof Tile Tree Window 10 Lamp"},
        {"", "flat", TreeModel::TypeRole, false,
         "Lamp House Wall Window 1 Window 2 Roof Tile Tree Window 10"},
        {"t", "type", Qt::DisplayRole, true, "-Mesh .Tree .Tile"},
        {"", "type", -1, false,
         "-Light .Lamp -Mesh .House .Wall .Window 1 .Window 2 .Roof .Tile .Tree .Window 10"},
    };
    for (const Arranged& wanted : cases) {
        Outline outline(street);
        outline.scene->item(outline.find("Lamp"))->type = QStringLiteral("light");
        outline.arrange(wanted.arrangement);
        outline.sort(wanted.sortRole, wanted.descending);
        outline.filter(wanted.filter);
        EXPECT_EQ(outline.text(), wanted.rows) << wanted.filter << wanted.arrangement;
    }
}

TEST(OutlineModelTest, manySiblingsAreSortedInPartsThatKeepTheOrderOfEquals)
{
    TreeModel::Items items =
        TreeModel::wide(2348, 0); // the last part has no other to be merged with
    QStringList wanted;
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i]->type = QString(QChar('a' + int(i * 7919 % 13)));
        wanted += items[i]->type + items[i]->name;
    }
    Outline outline(std::move(items));
    for (const bool descending : {false, true}) {
        outline.sort(TreeModel::TypeRole, descending);
        QStringList shown;
        for (int row = 0; row < outline.model.count(); ++row)
            shown += outline.model.index(row).data(TreeModel::TypeRole).toString() +
                     outline.model.index(row).data().toString();
        QStringList sorted = wanted;
        std::stable_sort(sorted.begin(), sorted.end(), [=](const QString& a, const QString& b) {
            return descending ? b[0] < a[0] : a[0] < b[0];
        });
        EXPECT_TRUE(shown == sorted) << descending;
    }
}

TEST(OutlineModelTest, whatWasOpenBeforeAFilterComesBackAfterIt)
{
    Outline outline(street);
    outline.expand("House");
    outline.expand("Roof");
    const std::string before = "-House .Wall .-Roof ..Tile Tree Lamp";
    EXPECT_EQ(outline.text(), before);
    outline.filter("window");
    outline.expand("Wall", false);
    outline.scene->remove({}, 2, 1);
    EXPECT_EQ(outline.text(), "-House~ .Wall~ -Tree~ .-Window 10") << "kept in a changed scene";
    outline.sort(Qt::DisplayRole, true);
    EXPECT_EQ(outline.text(), "-Tree~ .-Window 10 -House~ .Wall~") << "and in another order";
    outline.filter("window 1");
    EXPECT_EQ(outline.text(), "-Tree~ .-Window 10 -House~ .-Wall~ ..-Window 1") << "found anew";
    outline.filter("");
    outline.arrange("type");
    outline.model.setRowExpanded(0, false);
    outline.scene->remove(outline.find("Tree"), 0, 1);
    EXPECT_EQ(outline.text(), "Mesh");
    outline.arrange("");
    outline.sort(-1);
    EXPECT_EQ(outline.text(), "-House .Wall .-Roof ..Tile Tree");
}

TEST(OutlineModelTest, hiddenRowsStaySelectedAndAreCounted)
{
    Outline outline(street);
    for (const char* name : {"Window 1", "Tile", "Tree"})
        outline.selection->select(outline.find(name), QItemSelectionModel::Select);
    EXPECT_EQ(outline.text(), "House#2 Tree* Lamp");
    outline.filter("window");
    EXPECT_EQ(outline.text(), "-House~ .-Wall~ ..-Window 1* ..-Window 2 -Tree*~ .-Window 10");
    EXPECT_EQ(outline.model.selectedCount(), 3);
    EXPECT_EQ(outline.model.hiddenSelectedCount(), 1);
    EXPECT_EQ(outline.model.rowOf(outline.find("Tile")), -1);
    EXPECT_EQ(outline.model.reveal(outline.find("Tile")), -1);
    EXPECT_EQ(outline.model.nearestRow(outline.find("Tile")), 0);
    outline.filter("");
    EXPECT_EQ(outline.model.hiddenSelectedCount(), 0);
}

TEST(OutlineModelTest, groupsTakeTheFocusAndLeaveTheSelection)
{
    Outline outline(street);
    outline.scene->item(outline.find("Lamp"))->type = QStringLiteral("light");
    TreeNavigator navigator;
    navigator.setOutline(&outline.model);
    outline.arrange("type");
    navigator.press(1, Qt::NoModifier);
    navigator.key(Qt::Key_Down, Qt::NoModifier, {});
    EXPECT_EQ(navigator.currentRow(), 2);
    EXPECT_TRUE(outline.model.isRowSelected(1));
    navigator.key(Qt::Key_Left, Qt::NoModifier, {});
    EXPECT_EQ(outline.text(), "-Light .Lamp* Mesh");
    navigator.key(Qt::Key_Up, Qt::NoModifier, {});
    EXPECT_EQ(navigator.currentRow(), 1);
    navigator.key(Qt::Key_End, Qt::ShiftModifier, {});
    EXPECT_EQ(outline.selection->selectedIndexes().size(), 1) << "a group is no object";
}

TEST(OutlineModelTest, fewChangesAreSignalledOneByOneAndManyComeWithAPass)
{
    Outline outline(street);
    outline.filter("window");
    QSignalSpy resets(&outline.model, &OutlineModel::modelReset);
    QSignalSpy passes(&outline.model, &OutlineModel::rearranged);
    outline.scene->setData(outline.find("Lamp"), QStringLiteral("Window lamp"), Qt::EditRole);
    EXPECT_EQ(outline.model.count(), 7);
    outline.scene->setData(outline.find("Window 10"), QStringLiteral("Leaf"), Qt::EditRole);
    EXPECT_EQ(outline.text(), "-House~ .-Wall~ ..-Window 1 ..-Window 2 -Window lamp");
    EXPECT_FALSE(outline.model.isWorking());
    for (int part = 0; part < 3; ++part)
        outline.scene->insert({}, part, TreeModel::wide(100, 1));
    EXPECT_TRUE(outline.model.isWorking());
    outline.scene->remove({}, 300, 1);
    EXPECT_EQ(outline.text(), "-Window lamp") << "what is gone does not show";
    outline.model.finish();
    EXPECT_EQ(outline.text(), "-Window lamp");
    EXPECT_EQ(resets.size() + passes.size(), 0) << "nothing was found";
}

TEST(OutlineModelTest, oldRowsShowAndChangeWhileTheNextAreWorkedOut)
{
    Outline outline(TreeModel::wide(3000, 2));
    int found = 1;
    outline.model.setSliceBudget(0);
    outline.predicate.setCondition(
        "half", [&found](const QModelIndex& row) { return row.row() % 2 == found; });
    const auto workABit = [&] {
        outline.model.workSlice();
        return outline.model.isWorking();
    };
    ASSERT_TRUE(workABit());
    EXPECT_EQ(outline.model.count(), 3000) << "the rows of before";
    const QModelIndex first = outline.scene->index(0, 0);
    outline.model.setExpanded(first, true);
    outline.selection->select(outline.scene->index(0, 0, first), QItemSelectionModel::Select);
    ASSERT_TRUE(workABit());
    outline.scene->remove({}, 2998, 1);
    QSignalSpy passes(&outline.model, &OutlineModel::rearranged);
    for (found = 0; passes.isEmpty() && workABit();)
        Q_EMIT outline.scene->dataChanged(first, first.siblingAtRow(2900));
    EXPECT_EQ(passes.size(), 1) << "though all changes all the time";
    while (workABit()) {
    }
    EXPECT_EQ(outline.model.count(), 2999 + 2999) << "each with one of its children";
    EXPECT_TRUE(outline.model.isRowSelected(1));
    EXPECT_FALSE(outline.model.isRowSelected(2));
    outline.predicate.setCondition("half", nullptr);
    EXPECT_EQ(outline.model.count(), 2999 + 2) << "what was opened meanwhile is open";
}

TEST(OutlineModelTest, survivesASceneOrAFilterThatGoes)
{
    Outline filtered(street);
    {
        lumo::datamodels::proxy::TextPredicate passing;
        passing.setText(QStringLiteral("roof"));
        filtered.model.setPredicate(&passing);
        filtered.model.finish();
        EXPECT_EQ(filtered.text(), "-House~ .-Roof");
    }
    filtered.model.finish();
    EXPECT_EQ(filtered.text(), "House Tree Lamp");
    for (const char* filter : {"", "window"}) {
        Outline outline(street);
        outline.filter(filter);
        outline.scene.reset();
        EXPECT_EQ(outline.model.count(), 0);
        EXPECT_EQ(outline.model.sourceModel(), nullptr);
        outline.filter("roof");
    }
}

} // namespace
