#pragma once

#include <panel/gestures/type_ahead.h>
#include <panel/outline/outline_model.h>

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

namespace kyr::panel {

/// What mouse and keyboard do to the selection, focus and expansion of a flat tree.
///
/// Row numbers are those of the flat model. The focused row is the selection model's current index,
/// moved without touching the selection; each gesture is one `select` call over column 0, its
/// ranges from top to bottom. Owns neither model.
class KYR_SCENE_OUTLINE_PANEL_EXPORT TreeNavigator : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        kyr::panel::OutlineModel* outline READ outline WRITE setOutline NOTIFY outlineChanged)
    /// How many rows Page Up and Page Down move.
    Q_PROPERTY(int pageRows MEMBER m_pageRows NOTIFY pageRowsChanged)
    /// True inside the selection changes that a gesture makes.
    Q_PROPERTY(bool changing READ isChanging)
    /// True while typed letters search; keys with a meaning of their own are letters then.
    Q_PROPERTY(bool searching READ isSearching)

public:
    explicit TreeNavigator(QObject* parent = nullptr);

    OutlineModel* outline() const { return m_outline; }
    void setOutline(OutlineModel* model);
    bool isChanging() const { return m_changing; }
    bool isSearching() const { return m_typeAhead.isActive(); }
    TypeAhead& typeAhead() { return m_typeAhead; }

    /// A press selects at once, except on a selected row: that one waits for the release, so that a
    /// drag can take the whole selection along. `modifiers` are Qt::KeyboardModifiers.
    Q_INVOKABLE void press(int row, int modifiers);
    Q_INVOKABLE void release(int row, int modifiers);
    /// Selects the row unless it is part of the selection that the menu is for.
    Q_INVOKABLE void pressForMenu(int row);
    Q_INVOKABLE void clearSelection();
    /// All rows that no collapsed row hides.
    Q_INVOKABLE void selectVisible();
    /// All rows that the filter accepts.
    Q_INVOKABLE void selectMatches();
    /// The expand arrow; with Shift it takes the whole branch along.
    Q_INVOKABLE void toggle(int row, int modifiers);
    /// False when the key means nothing here.
    Q_INVOKABLE bool key(int key, int modifiers, const QString& text);
    Q_INVOKABLE void expandAll();
    Q_INVOKABLE void collapseAll();

    Q_INVOKABLE int currentRow() const;
    /// The object selected last; invalid when nothing is selected.
    Q_INVOKABLE QModelIndex primaryIndex() const;

Q_SIGNALS:
    void outlineChanged();
    void pageRowsChanged();
    /// The row that a key has moved to should be in view.
    void rowReached(int row);
    void selectAllRequested();
    void activated(const QModelIndex& sourceIndex);

private:
    QItemSelectionModel* selectionModel() const;
    void select(int first, int last, QItemSelectionModel::SelectionFlags flags);
    void extendTo(int row, bool keepOthers);
    void focus(int row);
    void setAnchor(int row);
    void keepFocusVisible();
    void selectAlone(int row);
    bool moveTo(int row, int modifiers);
    bool moveIn(int modifiers);
    bool moveOut(int modifiers);
    bool pressSpace(int modifiers);
    bool search(const QString& text);
    int pageStep() const { return qMax(1, m_pageRows - 1); }

    QPointer<OutlineModel> m_outline;
    QPersistentModelIndex m_anchor;
    TypeAhead m_typeAhead;
    int m_pageRows = 20;
    bool m_changing = false;
};

} // namespace kyr::panel
