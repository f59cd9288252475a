#include "browser_fixture.h"

#include <QCoreApplication>

using test::BrowserTest;

namespace {

class FakeMenu : public lumo::IPopupMenu
{
public:
    void addAction(lumo::Action* action, const std::string& text) override
    {
        actions.push_back(action);
        log += action->info().identifier + "(" + text + ") ";
        test::hostIsCalled();
    }
    void addSeparator() override { log += "| "; }
    bool isEmpty() const override
    {
        test::hostIsCalled();
        return log.empty();
    }
    void popup() override
    {
        log += "shown";
        test::hostIsCalled();
    }

    std::vector<lumo::Action*> actions;
    std::string log;
};

class FakeProvider : public lumo::IPopupMenuProvider
{
public:
    lumo::IPopupMenu* popupMenu() override
    {
        test::hostIsCalled();
        return menu;
    }
    FakeMenu* menu = nullptr;
};

constexpr const char* bothEntries = "scene_browser_expand_all() scene_browser_collapse_all() shown";

} // namespace

TEST_F(BrowserTest, theTreeIsExpandableWhenAnyTopLevelRowHasChildren)
{
    for (const auto& [tree, expandable] :
         {std::pair("", false), {"a\nb", false}, {"a\nb\n  c", true}, {"a\n  b\nc", true}}) {
        create(tree);
        EXPECT_EQ(expandable, browser->checkExpandable()) << tree;
    }
}

TEST_F(BrowserTest, theContextMenuGetsWhatTheTreeCanDo)
{
    auto provider = std::make_shared<FakeProvider>();
    const auto requested = [&](const char* tree, const char* before) {
        create(tree);
        browser->setPopupMenuProvider(provider);
        FakeMenu menu;
        menu.log = before;
        provider->menu = &menu;
        browser->requestMenu();
        provider->menu = nullptr;
        browser->requestMenu();
        return menu.log;
    };
    EXPECT_EQ(bothEntries, requested("a\n  b", ""));
    EXPECT_EQ(std::string("own | ") + bothEntries, requested("a\n  b", "own "));
    EXPECT_EQ("shown", requested("a\nb", ""));
    EXPECT_EQ("own shown", requested("a\nb", "own "));

    browser->setPopupMenuProvider(nullptr);
    EXPECT_EQ(1, provider.use_count());
    browser->requestMenu();
}

TEST_F(BrowserTest, commandsAndActionsAskTheViewOnce)
{
    create("a\n  b");
    std::string log;
    QObject::connect(browser.get(), &SceneBrowserData::expandAllRequested, [&] { log += "e"; });
    QObject::connect(browser.get(), &SceneBrowserData::collapseAllRequested, [&] { log += "c"; });
    browser->expandAll();
    browser->collapseAll();
    EXPECT_EQ("ec", log);

    FakeMenu menu;
    auto provider = std::make_shared<FakeProvider>();
    provider->menu = &menu;
    browser->setPopupMenuProvider(provider);
    browser->requestMenu();
    ASSERT_EQ(2u, menu.actions.size());
    menu.actions[0]->trigger();
    menu.actions[1]->trigger();
    EXPECT_EQ("ecec", log);
    EXPECT_EQ("Expand All", menu.actions[0]->info().text);
    EXPECT_EQ("Kelvane/Scene Browser", menu.actions[1]->info().groupPath);

    SceneBrowserData second(assetModel.get(), nullptr, nullptr);
    second.setPopupMenuProvider(provider);
    second.requestMenu();
    EXPECT_NE(menu.actions[0], menu.actions[2]);
    EXPECT_EQ(&menu.actions[0]->info(), &menu.actions[2]->info());
}

TEST_F(BrowserTest, mayBeDestroyedInsideAnyCallThatItMakes)
{
    FakeMenu menu;
    auto provider = std::make_shared<FakeProvider>();
    provider->menu = &menu;
    const auto trigger = [&menu] { menu.actions.at(0)->trigger(); };
    const Zar::DebugMessageSinkGuard reports([](const auto&) { test::hostIsCalled(); });
    const std::function<void()> causes[] = {
        [this] { selectRow("b"); },
        [this] { browser->selectionModel()->setCurrentIndex(model->find("b"), {3}); },
        [this] { browser->selectAll(); },
        [this] {
            selection.setSelection(objects({"b", "c"}), false);
        },
        [this] {
            browser->selectionModel()->reset();
            model->emitUnannouncedInsertion({}, 0, 1);
        },
        [this] { model->remove({}, 0, 1); },
        [this] {
            Q_EMIT model->layoutChanged();
            QCoreApplication::processEvents();
        },
        [this] { browser->syncHover(model->find("b")); },
        [this] { browser->resetHover(); },
        [this] { browser->onDoubleClicked(model->find("b")); },
        [this] { browser->copyProperties(); },
        [this] { browser->pasteProperties(); },
        [this] { browser->requestMenu(); },
        [this] { browser->expandAll(); },
        [&] {
            browser->requestMenu();
            if (browser)
                trigger();
        },
    };
    for (const auto& cause : causes) {
        for (int last = 1, calls = 1; calls >= last; ++last) {
            menu.log.clear();
            menu.actions.clear();
            create("a\nb\n  c");
            browser->setPopupMenuProvider(provider);
            selection.setSelection(objects({"a", "c"}), false);
            selection.setHoveredObjects(objects({"a"}));
            calls = 0;
            const auto count = [&] {
                if (++calls == last)
                    browser.reset();
            };
            test::onHostCall = count;
            QObject::connect(browser->selectionModel(), &QItemSelectionModel::selectionChanged,
                             count);
            QObject::connect(browser->selectionModel(), &QItemSelectionModel::currentChanged,
                             count);
            QObject::connect(browser.get(), &SceneBrowserData::expandAllRequested, count);
            cause();
            test::onHostCall = nullptr;
            EXPECT_EQ(calls < last, browser != nullptr);
        }
    }
}
