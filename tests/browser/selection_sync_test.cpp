#include "browser_fixture.h"

#include <host/core/profiler.h>

#include <QCoreApplication>
#include <QUndoStack>

#include <stdexcept>

using test::BrowserTest;
using test::names;

TEST_F(BrowserTest, cellsArePushedRangeByRangeWithoutThoseThatCannotBeSelected)
{
    create("a\nb\nc\nd", 2);
    model->item(model->find("c"))->flags = Qt::ItemIsEnabled;
    selection.takeLog();
    browser->selectionModel()->select(QItemSelection(model->index(1, 0), model->index(3, 1)),
                                      QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ("set(b b d d) ", selection.takeLog());
    EXPECT_EQ("b d", names(selection.objects()));
}

TEST_F(BrowserTest, aNotificationFromInsideThePushIsNoEcho)
{
    create("a\nb");
    selectRow("a");
    selection.onSet = [this] {
        selection.RecordedAssetSelection::setSelection(objects({"b"}), false);
    };
    selection.takeLog();
    selectRow("a", QItemSelectionModel::Deselect);
    EXPECT_EQ("", selectedRows());
    EXPECT_EQ("set() ", selection.takeLog());
}

TEST_F(BrowserTest, aThrowingEditorLeavesTheSynchronisationWorking)
{
    create("a\nb");
    selection.onSet = [] { throw std::runtime_error("refused"); };
    EXPECT_THROW(selectRow("a"), std::runtime_error);
    EXPECT_FALSE(changes->isScopeOpen());
    selection.onSet = nullptr;
    selectRow("b");
    EXPECT_EQ("b", names(selection.objects()));
}

TEST_F(BrowserTest, resetsAndRelayoutsRestoreTheSelectionFromTheEventLoop)
{
    create("a\nb\nc");
    selection.setSelection(objects({"c", "a"}), false);
    selection.takeLog();
    int rebuilds = 0;
    QObject::connect(
        browser->selectionModel(), &QItemSelectionModel::selectionChanged, model.get(),
        [&rebuilds](const QItemSelection& selected) { rebuilds += selected.isEmpty() ? 0 : 1; });
    Q_EMIT model->layoutChanged();
    Q_EMIT model->layoutChanged();
    EXPECT_EQ(0, rebuilds);
    QCoreApplication::processEvents();
    EXPECT_EQ(2, rebuilds);
    EXPECT_EQ("c a", selectedRows());

    model->resetTo("a\nb\nc");
    EXPECT_EQ("", selectedRows());
    selection.RecordedAssetSelection::setSelection(objects({"b"}), false);
    browser->selectionModel()->reset();
    EXPECT_EQ("", selectedRows());
    QCoreApplication::processEvents();
    EXPECT_EQ("b", selectedRows());
    EXPECT_EQ("", selection.takeLog());
}

// What an undo of a removal does: the same object comes back in a new row.
TEST_F(BrowserTest, insertedRowsAreSelectedWhenTheirObjectsAre)
{
    create("a\nb\nc");
    IAssetSelection::Objects wanted = objects({"c", "b"});
    const std::shared_ptr<kyr::IReflected> kept = model->object("b").topLevel();
    model->remove({}, 1, 1);
    selection.setSelection(wanted, false);
    selection.takeLog();
    model->insertObjects({}, 0, {std::make_shared<test::NamedObject>("x"), kept});
    EXPECT_EQ("c b", selectedRows());
    EXPECT_EQ("", selection.takeLog());
}

TEST_F(BrowserTest, unbalancedRowSignalsAreReportedAndSynchronisedAllTheSame)
{
    create("a\nb\nc");
    selection.setSelection(objects({"b"}), false);
    browser->selectionModel()->reset();
    messages.take();
    model->emitUnannouncedInsertion({}, 0, 2);
    const std::vector<std::string> reports = messages.take();
    ASSERT_EQ(1u, reports.size());
    EXPECT_EQ(0u, reports[0].find("! ASSERTION FAILED: m_rowsUpdates > 0\r\nscene_browser_data("));
    EXPECT_EQ("b", selectedRows());

    // The counter wrapped: hovering is off until a matching announcement comes.
    selection.takeLog();
    browser->syncHover(model->find("a"));
    EXPECT_EQ("", selection.takeLog());
    QMetaObject::invokeMethod(model.get(), "rowsAboutToBeInserted", Q_ARG(QModelIndex, {}),
                              Q_ARG(int, 0), Q_ARG(int, 0));
    browser->syncHover(model->find("a"));
    EXPECT_EQ("hover(a) ", selection.takeLog());
}

TEST_F(BrowserTest, selectAllListsEachParentAfterItsDescendants)
{
    create("a\n  b\n  c\nd");
    selection.takeLog();
    browser->selectAll();
    EXPECT_EQ("set(b c a d) ", selection.takeLog());
    EXPECT_EQ("b c a d", selectedRows());
    EXPECT_EQ(2, browser->selectionModel()->selection().size());

    create("");
    selection.takeLog();
    browser->selectAll();
    EXPECT_EQ("", selection.takeLog());
}

namespace {

std::string profiled;

} // namespace

TEST_F(BrowserTest, theRebuildIsProfiledOnEveryWayOut)
{
    create("a");
    profiled.clear();
    vex::Profiler::g_hooks.scopeBegin = [](const char* name) { profiled += name; };
    vex::Profiler::g_hooks.scopeEnd = [] { profiled += ";"; };
    selection.setSelection(objects({"a"}), false);
    selectRow("a", QItemSelectionModel::Clear);
    vex::Profiler::g_hooks = {};
    const std::string one = "SceneBrowserData::updateSelectionModelFromAssetSelection;";
    EXPECT_EQ(one + one, profiled);
}
