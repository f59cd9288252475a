#pragma once

#include "gizmo/gizmo_controller.h"
#include <editor/viewport/camera/fly_motion.h>
#include <editor/viewport/camera/orbit_camera.h>
#include <editor/viewport/pointer_gesture.h>
#include <editor/viewport/prepared_items.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVariant>

#include <optional>

namespace editor {

/// What a viewport shows and what its user does there, by ids alone. Holds items, camera, highlight
/// and pointer; knows nothing of the scene document nor of graphics. Exposed to QML as the
/// `controller` of Viewport3D, which may come and go while the controller stays.
///
/// GUI thread only. A slot of any signal may call anything here. The selection belongs to the host:
/// a pick is only reported, and shows once the host calls setSelectedIds().
class ViewportController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QSizeF viewportSize READ viewportSize WRITE setViewportSize NOTIFY cameraChanged)
    Q_PROPERTY(QRectF rubberBand READ rubberBand NOTIFY rubberBandChanged)
    Q_PROPERTY(double triangleCount READ triangleCount NOTIFY itemCountChanged)
    Q_PROPERTY(int meshCount READ meshCount NOTIFY itemCountChanged)
    Q_PROPERTY(qreal yaw READ yaw NOTIFY cameraChanged)
    Q_PROPERTY(qreal pitch READ pitch NOTIFY cameraChanged)
    Q_PROPERTY(editor::GizmoController* gizmo READ gizmo CONSTANT)
    Q_PROPERTY(Qt::CursorShape cursorShape READ cursorShape NOTIFY cursorShapeChanged)

public:
    explicit ViewportController(QObject* parent = nullptr);

    /// The whole scene; forgets hover and selection and keeps the camera. 100,000 items take tens
    /// of milliseconds, as geometry arrives ready for use.
    void setItems(std::vector<ViewportItem> items);
    /// The same with all the work done, such as in another thread. Returns the items of before.
    ItemSet exchangeItems(PreparedItems items);
    /// Puts a branch between the others; false when that needs `setItems`. Costs what the branch
    /// does.
    bool insertItems(const std::vector<ViewportItem>& branch, const ItemSet::Gap& gap);
    /// Takes the item with all below it out, also of hover and selection.
    void removeItems(quint32 id);
    /// One changed item; ignored when its id is unknown. O(log n).
    void updateItem(const ViewportItem& item);

    // Items show with all that is below them. Unknown ids are left out.

    /// In the order of selection; the last one is the primary one.
    void setSelectedIds(const std::vector<quint32>& ids);
    /// O(1) for one id, whatever is below it.
    void setHoveredIds(const std::vector<quint32>& ids);
    void setHoveredId(quint32 id) { setHoveredIds({id}); }

    /// Moves the camera so that the items and all below them fill the view. Does nothing for
    /// unknown ids alone.
    void frame(const std::vector<quint32>& ids);
    Q_INVOKABLE void frameSelected();
    Q_INVOKABLE void frameAll();
    Q_INVOKABLE void lookFrom(qreal yaw, qreal pitch);
    /// Puts the camera where one was, such as when the scene was left.
    void lookAs(const QVector3D& target, float distance, qreal yaw, qreal pitch);

    GizmoController* gizmo() { return &m_gizmo; }
    const ItemSet& items() const { return m_items; }
    /// What came prepared with the items, for the first view and while none of them changes.
    std::optional<DrawList> takeDrawList() { return std::exchange(m_drawList, std::nullopt); }
    const OrbitCamera& camera() const { return m_camera; }
    const std::vector<quint32>& selectedIds() const { return m_selectedIds; }
    const std::vector<quint32>& hoveredIds() const { return m_hoveredIds; }
    QSizeF viewportSize() const { return m_camera.viewport(); }
    void setViewportSize(const QSizeF& size);
    /// Invalid while there is none.
    QRectF rubberBand() const;
    int itemCount() const { return int(m_items.count()); }
    double triangleCount() const { return m_triangleCount; }
    /// Items with a mesh.
    int meshCount() const { return m_meshCount; }
    qreal yaw() const { return qreal(m_camera.yaw()); }
    qreal pitch() const { return qreal(m_camera.pitch()); }
    Qt::CursorShape cursorShape() const;

    /// Where the middle of an item's bounds shows, in pixels of the viewport; x is NaN when it is
    /// unknown or behind the eye.
    Q_INVOKABLE QPointF projectToScreen(quint32 id) const;
    /// The item drawn at a position; 0 when there is none.
    Q_INVOKABLE quint32 idAt(const QPointF& position) const;

    /// @name Input, called by Viewport3D
    /// @{
    Q_INVOKABLE void press(const QPointF& position, int button, int modifiers);
    Q_INVOKABLE void move(const QPointF& position, int modifiers = 0);
    Q_INVOKABLE void release(const QPointF& position, int button, int modifiers);
    Q_INVOKABLE void doubleClick(const QPointF& position);
    Q_INVOKABLE void wheel(const QPointF& position, qreal angleDelta);
    Q_INVOKABLE void leave();
    /// Ends the drag, which then has done nothing; whether there was one.
    Q_INVOKABLE bool cancel();
    /// Whether the key means something here, all others being the window's.
    Q_INVOKABLE bool keyPress(int key, int modifiers);
    Q_INVOKABLE bool keyRelease(int key);
    /// As if no key were held any more.
    Q_INVOKABLE void releaseKeys();
    /// @}

