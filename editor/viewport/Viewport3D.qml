import QtQuick 2.15
import Editor.Viewport 1.0

// The 3D view of a ViewportController: draws its items and turns pointer and keys into its input.
// Takes the keyboard focus when clicked.
FocusScope {
    id: view

    property ViewportController controller
    property bool dark: true
    property color selectionColor: "#ff8c1a"
    property color primaryColor: "#ffd84d"
    property color hoverColor: "#59c8ff"
    property bool showHints: true

    readonly property color textColor: dark ? "#d8dce2" : "#2b2f36"

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0.0
                color: view.dark ? "#3c4653" : "#b9cbe0"
            }
            GradientStop {
                position: 0.55
                color: view.dark ? "#2a2f37" : "#e6ecf3"
            }
            GradientStop {
                position: 1.0
                color: view.dark ? "#1d2025" : "#d5d6d8"
            }
        }
    }

    ViewportSurface {
        anchors.fill: parent
        controller: view.controller
        selectionColor: view.selectionColor
        primaryColor: view.primaryColor
        hoverColor: view.hoverColor
        gridColor: view.dark ? "#70a0a8b4" : "#70606870"
    }

    Binding {
        target: view.controller
        property: "viewportSize"
        value: Qt.size(view.width, view.height)
        when: view.width > 0 && view.height > 0
    }

    Rectangle {
        readonly property rect band: view.controller ? view.controller.rubberBand : Qt.rect(0, 0, 0, 0)

        visible: band.width > 0 || band.height > 0
        x: band.x
        y: band.y
        width: band.width
        height: band.height
        color: Qt.rgba(view.selectionColor.r, view.selectionColor.g, view.selectionColor.b, 0.15)
        border.color: view.selectionColor
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.MiddleButton | Qt.RightButton
        hoverEnabled: true
        enabled: view.controller
        preventStealing: true

        onPressed: {
            view.forceActiveFocus(Qt.MouseFocusReason);
            view.controller.press(Qt.point(mouse.x, mouse.y), mouse.button, mouse.modifiers);
        }
        onPositionChanged: view.controller.move(Qt.point(mouse.x, mouse.y))
        onReleased: view.controller.release(Qt.point(mouse.x, mouse.y), mouse.button, mouse.modifiers)
        onDoubleClicked: {
            if (mouse.button === Qt.LeftButton)
                view.controller.doubleClick(Qt.point(mouse.x, mouse.y));
        }
        onCanceled: view.controller.cancel()
        onExited: view.controller.leave()
        onWheel: view.controller.wheel(Qt.point(wheel.x, wheel.y), wheel.angleDelta.y)
    }

    Keys.onPressed: {
        if (!view.controller || event.modifiers & (Qt.ControlModifier | Qt.MetaModifier))
            return;
        event.accepted = true;
        if (event.key === Qt.Key_F)
            view.controller.frameSelected();
        else if (event.key === Qt.Key_A || event.key === Qt.Key_Home)
            view.controller.frameAll();
        else if (event.key === Qt.Key_Escape)
            view.controller.cancel();
        else
            event.accepted = false;
    }
}
