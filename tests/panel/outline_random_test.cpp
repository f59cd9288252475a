// An outline of a browser that the test kit drives, with changes of openness, filter, order and
// mode in between, against a plain walk over the scene.

#include "outline_rows.h"

#include <kyr_scene_outline_testkit/random_driver.h>
#include <support/driver_steps.h>
#include <support/tree_scene.h>

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

using test::TreeModel;

namespace {

using kyr::panel::OutlineModel;
using Item = TreeModel::Item;

/// Keeps a copy of the rows up to date by the signals alone, as a view does.
class View
{
public:
    explicit View(const OutlineModel& model) : m_model(model), m_rows(Outline::rows(model))
    {
        const auto read = [this] { m_rows = Outline::rows(m_model); };
        QObject::connect(&model, &OutlineModel::modelReset, &m_context, read);
        QObject::connect(&model, &OutlineModel::layoutChanged, &m_context, read);
        QObject::connect(&model, &OutlineModel::rowsInserted, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             const QStringList now = Outline::rows(m_model);
                             for (int row = first; row <= last; ++row)
                                 m_rows.insert(row, now.value(row));
                         });
        QObject::connect(&model, &OutlineModel::rowsRemoved, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
                         });
        QObject::connect(
            &model, &OutlineModel::rowsMoved, &m_context,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int to) {
                const QStringList moved = m_rows.mid(first, last - first + 1);
                m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
                int row = to > last ? to - moved.size() : to;
                for (const QString& text : moved)
                    m_rows.insert(row++, text);
            });
        QObject::connect(&model, &OutlineModel::dataChanged, &m_context,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             const QStringList now = Outline::rows(m_model);
                             for (int row = first.row(); row <= last.row(); ++row)
                                 m_rows[row] = now.value(row);
                         });
    }
    std::string text() const { return m_rows.join(QLatin1Char(' ')).toStdString(); }

private:
    const OutlineModel& m_model;
    QStringList m_rows;
    QObject m_context;
};

class OutlinedScene : public test::TreeScene<RecordedAssetSelection>
{
public:
    explicit OutlinedScene(int depth)
    {
        // Forty levels are deep enough for what is remembered of deep branches.
        QString text;
        for (int level = 0; level < depth; ++level)
            text += QString(level * 2, QLatin1Char(' ')) + QString::number(level) + '\n';
        m_model.resetTo(text);
        using Model = QAbstractItemModel;
        QObject::connect(&m_model, &Model::rowsAboutToBeRemoved, &m_outline,
                         [this](const QModelIndex& parent, int first, int last) {
                             for (int row = first; row <= last; ++row)
                                 forget(m_model.item(m_model.index(row, 0, parent)));
                         });
        QObject::connect(&m_model, &Model::modelAboutToBeReset, &m_outline,
                         [this] { forget(m_model.root()); });
        m_outline.setSourceModel(&m_model);
        m_outline.setPredicate(&m_predicate);
    }

    void show(SceneBrowserData& browser) override
    {
        m_selection = browser.selectionModel();
        m_outline.setSelectionModel(m_selection);
    }

    bool insertRow(const QModelIndex& index, int row) override
    {
        const Item* parent = index.isValid() ? m_model.item(index) : m_model.root();
        // Rows below some that were never seen may come to be read only after all was closed.
        const bool seen =
            parent == m_model.root() || m_outline.isRowExpanded(m_outline.rowOf(index));
        m_random.seed(++m_inserted);
        TreeModel::Items items;
        for (int i = 0; i <= pick(3); ++i) {
            items.push_back(branch(2));
            items.back()->expanded = seen && pick(3) == 0;
            if (items.back()->expanded)
                m_open.insert(items.back().get());
        }
        m_model.insert(index, row, std::move(items));
        return true;
    }
    bool relayout() override
    {
        m_outline.finish();
        m_model.reverse(m_model.indexOf(any()), QAbstractItemModel::NoLayoutChangeHint);
        return true;
    }

