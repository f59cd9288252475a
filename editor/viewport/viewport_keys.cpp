// The keys of a ViewportController.

#include "viewport_controller.h"

#include <iterator>

namespace editor {

namespace {

constexpr double keyPixels = 30.0;  // that an arrow key drags the view
constexpr float keypadTurn = 15.0f; // degrees
constexpr double zoomPerKey = 0.85;

struct KeypadView
{
    int key;
    float yaw;
    float pitch;
};

// With Ctrl from the other side.
constexpr KeypadView keypadViews[] = {{Qt::Key_1, 0, 0}, {Qt::Key_3, 90, 0}, {Qt::Key_7, 0, 90}};

struct KeypadTurn
{
    int key;
    float yaw;
    float pitch;
};

constexpr KeypadTurn keypadTurns[] = {{Qt::Key_4, -keypadTurn, 0},
                                      {Qt::Key_6, keypadTurn, 0},
                                      {Qt::Key_8, 0, keypadTurn},
                                      {Qt::Key_2, 0, -keypadTurn}};

struct ArrowKey
{
    int key;
    QPointF pixels;
};

const ArrowKey arrowKeys[] = {{Qt::Key_Left, {keyPixels, 0}},
                              {Qt::Key_Right, {-keyPixels, 0}},
                              {Qt::Key_Up, {0, keyPixels}},
                              {Qt::Key_Down, {0, -keyPixels}}};

template <typename Entry, std::size_t size>
const Entry* entryOf(const Entry (&entries)[size], int key)
{
    const auto found = std::find_if(std::begin(entries), std::end(entries),
                                    [key](const Entry& entry) { return entry.key == key; });
    return found == std::end(entries) ? nullptr : found;
}

} // namespace

bool ViewportController::keyPress(int key, int modifiers)
{
    const Qt::KeyboardModifiers keys(modifiers);
    if (key == Qt::Key_Escape)
        return cancel();
    if (m_gizmo.isDragging())
        return m_gizmo.keyPress(key);
    if (flightKey(key, true))
        return true;
    // The others belong to menus and to the window.
    if (keys & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    if (keys & Qt::KeypadModifier)
        return keypadKey(key, keys & Qt::ControlModifier);
    if (keys & Qt::ControlModifier)
        return false;
    return toolKey(key) || cameraKey(key, keys & Qt::ShiftModifier);
}

bool ViewportController::keyRelease(int key)
{
    return flightKey(key, false);
}

bool ViewportController::keypadKey(int key, bool isOpposite)
{
    if (const KeypadView* view = entryOf(keypadViews, key)) {
        const bool isSide = view->pitch == 0.0f;
        lookFrom(qreal(isOpposite && isSide ? view->yaw + 180 : view->yaw),
                 qreal(isOpposite ? -view->pitch : view->pitch));
        return true;
    }
    if (isOpposite)
        return false;
    if (const KeypadTurn* turn = entryOf(keypadTurns, key)) {
        lookFrom(yaw() + qreal(turn->yaw), pitch() + qreal(turn->pitch));
        return true;
    }
    switch (key) {
    case Qt::Key_9:
        lookFrom(yaw() + 180, -pitch());
        return true;
    case Qt::Key_Period:
    case Qt::Key_Comma:
        frameSelected();
        return true;
    default:
        return cameraKey(key, false);
    }
}

bool ViewportController::toolKey(int key)
{
    switch (key) {
    case Qt::Key_Q:
        m_gizmo.setTool(Gizmo::Tool::None);
        return true;
    case Qt::Key_W:
        m_gizmo.setTool(Gizmo::Tool::Move);
        return true;
    case Qt::Key_E:
        m_gizmo.setTool(Gizmo::Tool::Rotate);
        return true;
    case Qt::Key_R:
        m_gizmo.setTool(Gizmo::Tool::Scale);
        return true;
    case Qt::Key_X:
        m_gizmo.setSpace(m_gizmo.space() == Gizmo::Space::World ? Gizmo::Space::Local
                                                                : Gizmo::Space::World);
        return true;
    case Qt::Key_Z:
        m_gizmo.setPivot(m_gizmo.pivot() == Gizmo::Pivot::Primary ? Gizmo::Pivot::Centre
                                                                  : Gizmo::Pivot::Primary);
        return true;
    default:
        return false;
    }
}

bool ViewportController::cameraKey(int key, bool pans)
{
    if (const ArrowKey* arrow = entryOf(arrowKeys, key)) {
        pans ? m_camera.pan(arrow->pixels) : m_camera.orbit(arrow->pixels);
        Q_EMIT cameraChanged();
        return true;
    }
    const QSizeF size = m_camera.viewport();
    const QPointF middle(size.width() / 2, size.height() / 2);
    switch (key) {
    case Qt::Key_F:
        frameSelected();
        return true;
    case Qt::Key_A:
    case Qt::Key_Home:
        frameAll();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        m_camera.zoom(float(zoomPerKey), middle);
        Q_EMIT cameraChanged();
        return true;
    case Qt::Key_Minus:
        m_camera.zoom(float(1 / zoomPerKey), middle);
        Q_EMIT cameraChanged();
        return true;
    case Qt::Key_Menu:
        Q_EMIT contextMenuRequested(0, middle);
        return true;
    case Qt::Key_F10:
        if (pans) // with Shift; alone it belongs to the menu bar
            Q_EMIT contextMenuRequested(0, middle);
        return pans;
    default:
        return false;
    }
}

} // namespace editor
