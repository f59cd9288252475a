#pragma once

#include <editor/app/paste_choice.h>

#include <QAbstractListModel>

#include <vector>

namespace editor {

/// The properties on the clipboard by group, as a list to choose from: how many of the selected
/// objects take each, and how many of these would change.
class PasteSpecialModel final : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int targetCount READ targetCount NOTIFY shown)
    Q_PROPERTY(int chosenCount READ chosenCount NOTIFY choiceChanged)

public:
    enum Role
    {
        LabelRole = Qt::DisplayRole,
        GroupRole = Qt::UserRole, ///< bool, the heading of the properties that follow
        CheckedRole,              ///< `Qt::CheckState`
        TakersRole,               ///< int, how many targets have the property
        DifferingRole,            ///< int, how many of these have another value
        ProblemRole,              ///< QString, why targets do not take it; empty when all do
    };

    using QAbstractListModel::QAbstractListModel;

    /// Shows what a preview counted.
    void show(const PropertyPasteReport& report, const PasteChoice& choice);
    /// Adds what is checked to the choice.
    void storeTo(PasteChoice& choice) const;

    int targetCount() const noexcept { return m_targets; }
    int chosenCount() const noexcept;

    /// A group's properties follow it.
    Q_INVOKABLE void toggle(int row);
    Q_INVOKABLE void chooseAll(bool chosen);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void shown();
    void choiceChanged();

private:
    struct Line
    {
        QString label;
        /// Empty for a group.
        std::string path;
        PropertyPasteCounts counts;
        bool isChosen = false;
        bool isGroup() const noexcept { return path.empty(); }
    };

    void append(const QString& group, Line line);
    /// Behind the last property of the group at `row`.
    std::size_t groupEnd(std::size_t row) const;
    Qt::CheckState checkState(std::size_t row) const;
    void emitChoice();

    std::vector<Line> m_lines;
    QString m_lastGroup;
    int m_targets = 0;
};

} // namespace editor
