#include <editor/document/scene_document.h>
#include <editor/rows/scene_asset_model.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/abstract_filter_data.h>
#include <kyr_scene_outline/abstract_selectable_data.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <kyr_scene_outline/scene_browser_extension.h>
#include <kyr_scene_outline/scene_browser_panel_base.h>

#include <scene/scene_samples.h>

#include <QPluginLoader>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace editor;
using lumo::datamodels::proxy::TextPredicate;

const char* const sample = "group Lamps\n  light Left\n  light Right\nmesh Box\ncamera Eye";

/// The plug-in file over a scene of a group with two lights, a mesh and a camera.
struct SampleExtensionTest : testing::Test
{
    SampleExtensionTest()
    {
        document.open(test::sceneFrom(sample), {});
        browser.setFilterPredicate(&predicate);
        engine->addImportPath(KYR_QML_DIR);
        extension = qobject_cast<ISceneBrowserExtension*>(loader.instance());
        if (!extension)
            throw std::runtime_error(loader.errorString().toStdString());
        extension->attach(browser, *engine);
    }
    ~SampleExtensionTest() override
    {
        extension->detach(browser);
        engine.reset();
        EXPECT_TRUE(loader.unload());
    }

    AbstractFilterData* filter(const char* title) const
    {
        for (const QVariant& entry : browser.filterData()) {
            auto* data = entry.value<AbstractFilterData*>();
            if (data->title() == title)
                return data;
        }
        return nullptr;
    }
    void choose(const char* title, const char* label) const
    {
        filter(title)->setCurrentIndex(filter(title)->labels().indexOf(label));
    }
    /// Names of the rows that the predicate accepts, from the top.
    QStringList accepted() const
    {
        QStringList names;
        for (const QModelIndex& index : rows("*")) {
            if (predicate.accepts(index))
                names << index.data().toString();
        }
        return names;
    }
    QModelIndexList rows(const char* pattern) const
    {
        return browser.model()->match(browser.model()->index(0, 0), Qt::DisplayRole, pattern, -1,
                                      Qt::MatchWildcard | Qt::MatchRecursive);
    }
    QModelIndex row(const char* name) const { return rows(name)[0]; }
    SceneObjectPtr object(const char* name) const
    {
        return assets.sceneModel()->objectAt(row(name))->shared_from_this();
    }
    void setFlag(const char* name, const char* property, bool value)
    {
        document.setProperty({object(name)}, property, lumo::Variant(value));
    }
    /// The item that a panel shows, as the tree's panel makes it.
    std::unique_ptr<QQuickItem> show(QObject* panel) const
    {
        auto* base = qobject_cast<SceneBrowserPanelBase*>(panel);
        std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(base->getComponent()->create()));
        if (!item)
            throw std::runtime_error(base->getComponent()->errorString().toStdString());
        item->setProperty("context", QVariant::fromValue(base->getContext()));
        return item;
    }
    /// Text of a panel, which follows in the next turn, and how many lights it counts.
    static std::string shown(const QQuickItem& item)
    {
        QTest::qWait(0);
        const auto* context = item.property("context").value<QObject*>();
        const int lights = context->property("counts").toMap()["light"].toInt();
        return item.property("text").toString().toStdString() + ", " + std::to_string(lights);
    }

    SceneDocument document;
    SceneAssetModel assets{document};
    RecordedAssetSelection selection{document.changesController()};
    TextPredicate predicate;
    SceneBrowserData browser{&assets, &selection, nullptr};
    QPluginLoader loader{QStringLiteral(KYR_SAMPLE_EXTENSION)};
    std::optional<QQmlEngine> engine{std::in_place};
    ISceneBrowserExtension* extension = nullptr;
};

TEST_F(SampleExtensionTest, takesOffWhatItAttached)
{
    EXPECT_EQ(browser.filterData().size(), 2);
    EXPECT_TRUE(browser.selectableData() && browser.headerPanel() && browser.footerPanel());
    choose("Type", "Lights");
    EXPECT_TRUE(predicate.isActive());
    auto* modes = qobject_cast<AbstractSelectableData*>(browser.selectableData());
    modes->setCurrentIndex(2);
    modes->setCurrentIndex(3);
    EXPECT_EQ(modes->currentLabel(), "By type") << "there are three";
    EXPECT_EQ(modes->property("arrangement"), "type");

    extension->detach(browser);
    EXPECT_TRUE(browser.filterData().isEmpty());
    EXPECT_FALSE(browser.selectableData() || browser.headerPanel() || browser.footerPanel());
    EXPECT_FALSE(predicate.isActive());

    extension->attach(browser, *engine);
    EXPECT_EQ(browser.filterData().size(), 2);
    SceneBrowserData other(&assets, &selection, nullptr);
    extension->attach(other, *engine);
    extension->detach(other);
    EXPECT_TRUE(browser.headerPanel()) << "each browser has attachments of its own";
}

TEST_F(SampleExtensionTest, filtersNarrowThePredicateAlsoAnother)
{
    choose("Type", "Lights");
    EXPECT_EQ(accepted(), QStringList({"Left", "Right"}));
    setFlag("Left", "visible", false);
    choose("Visibility", "Visible");
    EXPECT_EQ(accepted(), QStringList({"Right"}));
    predicate.setText("e");
    EXPECT_EQ(accepted(), QStringList());
    predicate.setText({});

    choose("Type", "All");
    choose("Visibility", "Hidden");
    EXPECT_EQ(accepted(), QStringList({"Left"}));
    setFlag("Lamps", "visible", false);
    EXPECT_EQ(accepted(), QStringList({"Lamps", "Left", "Right"})) << "hidden from above";
    choose("Visibility", "Locked");
    setFlag("Box", "locked", true);
    EXPECT_EQ(accepted(), QStringList({"Box"}));
    choose("Visibility", "All");
    EXPECT_FALSE(predicate.isActive());
    EXPECT_EQ(accepted().size(), 6);

    choose("Type", "Cameras");
    TextPredicate other;
    browser.setFilterPredicate(&other);
    EXPECT_TRUE(other.accepts(row("Eye")));
    EXPECT_FALSE(other.accepts(row("Box")));
    EXPECT_FALSE(predicate.isActive()) << "it may outlive the plug-in";
    browser.setFilterPredicate(nullptr);
    EXPECT_FALSE(other.isActive());
    browser.setFilterPredicate(&predicate);
    EXPECT_TRUE(predicate.isActive());
}

TEST_F(SampleExtensionTest, panelsCountTheSceneAndTheSelection)
{
    const auto header = show(browser.headerPanel());
    const auto footer = show(browser.footerPanel());
    EXPECT_EQ(shown(*header), "5 objects, 2");
    EXPECT_EQ(shown(*footer), "Selected types, 0");
    browser.selectAll();
    EXPECT_EQ(shown(*footer), "Selected types, 2");
    browser.selectionModel()->select(row("Left"), QItemSelectionModel::Deselect);
    document.remove({object("Eye")});
    EXPECT_EQ(shown(*footer), "Selected types, 1");
    EXPECT_EQ(shown(*header), "4 objects, 2");
    document.undoStack().undo();
    document.remove({object("Lamps")});
    EXPECT_EQ(shown(*header), "2 objects, 0");
    document.undoStack().undo();
    document.duplicate({object("Eye")});
    document.reparent({object("Box")}, *object("Lamps"));
    EXPECT_EQ(shown(*header), "6 objects, 2");
    document.open(test::sceneFrom(sample), {});
    EXPECT_EQ(shown(*header), "5 objects, 2");
    EXPECT_EQ(shown(*footer), "Selected types, 0");
}

} // namespace
