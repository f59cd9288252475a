#pragma once

#include <panel/rows/expansion_memory.h>
#include <panel/rows/row_reader.h>
#include <panel/rows/row_walk.h>
#include <panel/rows/selection_marker.h>
#include <panel/rows/source_rows.h>

#include <QDeadlineTimer>
#include <QItemSelectionModel>
#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>

namespace kyr::panel {

class ArrangedTreeModel;

/// The rows of a flat tree over another model of the same scene, with their expansion and their
/// selection marks, made in parts while the present rows still show.
///
/// Owns nothing that it is given. Good for nothing once the present rows or either model change,
/// except for marks.
class RowsReplacement
{
public:
    RowsReplacement(const SourceRows& present, const ExpansionMemory& memory,
                    QAbstractItemModel* model, QItemSelectionModel* selection);

    QAbstractItemModel* model() const { return m_model; }
    /// Goes when the replacement does.
    QObject* context() { return &m_context; }

    /// Notes how the present rows stand, which is the part that needs their model.
    bool take(const QDeadlineTimer& deadline);
    /// Works until all is done, which makes it return true, or the time is up.
    bool work(const QDeadlineTimer& deadline);
    bool isDone() const { return m_stage == Stage::Done; }
    /// The selection has changed.
    void markAgain();

    /// Once done.
    int count() const { return m_rows.count(); }
    SourceRows takeRows() { return std::move(m_rows); }
    ExpansionMemory takeMemory() { return std::move(m_memory); }

private:
    enum class Stage
    {
        Taking,
        Restoring,
        Reading,
        Marking,
        Done,
    };

    void step();

    const SourceRows& m_present;
    std::optional<KnownRowWalk> m_walk;
    ExpansionMemory m_memory;
    QAbstractItemModel* m_model;
    const ArrangedTreeModel* m_arranged;
    QPointer<QItemSelectionModel> m_selection;
    Stage m_stage = Stage::Taking;
    SourceRows m_rows;
    std::unique_ptr<RowReader> m_reader;
    std::unique_ptr<SelectionMarker> m_marker;
    QObject m_context;
};

} // namespace kyr::panel
