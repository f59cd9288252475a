import QtQuick 2.15
import Editor.Viewport 1.0

// The 3D view of a ViewportController: draws its items and turns pointer and keys into its input.
// Takes the keyboard focus when clicked or tabbed to.
FocusScope {
    id: view

    property ViewportController controller
    property bool dark: true
    property color selectionColor: dark ? "#ff8c1a" : "#ee7000"
    property color primaryColor: dark ? "#ffd84d" : "#ffc800"
    property color hoverColor: dark ? "#59c8ff" : "#1484dc"
    property bool showHints: true

    readonly property color textColor: dark ? "#d8dce2" : "#2b2f36"
    readonly property color haloColor: dark ? "#b0181a1e" : "#b0ffffff"

    function updateSize() {
        if (controller && width > 0 && height > 0)
            controller.viewportSize = Qt.size(width, height);
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("3D view")
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (!activeFocus && controller)
            controller.releaseKeys();
    }
    onControllerChanged: updateSize()
    onWidthChanged: updateSize()
    onHeightChanged: updateSize()

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

    GizmoSurface {
        controller: view.controller
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.MiddleButton | Qt.RightButton
        hoverEnabled: true
        enabled: view.controller
        preventStealing: true
        cursorShape: view.controller ? view.controller.cursorShape : Qt.ArrowCursor

        onPressed: {
            view.forceActiveFocus(Qt.MouseFocusReason);
            view.controller.press(Qt.point(mouse.x, mouse.y), mouse.button, mouse.modifiers);
        }
        onEntered: view.controller.move(Qt.point(mouseX, mouseY))
        onPositionChanged: view.controller.move(Qt.point(mouse.x, mouse.y), mouse.modifiers)
        onReleased: view.controller.release(Qt.point(mouse.x, mouse.y), mouse.button, mouse.modifiers)
        onDoubleClicked: {
            if (mouse.button === Qt.LeftButton)
                view.controller.doubleClick(Qt.point(mouse.x, mouse.y));
        }
        onCanceled: view.controller.cancel()
        onExited: view.controller.leave()
        onWheel: view.controller.wheel(Qt.point(wheel.x, wheel.y), wheel.angleDelta.y)
    }

    AxisGizmo {
        objectName: "axis_gizmo"
        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: 10
        // Below the tools where there is no room beside them.
        anchors.topMargin: view.width < tools.implicitWidth + width + 30 ? tools.height + 20 : 10
        controller: view.controller
        lineColor: view.textColor
    }

    GizmoBar {
        id: tools

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: 10
        width: parent.width - 20
        gizmo: view.controller ? view.controller.gizmo : null
        dark: view.dark
        textColor: view.textColor
        activeColor: view.selectionColor
        z: 1
    }
    GizmoReadout {
        gizmo: view.controller ? view.controller.gizmo : null
        dark: view.dark
        textColor: view.textColor
    }

    Text {
        readonly property var count: function(number) {
            return Number(number).toLocaleString(Qt.locale(), "f", 0);
        }

        anchors.left: parent.left
        anchors.top: tools.bottom
        anchors.margins: 10
        visible: view.controller && view.controller.meshCount > 0
        text: view.controller ? (view.controller.meshCount === 1 ? qsTr("%1 mesh  ·  %2 triangles")
                                                                 : qsTr("%1 meshes  ·  %2 triangles"))
                                .arg(count(view.controller.meshCount))
                                .arg(count(view.controller.triangleCount)) : ""
        color: view.textColor
        opacity: 0.8
        style: Text.Outline
        styleColor: view.haloColor
        font.pixelSize: 11
        textFormat: Text.PlainText
    }

    ViewportHints {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: 10
        visible: view.showHints
        maximumWidth: view.width - 20
        haloColor: view.haloColor
        textColor: view.textColor
    }

    // Where the keys go.
    Rectangle {
        anchors.fill: parent
        visible: view.activeFocus
        color: "transparent"
        border.color: view.selectionColor
        opacity: 0.6
    }

    Keys.onPressed: event.accepted = controller !== null
                                     && controller.keyPress(event.key, event.modifiers)
    Keys.onReleased: event.accepted = controller !== null && !event.isAutoRepeat
                                      && controller.keyRelease(event.key)
}