    bool reset() override
    {
        m_model.resetTo("1\n  2\n  3\n4\n  5\n    16\n17");
        return true;
    }

    std::string driveView(unsigned choice) override
    {
        using Way = void (OutlinedScene::*)();
        constexpr std::pair<const char*, Way> ways[] = {
            {"rows are renamed", &OutlinedScene::rename},
            {"a row has another type", &OutlinedScene::retype},
            {"a row opens or closes", &OutlinedScene::toggle},
            {"a row opens or closes", &OutlinedScene::toggle},
            {"a branch opens or closes", &OutlinedScene::toggleBranch},
            {"filter, order or mode change", &OutlinedScene::arrange},
            {"filter, order or mode change", &OutlinedScene::arrange},
            {"all opens or closes", &OutlinedScene::openAll}};
        m_random.seed(choice);
        const auto& [text, way] = ways[pick(int(std::size(ways)))];
        (this->*way)();
        return std::string(text) + " (filter '" + m_predicate.text().toStdString() + "', order " +
               std::to_string(m_outline.sortRole()) + ", mode '" +
               m_outline.arrangement().toStdString() + "')";
    }

    std::string viewFault() override
    {
        if (m_view.text() != text())
            return "a view that follows the signals has " + m_view.text() + ", the outline " +
                   text();
        // Changes may meet a pass that is under way.
        if (++m_checked % 3 == 0)
            return {};
        m_outline.finish();
        const std::string expected = rows().join(QLatin1Char(' ')).toStdString();
        if (text() != expected || m_view.text() != expected)
            return "the outline is " + text() + ", a view has " + m_view.text() + ", expected " +
                   expected;
        int selected = 0;
        int matching = 0;
        for (const Item* item : all()) {
            const QModelIndex index = m_model.indexOf(item);
            selected += isSelected(item) ? 1 : 0;
            matching += item->parent && matches(item) ? 1 : 0;
            if ((index.isValid() && m_outline.rowOf(index) >= 0) != (m_shown.count(item) != 0))
                return "rowOf() is wrong for " + item->name.toStdString();
        }
        if (m_outline.selectedCount() != selected)
            return "selectedCount() is wrong";
        if (m_outline.matchCount() != (filters() ? matching : -1))
            return "matchCount() is wrong";
        for (int row = 0; row < m_outline.count(); ++row) {
            const QModelIndex index = m_outline.sourceIndex(row);
            if (index.isValid() &&
                (m_outline.rowOf(index) != row || m_outline.nearestRow(index) != row ||
                 (m_outline.showsHierarchy() &&
                  m_outline.parentRow(row) != m_outline.rowOf(index.parent()))))
                return "row " + std::to_string(row) + " has another number, or another parent";
        }
        return {};
    }

private:
    std::string text() const
    {
        return Outline::rows(m_outline).join(QLatin1Char(' ')).toStdString();
    }
    int pick(int bound) { return int(m_random() % unsigned(bound)); }
    QString anyName() { return QString::number(pick(60)); }
    QString anyType() { return QStringList{"mesh", "light", ""}[pick(3)]; }
    bool filters() const { return m_predicate.isActive(); }
    bool is(const char* arrangement) const
    {
        return m_outline.arrangement() == QLatin1String(arrangement);
    }
    bool matches(const Item* item) const { return item->name.contains(m_predicate.text()); }
    bool leadsOn(const Item* item) const
    {
        return std::any_of(item->children.begin(), item->children.end(),
                           [this](const auto& c) { return leads(c.get()); });
    }
    bool leads(const Item* item) const { return matches(item) || leadsOn(item); }
    bool isSelected(const Item* item) const
    {
        return m_selection->isSelected(m_model.indexOf(item));
    }
    bool isOpen(const Item* item) const
    {
        return filters() ? m_closedFound.count(item) == 0 : m_open.count(item) != 0;
    }

