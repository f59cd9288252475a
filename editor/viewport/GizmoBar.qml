import QtQuick 2.15
import Editor.Viewport 1.0

// The tools of the gizmo and how they work.
Flow {
    id: bar

    property GizmoController gizmo
    property bool dark: true
    property color textColor: "#d8dce2"
    property color activeColor: "#ff8c1a"

    spacing: 6

    Row {
        spacing: 1

        Repeater {
            model: [
                { tool: Gizmo.None, name: "tool_none", text: qsTr("Select (Q)") },
                { tool: Gizmo.Move, name: "tool_move", text: qsTr("Move (W)") },
                { tool: Gizmo.Rotate, name: "tool_rotate", text: qsTr("Rotate (E)") },
                { tool: Gizmo.Scale, name: "tool_scale", text: qsTr("Scale (R)") }
            ]

            GizmoButton {
                objectName: modelData.name
                description: modelData.text
                room: bar.width - parent.x - x
                dark: bar.dark
                textColor: bar.textColor
                activeColor: bar.activeColor
                checked: bar.gizmo && bar.gizmo.tool === modelData.tool
                width: 28
                onClicked: bar.gizmo.tool = modelData.tool

                ToolIcon {
                    anchors.centerIn: parent
                    tool: modelData.tool
                    color: parent.foreground
                }
            }
        }
    }

    Row {
        spacing: 1

        GizmoButton {
            // Scaling goes along the object's own axes whatever is chosen.
            readonly property bool local: bar.gizmo && bar.gizmo.space === Gizmo.Local

            objectName: "gizmo_space"
            text: local ? qsTr("Local") : qsTr("World")
            description: qsTr("Axes of the object or of the world (X)")
            room: bar.width - parent.x - x
            dark: bar.dark
            textColor: bar.textColor
            activeColor: bar.activeColor
            onClicked: bar.gizmo.space = local ? Gizmo.World : Gizmo.Local
        }
        GizmoButton {
            readonly property bool centre: bar.gizmo && bar.gizmo.pivot === Gizmo.Centre

            objectName: "gizmo_pivot"
            text: centre ? qsTr("Centre") : qsTr("Primary")
            description: qsTr("Several objects turn about the primary one or their middle (Z)")
            room: bar.width - parent.x - x
            dark: bar.dark
            textColor: bar.textColor
            activeColor: bar.activeColor
            onClicked: bar.gizmo.pivot = centre ? Gizmo.Primary : Gizmo.Centre
        }
        GizmoButton {
            objectName: "gizmo_snap"
            text: qsTr("Snap")
            description: qsTr("Drag in steps; Ctrl while dragging for the other way")
            room: bar.width - parent.x - x
            dark: bar.dark
            textColor: bar.textColor
            activeColor: bar.activeColor
            checked: bar.gizmo && bar.gizmo.snapping
            onClicked: bar.gizmo.snapping = !bar.gizmo.snapping
        }
        GizmoButton {
            objectName: "gizmo_step"
            visible: text
            text: bar.gizmo ? bar.gizmo.step : ""
            description: qsTr("Step of the tool; click for the next one")
            room: bar.width - parent.x - x
            dark: bar.dark
            textColor: bar.textColor
            activeColor: bar.activeColor
            onClicked: bar.gizmo.nextStep()
        }
    }
}
