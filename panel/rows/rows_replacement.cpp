#include "rows_replacement.h"

#include <panel/arrangement/arranged_tree_model.h>

namespace kyr::panel {

namespace {

constexpr int rowsAtOnce = 32;

} // namespace

RowsReplacement::RowsReplacement(const SourceRows& present, const ExpansionMemory& memory,
                                 QAbstractItemModel* model, QItemSelectionModel* selection)
    : m_present(present)
    , m_memory(memory)
    , m_model(model)
    , m_arranged(qobject_cast<const ArrangedTreeModel*>(model))
    , m_selection(selection)
{
    if (present.source() && m_memory.startTaking(present))
        m_walk.emplace(present.tree(), present.root(), *present.source());
}

bool RowsReplacement::take(const QDeadlineTimer& deadline)
{
    while (m_walk && !m_walk->atEnd()) {
        for (int row = 0; row < rowsAtOnce && !m_walk->atEnd(); ++row, m_walk->next())
            m_memory.take(m_present, m_walk->node(), m_walk->index());
        if (deadline.hasExpired())
            return false;
    }
    m_walk.reset();
    return true;
}

bool RowsReplacement::work(const QDeadlineTimer& deadline)
{
    if (m_stage == Stage::Taking) {
        if (!take(deadline))
            return false;
        m_memory.startRestoring(ExpansionMemory::viewOf(m_arranged));
        m_stage = Stage::Restoring;
    }
    while (!isDone()) {
        step();
        if (deadline.hasExpired())
            break;
    }
    return isDone();
}

void RowsReplacement::step()
{
    switch (m_stage) {
    case Stage::Restoring:
        if (!m_memory.restoreSome(rowsAtOnce))
            break;
        m_rows.setSource(m_model, m_model ? m_model->roleNames().key("expanded", -1) : -1);
        m_rows.reset(m_memory.rootFlags());
        m_reader = std::make_unique<RowReader>(m_rows, m_memory.startOf(m_rows), QModelIndex(),
                                               m_memory.rootFlags(), 0,
                                               m_model ? m_model->rowCount() - 1 : -1, 0);
        m_stage = Stage::Reading;
        break;
    case Stage::Reading:
        for (int row = 0; row < rowsAtOnce; ++row) {
            if (!m_reader->step())
                continue;
            m_rows.insert(RowTree::none, 0, m_reader->result());
            m_reader.reset();
            m_memory.endRestoring();
            m_stage = Stage::Marking;
            break;
        }
        break;
    case Stage::Marking: {
        if (!m_marker && m_selection && m_selection->hasSelection())
            m_marker =
                std::make_unique<SelectionMarker>(m_selection->selection(), true, m_arranged);
        std::vector<RowTree::Node> changed;
        for (int row = 0; row < rowsAtOnce; ++row) {
            if (m_marker && !m_marker->step(m_rows, changed))
                continue;
            m_marker.reset();
            m_stage = Stage::Done;
            break;
        }
        break;
    }
    case Stage::Taking:
    case Stage::Done:
        break;
    }
}

void RowsReplacement::markAgain()
{
    if (m_stage < Stage::Marking)
        return;
    m_marker.reset();
    m_rows.clearMarks();
    m_stage = Stage::Marking;
}

} // namespace kyr::panel
