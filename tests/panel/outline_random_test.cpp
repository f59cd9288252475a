// An outline that followed random changes of scene, selection, openness, filter, order and mode
// against a plain walk over the scene.

#include "outline_rows.h"

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
    explicit View(const Outline& outline) : m_outline(outline), m_rows(outline.rows())
    {
        const OutlineModel& model = outline.model;
        const auto read = [this] { m_rows = m_outline.rows(); };
        QObject::connect(&model, &OutlineModel::modelReset, &m_context, read);
        QObject::connect(&model, &OutlineModel::layoutChanged, &m_context, read);
        QObject::connect(&model, &OutlineModel::rowsInserted, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             const QStringList now = m_outline.rows();
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
                             const QStringList now = m_outline.rows();
                             for (int row = first.row(); row <= last.row(); ++row)
                                 m_rows[row] = now.value(row);
                         });
    }
    std::string text() const { return m_rows.join(QLatin1Char('\n')).toStdString(); }

private:
    const Outline& m_outline;
    QStringList m_rows;
    QObject m_context;
};

class RandomOutline
{
public:
    explicit RandomOutline(unsigned seed)
        : m_random(seed)
        , m_outline(chain(seed % 3 == 0 ? 40 : 2))
        , m_view(m_outline)
        , m_tester(&m_outline.model, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {}

    void step()
    {
        using Way = void (RandomOutline::*)();
        constexpr std::pair<int, Way> ways[] = {
            {4, &RandomOutline::insert},       {2, &RandomOutline::remove},
            {3, &RandomOutline::move},         {1, &RandomOutline::rename},
            {1, &RandomOutline::retype},       {3, &RandomOutline::toggle},
            {1, &RandomOutline::toggleBranch}, {3, &RandomOutline::select},
            {1, &RandomOutline::arrange},      {1, &RandomOutline::rare}};
        int chance = pick(20);
        for (const auto& [weight, way] : ways) {
            if ((chance -= weight) < 0)
                return (this->*way)();
        }
    }

    void check()
    {
        ASSERT_EQ(m_view.text(), text()) << m_last;
        // Changes may meet a pass that is under way.
        if (pick(3) == 0)
            return;
        OutlineModel& model = m_outline.model;
        model.finish();
        const QStringList expected = rows();
        ASSERT_EQ(text(), expected.join(QLatin1Char('\n')).toStdString()) << m_last;
        ASSERT_EQ(m_view.text(), text()) << m_last;
        int selected = 0;
        int matching = 0;
        for (const Item* item : all()) {
            const QModelIndex index = scene().indexOf(item);
            selected += isSelected(item) ? 1 : 0;
            matching += item->parent && matches(item) ? 1 : 0;
            ASSERT_EQ(index.isValid() && model.rowOf(index) >= 0, m_shown.count(item) != 0);
        }
        ASSERT_EQ(model.selectedCount(), selected) << m_last;
        ASSERT_EQ(model.matchCount(), filters() ? matching : -1) << m_last;
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.sourceIndex(row);
            if (!index.isValid())
                continue;
            ASSERT_EQ(model.rowOf(index), row) << m_last;
            ASSERT_EQ(model.nearestRow(index), row) << m_last;
            if (model.showsHierarchy()) {
                ASSERT_EQ(model.parentRow(row), model.rowOf(index.parent())) << m_last;
            }
        }
    }

private:
    /// Forty levels are deep enough for what is remembered of deep branches.
    static TreeModel::Items chain(int depth)
    {
        QString text;
        for (int level = 0; level < depth; ++level)
            text += QString(level * 2, QLatin1Char(' ')) + QString::number(level) + '\n';
        return TreeModel::parsed(text);
    }
    std::string text() const { return m_outline.rows().join(QLatin1Char('\n')).toStdString(); }
    int pick(int bound) { return int(m_random() % unsigned(bound)); }
    QString anyName() { return QString::number(pick(60)); }
    QString anyType() { return QStringList{"mesh", "light", ""}[pick(3)]; }
    TreeModel& scene() const { return *m_outline.scene; }
    bool filters() const { return m_outline.predicate.isActive(); }
    bool is(const char* arrangement) const
    {
        return m_outline.model.arrangement() == QLatin1String(arrangement);
    }
    bool matches(const Item* item) const { return item->name.contains(m_outline.predicate.text()); }
    bool leadsOn(const Item* item) const
    {
        return std::any_of(item->children.begin(), item->children.end(),
                           [this](const auto& c) { return leads(c.get()); });
    }
    bool leads(const Item* item) const { return matches(item) || leadsOn(item); }
    bool isSelected(const Item* item) const
    {
        return m_outline.selection->isSelected(scene().indexOf(item));
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
    std::vector<Item*> all() const { return branchOf(scene().root()); }
    Item* any()
    {
        const auto items = all();
        return items[std::size_t(pick(int(items.size())))];
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
        if (m_outline.model.sortRole() < 0)
            return;
        const bool down = m_outline.model.isSortDescending();
        std::stable_sort(items.begin(), items.end(), [down](const Item* a, const Item* b) {
            return down ? b->name.toInt() < a->name.toInt() : a->name.toInt() < b->name.toInt();
        });
    }
    QStringList rows()
    {
        m_shown.clear();
        QStringList rows;
        if (!is("flat") && !is("type")) {
            append(scene().root(), 0, rows);
            return rows;
        }
        std::map<QString, std::vector<Item*>> groups;
        for (Item* item : below(scene().root())) {
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
        auto item = std::make_unique<Item>();
        item->name = anyName();
        item->type = anyType();
        for (int child = pick(4); depth > 0 && child > 0; --child) {
            item->children.push_back(branch(depth - 1));
            item->children.back()->parent = item.get();
            item->children.back()->row = int(item->children.size()) - 1;
        }
        return item;
    }
    void insert()
    {
        m_last = "insert";
        Item* parent = any();
        // Rows below some that were never seen may come to be read only after all was closed.
        const bool seen =
            parent == scene().root() ||
            m_outline.model.isRowExpanded(m_outline.model.rowOf(scene().indexOf(parent)));
        TreeModel::Items items;
        for (int i = 0; i <= pick(3); ++i) {
            items.push_back(branch(2));
            items.back()->expanded = seen && pick(3) == 0;
            if (items.back()->expanded)
                m_open.insert(items.back().get());
        }
        scene().insert(scene().indexOf(parent), pick(int(parent->children.size()) + 1),
                       std::move(items));
    }
    void remove()
    {
        m_last = "remove";
        Item* parent = any();
        const int size = int(parent->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const int count = 1 + pick(std::min(3, size - row));
        for (int i = row; i < row + count; ++i) {
            for (const Item* item : branchOf(parent->children[std::size_t(i)].get())) {
                m_open.erase(item);
                m_closedFound.erase(item);
            }
        }
        scene().remove(scene().indexOf(parent), row, count);
    }
    void move()
    {
        m_last = "move";
        Item* from = any();
        Item* to = any();
        const int size = int(from->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        scene().move(scene().indexOf(from), row, 1 + pick(std::min(3, size - row)),
                     scene().indexOf(to), pick(int(to->children.size()) + 1));
    }
    void rename()
    {
        m_last = "rename";
        if (Item* item = any(); item != scene().root())
            scene().setData(scene().indexOf(item), anyName(), Qt::EditRole);
    }
    void retype()
    {
        m_last = "retype";
        Item* item = any();
        if (item == scene().root())
            return;
        item->type = anyType();
        const QModelIndex index = scene().indexOf(item);
        Q_EMIT scene().dataChanged(index, index, {TreeModel::TypeRole});
    }
    void toggle()
    {
        m_last = "toggle";
        m_outline.model.finish();
        Item* item = any();
        if (is("type")) {
            const int row = pick(std::max(1, m_outline.model.count()));
            if (!m_outline.model.isGroup(row))
                return;
            const QString type = m_outline.model.index(row).data(TreeModel::TypeRole).toString();
            const bool open = m_closedGroups.erase(type) != 0;
            if (!open)
                m_closedGroups.insert(type);
            m_outline.model.setRowExpanded(row, open);
            return;
        }
        if (is("flat") || item == scene().root() || !leads(item))
            return;
        const bool open = !isOpen(item);
        m_outline.model.setExpanded(scene().indexOf(item), open);
        setOpen(item, open);
    }
    void toggleBranch()
    {
        m_last = "toggle branch";
        m_outline.model.finish();
        Item* item = any();
        if (is("flat") || is("type") || item == scene().root() || !leads(item))
            return;
        const bool open = pick(2) == 0;
        m_outline.model.setBranchExpanded(scene().indexOf(item), open);
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
    void select()
    {
        m_last = "select";
        Item* parent = any();
        const int size = int(parent->children.size());
        if (size == 0)
            return;
        const int row = pick(size);
        const QModelIndex index = scene().indexOf(parent);
        const QItemSelectionModel::SelectionFlag flags[]{
            QItemSelectionModel::Select, QItemSelectionModel::Toggle, QItemSelectionModel::Deselect,
            QItemSelectionModel::ClearAndSelect};
        m_outline.selection->select(QItemSelection(scene().index(row, 0, index),
                                                   scene().index(row + pick(size - row), 0, index)),
                                    flags[pick(4)]);
    }
    void arrange()
    {
        m_last = "arrange";
        const char* const modes[]{"", "", "", "flat", "type"};
        switch (pick(3)) {
        case 0:
            if (const QString text = pick(2) == 0 ? QString() : QString::number(pick(7));
                text != m_outline.predicate.text()) {
                m_outline.predicate.setText(text);
                m_closedFound.clear();
            }
            break;
        case 1:
            m_outline.model.setSortRole(pick(2) == 0 ? -1 : int(Qt::DisplayRole));
            m_outline.model.setSortDescending(pick(2) == 0);
            break;
        default:
            m_outline.model.setArrangement(QLatin1String(modes[pick(5)]));
        }
    }
    void rare()
    {
        m_outline.model.finish();
        if (pick(2) == 0) {
            m_last = "layout";
            scene().reverse(scene().indexOf(any()), QAbstractItemModel::NoLayoutChangeHint);
        } else if (!filters() && !is("flat") && !is("type")) {
            m_last = "all";
            const bool open = pick(2) == 0;
            if (open)
                m_outline.model.expandAll();
            else
                m_outline.model.collapseAll();
            if (!open)
                m_open.clear();
            for (const Item* item : all()) {
                if (open && !item->children.empty())
                    m_open.insert(item);
            }
        }
    }

    std::mt19937 m_random;
    Outline m_outline;
    View m_view;
    QAbstractItemModelTester m_tester;
    std::set<const Item*> m_open;
    std::set<const Item*> m_closedFound;
    std::set<QString> m_closedGroups;
    std::set<const Item*> m_shown;
    const char* m_last = "start";
};

class OutlineRandomTest : public ::testing::TestWithParam<unsigned>
{};

TEST_P(OutlineRandomTest, ShowsWhatAPlainWalkFinds)
{
    RandomOutline outline(GetParam());
    for (int step = 0; step < 150; ++step) {
        outline.step();
        ASSERT_NO_FATAL_FAILURE(outline.check()) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, OutlineRandomTest, ::testing::Range(1u, 13u));

} // namespace