    std::vector<Item*> below(Item* top) const
    {
        std::vector<Item*> items;
        for (const auto& child : top->children) {
            items.push_back(child.get());
            const std::vector<Item*> deeper = below(child.get());
            items.insert(items.end(), deeper.begin(), deeper.end());
        }
        return items;
    }
    std::vector<Item*> branchOf(Item* top) const
    {
        std::vector<Item*> items = below(top);
        items.push_back(top);
        return items;
    }
    std::vector<Item*> all() { return branchOf(m_model.root()); }
    Item* any()
    {
        const auto items = all();
        return items[std::size_t(pick(int(items.size())))];
    }

    void forget(Item* top)
    {
        for (const Item* item : branchOf(top)) {
            m_open.erase(item);
            m_closedFound.erase(item);
        }
    }

    // What should show.

    QString row(const Item* item, int depth, bool open, int hidden) const
    {
        return QString(depth, QLatin1Char('.')) + (open ? "-" : "") + item->name +
               (isSelected(item) ? "*" : "") + (hidden > 0 ? '#' + QString::number(hidden) : "") +
               (matches(item) ? "" : "~");
    }
    void sort(std::vector<Item*>& items) const
    {
        if (m_outline.sortRole() < 0)
            return;
        const bool down = m_outline.isSortDescending();
        std::stable_sort(items.begin(), items.end(), [down](const Item* a, const Item* b) {
            return down ? b->name.toInt() < a->name.toInt() : a->name.toInt() < b->name.toInt();
        });
    }
    QStringList rows()
    {
        m_shown.clear();
        QStringList rows;
        if (!is("flat") && !is("type")) {
            append(m_model.root(), 0, rows);
            return rows;
        }
        std::map<QString, std::vector<Item*>> groups;
        for (Item* item : below(m_model.root())) {
            if (matches(item))
                groups[is("type") ? item->type : QString()].push_back(item);
        }
        for (auto& [type, items] : groups) {
            const bool open = m_closedGroups.count(type) == 0;
            if (is("type")) {
                const auto hidden = std::count_if(items.begin(), items.end(),
                                                  [this](Item* item) { return isSelected(item); });
                rows += QString(open ? "-" : "") +
                        (type.isEmpty() ? "Other" : type.left(1).toUpper() + type.mid(1)) +
                        (!open && hidden > 0 ? '#' + QString::number(hidden) : "");
            }
            sort(items);
            for (const Item* item : items) {
                if (!is("flat") && !open)
                    continue;
                rows += row(item, is("type") ? 1 : 0, false, 0);
                m_shown.insert(item);
            }
        }
        return rows;
    }
    void append(Item* parent, int depth, QStringList& rows)
    {
        std::vector<Item*> children;
        for (const auto& child : parent->children)
            children.push_back(child.get());
        sort(children);
        for (Item* item : children) {
            if (!leads(item))
                continue;
            const std::vector<Item*> hidden = below(item);
            const auto count = std::count_if(hidden.begin(), hidden.end(), [this](Item* other) {
                return isSelected(other) && leads(other);
            });
            const bool open = isOpen(item);
            rows += row(item, depth, open, open ? 0 : int(count));
            m_shown.insert(item);
            if (open)
                append(item, depth + 1, rows);
        }
    }

    // What changes.

