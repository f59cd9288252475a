#pragma once

#include <panel/outline/outline_model.h>

#include <QMimeData>
#include <QObject>
#include <QPointer>

#include <memory>

namespace kyr::panel {

/// Dragging rows of a flat tree onto other rows or between them, through the scene's `mimeData`,
/// `canDropMimeData` and `dropMimeData`. The model moves the rows itself, which keeps them selected
/// and open; it gets them from top to bottom. In a sorted tree rows drop onto others only, in a
/// flat or grouped one nowhere.
class KYR_SCENE_OUTLINE_PANEL_EXPORT TreeDragger : public QObject
{
    Q_OBJECT
    Q_PROPERTY(kyr::panel::OutlineModel* outline MEMBER m_outline NOTIFY outlineChanged)
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    /// How many rows are dragged, and the name of the first.
    Q_PROPERTY(int count READ count NOTIFY activeChanged)
    Q_PROPERTY(QString name READ name NOTIFY activeChanged)
    Q_PROPERTY(bool allowed READ isAllowed NOTIFY dropPlaceChanged)
    /// The row to draw the target at, and where: above it, on it or below it.
    Q_PROPERTY(int targetRow READ targetRow NOTIFY dropPlaceChanged)
    Q_PROPERTY(Place place READ place NOTIFY dropPlaceChanged)

public:
    enum Place
    {
        Above,
        On,
        Below,
    };
    Q_ENUM(Place)

    using QObject::QObject;

    /// Takes up the row, with all selected ones if it is one of them; false when it cannot move.
    Q_INVOKABLE bool begin(int row);
    /// Tries the place at `fraction` of the row's height, 0 at its top; row -1 is below the last.
    Q_INVOKABLE void moveTo(int row, qreal fraction);
    /// False when nothing may drop there. Ends the drag either way.
    Q_INVOKABLE bool drop();
    Q_INVOKABLE void cancel();

    bool isActive() const { return m_data != nullptr; }
    int count() const { return m_count; }
    QString name() const { return m_name; }
    bool isAllowed() const { return m_allowed; }
    int targetRow() const { return m_targetRow; }
    Place place() const { return m_place; }

Q_SIGNALS:
    void outlineChanged();
    void activeChanged();
    void dropPlaceChanged();
    /// Around the move of one drop: one step to undo.
    void editBegins(const QString& text);
    void editEnds();

private:
    struct Target
    {
        QModelIndex parent;
        int row = -1; ///< -1 to drop onto the parent.
    };

    bool tries(int row, Place place);
    Target targetAt(int row, Place place) const;
    bool allows(const Target& target) const;

    QPointer<OutlineModel> m_outline;
    std::unique_ptr<QMimeData> m_data;
    int m_count = 0;
    QString m_name;
    bool m_allowed = false;
    int m_targetRow = -1;
    Place m_place = On;
};

} // namespace kyr::panel