Q_SIGNALS:
    /// A click with the left button; 0 is empty space. Another click on the one object that the
    /// last click on this place picked goes on to what is behind it, and from the last to the
    /// first.
    void picked(quint32 id, Qt::KeyboardModifiers modifiers);
    void rubberBandSelected(const std::vector<quint32>& ids, Qt::KeyboardModifiers modifiers);
    /// The user's pointer came over another item; 0 is none. Told once a frame at most, however
    /// often the pointer moves. Not emitted by setHoveredIds().
    void hovered(quint32 id);
    /// A double click on an item.
    void activated(quint32 id);
    /// A click with the right button.
    void contextMenuRequested(quint32 id, const QPointF& position);
    /// So many items that were to be framed lie or reach too far out for it.
    void notFramed(int count);

    void itemsReset();
    /// By index, as of `items()`.
    void itemsInserted(const std::vector<quint32>& indices);
    void itemsRemoved(const std::vector<quint32>& indices);
    void itemCountChanged();
    void itemChanged(quint32 index);
    void selectionChanged();
    void hoverChanged();
    void cameraChanged();
    void rubberBandChanged();
    void cursorShapeChanged();

private:
    struct LastPick
    {
        quint32 id;
        QPointF position;
    };

    void count(const ViewportItem& item, int sign);
    std::vector<quint32> known(const std::vector<quint32>& ids) const;
    void movePointer(const QPointF& position);
    void lookUnderPointer();
    void pointAt(quint32 id);
    void drag(const QPointF& pixels);
    void click(const QPointF& position, Qt::KeyboardModifiers modifiers);
    void pick(const QPointF& position, Qt::KeyboardModifiers modifiers);
    bool isLastPick(const QPointF& position) const;
    quint32 idBehind(const QPointF& position) const;
    void gestureChanged(PointerGesture::Kind before);

    bool keypadKey(int key, bool isOpposite);
    bool toolKey(int key);
    bool cameraKey(int key, bool pans);
    bool flightKey(int key, bool isDown);
    void fly();

    ItemSet m_items;
    std::optional<DrawList> m_drawList;
    OrbitCamera m_camera;
    GizmoController m_gizmo{m_camera};
    PointerGesture m_gesture;
    std::optional<LastPick> m_lastPick;
    FlyMotion m_flight;
    QTimer m_flightFrame;
    QElapsedTimer m_flightTime;
    float m_flightSpeed = 1.0f; // the camera's distance a second
    bool m_fliesFast = false;
    std::vector<quint32> m_selectedIds;
    std::vector<quint32> m_hoveredIds;
    std::optional<QPointF> m_pointer; // where to look once the frame is over
    QTimer m_frame;                   // runs from one look to the next
    quint32 m_pointedId = 0;          // last reported by hovered()
    double m_triangleCount = 0;
    int m_meshCount = 0;
};

} // namespace editor