    std::unique_ptr<Item> branch(int depth)
    {
        auto item =
            std::make_unique<Item>(std::make_shared<test::NamedObject>(anyName().toStdString()));
        item->type = anyType();
        for (int child = pick(4); depth > 0 && child > 0; --child) {
            item->children.push_back(branch(depth - 1));
            item->children.back()->parent = item.get();
            item->children.back()->row = int(item->children.size()) - 1;
        }
        return item;
    }
    /// All have their names before the first is told.
    void rename()
    {
        std::vector<QModelIndex> renamed;
        for (int left = pick(8); left >= 0; --left) {
            Item* item = any();
            if (item == m_model.root())
                continue;
            item->name = anyName();
            renamed.push_back(m_model.indexOf(item));
        }
        for (const QModelIndex& index : renamed)
            Q_EMIT m_model.dataChanged(index, index, {Qt::DisplayRole});
    }
    void retype()
    {
        Item* item = any();
        if (item == m_model.root())
            return;
        item->type = anyType();
        const QModelIndex index = m_model.indexOf(item);
        Q_EMIT m_model.dataChanged(index, index, {TreeModel::TypeRole});
    }
    void toggle()
    {
        m_outline.finish();
        Item* item = any();
        if (is("type")) {
            const int row = pick(std::max(1, m_outline.count()));
            if (!m_outline.isGroup(row))
                return;
            const QString type = m_outline.index(row).data(TreeModel::TypeRole).toString();
            const bool open = m_closedGroups.erase(type) != 0;
            if (!open)
                m_closedGroups.insert(type);
            m_outline.setRowExpanded(row, open);
            return;
        }
        if (is("flat") || item == m_model.root() || !leads(item))
            return;
        const bool open = !isOpen(item);
        m_outline.setExpanded(m_model.indexOf(item), open);
        setOpen(item, open);
    }
    void toggleBranch()
    {
        m_outline.finish();
        Item* item = any();
        if (is("flat") || is("type") || item == m_model.root() || !leads(item))
            return;
        const bool open = pick(2) == 0;
        m_outline.setBranchExpanded(m_model.indexOf(item), open);
        for (const Item* other : branchOf(item)) {
            const bool branch = leadsOn(other);
            if (leads(other) && (branch || !open))
                setOpen(other, open);
        }
    }
    void setOpen(const Item* item, bool open)
    {
        if (filters() ? open : !open)
            (filters() ? m_closedFound : m_open).erase(item);
        else
            (filters() ? m_closedFound : m_open).insert(item);
    }
    void arrange()
    {
        const char* const modes[]{"", "", "", "flat", "type"};
        switch (pick(3)) {
        case 0:
            if (const QString text = pick(2) == 0 ? QString() : QString::number(pick(7));
                text != m_predicate.text()) {
                m_predicate.setText(text);
                m_closedFound.clear();
            }
            break;
        case 1:
            m_outline.setSortRole(pick(2) == 0 ? -1 : int(Qt::DisplayRole));
            m_outline.setSortDescending(pick(2) == 0);
            break;
        default:
            m_outline.setArrangement(QLatin1String(modes[pick(5)]));
        }
    }
    void openAll()
    {
        m_outline.finish();
        if (filters() || is("flat") || is("type"))
            return;
        const bool open = pick(2) == 0;
        if (open)
            m_outline.expandAll();
        else
            m_outline.collapseAll();
        if (!open)
            m_open.clear();
        for (const Item* item : all()) {
            if (open && !item->children.empty())
                m_open.insert(item);
        }
    }

    std::mt19937 m_random;
    unsigned m_inserted = 0;
    unsigned m_checked = 0;
    lumo::datamodels::proxy::TextPredicate m_predicate;
    OutlineModel m_outline;
    QItemSelectionModel* m_selection = nullptr;
    View m_view{m_outline};
    QAbstractItemModelTester m_tester{&m_outline,
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::set<const Item*> m_open;
    std::set<const Item*> m_closedFound;
    std::set<QString> m_closedGroups;
    std::set<const Item*> m_shown;
};

} // namespace

TEST(OutlineRandomTest, showsWhatAPlainWalkFindsWhileTheKitDrivesItsBrowser)
{
    for (const int depth : {2, 40}) {
        const auto makeScene = [depth] { return std::make_unique<OutlinedScene>(depth); };
        EXPECT_EQ("", kyr::testkit::firstFailure(makeScene, 1, test::driverSteps(6000)));
    }
}
