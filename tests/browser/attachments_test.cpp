#include "browser_fixture.h"

#include <panel/editor_parts.h>

using test::BrowserTest;

TEST_F(BrowserTest, settersAnnounceEveryCallOnTheirOwnSignal)
{
    create("a");
    std::string log;
    using Browser = SceneBrowserData;
    const auto logs = [&](auto signal, const char* text) {
        QObject::connect(browser.get(), signal, [&log, text] { log += text; });
    };
    logs(&Browser::headerPanelChanged, "header ");
    logs(&Browser::footerPanelChanged, "footer ");
    logs(&Browser::selectableDataChanged, "selectable ");
    logs(&Browser::filterPredicateChanged, "predicate ");

    SceneBrowserPanelBase panel;
    Modes modes;
    lumo::datamodels::proxy::TextPredicate predicate;
    for (int i = 0; i < 2; ++i) {
        browser->setHeaderPanel(&panel);
        browser->setFooterPanel(&panel);
        browser->setSelectableData(&modes);
        browser->setFilterPredicate(&predicate);
    }
    EXPECT_EQ(&panel, browser->property("headerPanel").value<QObject*>());
    EXPECT_EQ(&modes, browser->selectableData());
    EXPECT_EQ(&predicate, browser->filterPredicate());
    browser->setHeaderPanel(nullptr);
    EXPECT_EQ(nullptr, browser->headerPanel());
    EXPECT_EQ("header footer selectable predicate header footer selectable predicate header ", log);

    EXPECT_EQ(nullptr, panel.property("component").value<QQmlComponent*>());
    EXPECT_EQ(nullptr, panel.property("context").value<QObject*>());
}

TEST_F(BrowserTest, filtersKeepTheirOrderAndOccurOnce)
{
    create("a");
    int announced = 0;
    QObject::connect(browser.get(), &SceneBrowserData::filterDataChanged, [&] { ++announced; });
    Filter first("First", {"All"});
    Filter second("Second", {"All", "Lights"});
    browser->addFilterData(&first);
    browser->addFilterData(&first);
    EXPECT_EQ(1, announced);
    browser->addFilterData(&second);
    browser->addFilterData(nullptr);
    const QList<QVariant> before = browser->filterData();
    browser->removeFilterData(&first);
    browser->removeFilterData(&first);
    EXPECT_EQ(4, announced);
    EXPECT_EQ(3, before.size());
    ASSERT_EQ(2, browser->filterData().size());
    const QVariant entry = browser->filterData().first();
    EXPECT_STREQ("AbstractFilterData*", entry.typeName());
    EXPECT_EQ(&second, entry.value<AbstractFilterData*>());
    second.setProperty("currentIndex", 1);
    EXPECT_EQ(1, second.currentIndex());
}

TEST(AbstractSelectableData, currentLabelStaysInsideTheLabels)
{
    Modes modes;
    for (const auto& [index, label] : {std::pair(2, "Type"), {0, "Hierarchy"}, {-1, ""}, {3, ""}}) {
        modes.setCurrentIndex(index);
        EXPECT_EQ(label, modes.currentLabel()) << index;
    }
}
